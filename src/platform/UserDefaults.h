#pragma once

#include "platform/SettingsFile.h"

#include <QObject>
#include <QString>
#include <QVariantMap>

#include <cstdint>
#include <memory>

/// The user's preferences over a table of fallbacks. They stand in a SettingsFile. A value that the
/// user has set beats its fallback whole, a table like any other; fallbacks are never written.
///
/// Thread:  main
/// Blocks:  on disk I/O when made and, some time after a change, when written
/// Failure: a file that cannot be read or is damaged counts as empty; what cannot be written lives
///          until the end of the process. One line in the system log each
class UserDefaults : public QObject
{
    Q_OBJECT

  public:
    explicit UserDefaults(QVariantMap fallbacks = {});
    /// Writes what has changed.
    ~UserDefaults() override;

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

    /// Tables and bytes are values like any other. Written when the event loop runs again.
    void setValue(const QString &key, const QVariant &value);
    /// The fallback counts again.
    void remove(const QString &key);
    /// Writes what has changed to the disk now.
    void synchronize();

    static std::int64_t integerFromText(const QString &text);

  Q_SIGNALS:
    /// The value read under this key is another one than before; a number and its text are one.
    void valueChanged(const QString &key);

  private:
    void changed(const QString &key, const QVariant &before);

    SettingsFile file_;
    QVariantMap fallbacks_;
    bool isWritePending_ = false;
};
