#include "platform/SettingsFile.h"

#include "platform/SystemLog.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr char operation[] = "UserDefaults";

/// First of all names "<path>.damaged", "<path>.damaged-2", … that nothing has.
QString unusedName(const QString &path)
{
    const QString first = path + QLatin1String(".damaged");
    QString name = first;
    const auto isTaken = [](const QString &each) {
        return QFileInfo::exists(each) || QFileInfo(each).isSymLink();
    };
    for (int number = 2; isTaken(name); ++number)
        name = QStringLiteral("%1-%2").arg(first).arg(number);
    return name;
}

/// QSettings takes such a name as it stands and writes it as another one, which may be in use.
bool isNameChangedByWriting(const QString &key)
{
    return key.startsWith(QLatin1Char('/')) || key.endsWith(QLatin1Char('/')) ||
           key.contains(QLatin1String("//"));
}

} // namespace

SettingsFile::SettingsFile()
{
    open();
    if (const QString found = damage(); !found.isNull())
        takeOutOfUse(found);
}

void SettingsFile::open()
{
    settings_ = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                            QStringLiteral("Vantorel"), QStringLiteral("Vantorel"));
    // Preferences of other scopes are none of ours.
    settings_->setFallbacksEnabled(false);
    path_ = settings_->fileName();
}

QString SettingsFile::damage() const
{
    QFile file(path_);
    if (file.exists() && !file.open(QIODevice::ReadOnly))
        return file.errorString();
    const QStringList keys = settings_->allKeys();
    const bool isDamaged = settings_->status() == QSettings::FormatError ||
                           std::any_of(keys.cbegin(), keys.cend(), isNameChangedByWriting);
    return isDamaged ? QStringLiteral("is damaged") : QString();
}

void SettingsFile::takeOutOfUse(const QString &damage)
{
    settings_.reset();
    asideName_ = unusedName(path_);
    SystemLog::write(
        operation, QStringLiteral("%1: %2; the defaults count, and the first change moves it to %3")
                       .arg(path_, damage, asideName_));
}

QVariant SettingsFile::value(const QString &key) const
{
    return isInUse() ? settings_->value(key) : memory_.value(key);
}

void SettingsFile::setValue(const QString &key, const QVariant &value)
{
    if (!isInUse())
        setDamagedFileAside();
    if (isInUse())
        settings_->setValue(key, value);
    else
        memory_.insert(key, value);
}

void SettingsFile::remove(const QString &key)
{
    if (isInUse())
        settings_->remove(key);
    else
        memory_.remove(key);
}

void SettingsFile::setDamagedFileAside()
{
    if (isUnwrittenReported_)
        return;
    if (QFile::rename(path_, asideName_))
        open();
    else
        reportUnwritten(QStringLiteral("cannot be moved to ") + asideName_);
}

void SettingsFile::synchronize()
{
    if (!isInUse())
        return;
    settings_->sync();
    if (settings_->status() == QSettings::AccessError)
        reportUnwritten(QStringLiteral("cannot be written"));
}

void SettingsFile::reportUnwritten(const QString &why)
{
    if (std::exchange(isUnwrittenReported_, true))
        return;
    SystemLog::write(operation,
                     QStringLiteral("%1: %2; changes last until the end").arg(path_, why));
}
