#pragma once

#include <QByteArray>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <memory>

/// The user's preferences over a table of fallbacks. They stand in an INI file,
/// "Vantorel/Vantorel.ini" below the XDG configuration folder (XDG Base Directory Specification).
/// A value that the user has set beats its fallback; fallbacks are never written.
///
/// Thread:  main
/// Blocks:  on disk I/O when made and, some time after a change, when written
/// Failure: a file that cannot be read or is damaged counts as empty, with a line in the system
///          log; what was set then lives until the end of the process
class UserDefaults : public QObject
{
    Q_OBJECT

  public:
    explicit UserDefaults(QVariantMap fallbacks = {});

    /// The process's own. Made at first use.
    static UserDefaults &standard();

    /// While it lives, standard() is a fresh store, read from the file again. For tests.
    class Replacement
    {
      public:
        Replacement();
        ~Replacement();
        Replacement(const Replacement &) = delete;
        Replacement &operator=(const Replacement &) = delete;

      private:
        std::unique_ptr<UserDefaults> store_;
        UserDefaults *previous_;
    };

    /// Adds to the fallbacks; a later fallback of the same key takes the place of the earlier one.
    void registerDefaults(const QVariantMap &fallbacks);

    /// Null where the key has neither value nor fallback.
    [[nodiscard]] QVariant value(const QString &key) const;
    /// Reads a number as its leading digits; yes and true are 1. 0 where there is none.
    [[nodiscard]] std::int64_t integer(const QString &key) const;
    [[nodiscard]] bool boolean(const QString &key) const;
    [[nodiscard]] QString text(const QString &key) const;

    void setValue(const QString &key, const QVariant &value);
    /// The fallback counts again.
    void remove(const QString &key);
    /// Writes what has changed to the disk now.
    void synchronize();

    static std::int64_t integerFromText(const QString &text);

  Q_SIGNALS:
    /// The value read under this key is another one than before.
    void valueChanged(const QString &key);

  private:
    QSettings settings_;
    QVariantMap fallbacks_;
};
