#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <cstdint>

/// The user's preferences over a table of fallbacks. They stand in an INI file,
/// "Vantorel/Vantorel.ini" below the XDG configuration folder (XDG Base Directory Specification).
///
/// Thread:  main
/// Blocks:  on disk I/O when made
/// Failure: a file that cannot be read counts as empty
class UserDefaults
{
  public:
    explicit UserDefaults(QVariantMap fallbacks);

    /// Reads a number as its leading digits; yes and true are 1. 0 where there is none.
    [[nodiscard]] std::int64_t integer(const QString &key) const;
    [[nodiscard]] bool boolean(const QString &key) const;

    static std::int64_t integerFromText(const QString &text);

  private:
    [[nodiscard]] QVariant value(const QString &key) const;

    QSettings settings_;
    QVariantMap fallbacks_;
};
