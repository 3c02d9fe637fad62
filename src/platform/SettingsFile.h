#pragma once

#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <memory>

/// The INI file of the preferences, "Vantorel/Vantorel.ini" below the XDG configuration folder (XDG
/// Base Directory Specification). One that is damaged or cannot be read counts as empty and stays
/// what it is until something is to be written; then it moves aside, to a name of its own.
///
/// Thread:  main
/// Blocks:  on disk I/O when made and when written
/// Failure: a file that cannot be read, and one that cannot be written, is one line in the system
///          log each; what was set then lives in memory
class SettingsFile
{
  public:
    SettingsFile();

    /// Null where the file has no such key.
    [[nodiscard]] QVariant value(const QString &key) const;

    void setValue(const QString &key, const QVariant &value);
    void remove(const QString &key);
    /// Writes what has changed to the disk now.
    void synchronize();

  private:
    void open();
    [[nodiscard]] QString damage() const;
    void takeOutOfUse(const QString &damage);
    [[nodiscard]] bool isInUse() const { return settings_ != nullptr; }
    void setDamagedFileAside();
    void reportUnwritten(const QString &why);

    QString path_;
    std::unique_ptr<QSettings> settings_; ///< null while the file is damaged
    QVariantMap memory_;                  ///< what was set while the file cannot be used
    QString asideName_;                   ///< of the damaged file, once it has to give way
    bool isUnwrittenReported_ = false;
};
