#include "app/update/UpdateSettings.h"

#include "app/update/Updater.h"
#include "platform/UserDefaults.h"

namespace {

const QString checkKey = QStringLiteral("checkForUpdates");
const QString betaKey = QStringLiteral("checkForBetaReleases");
const QString alphaKey = QStringLiteral("checkForAlphaReleases");
const QString skippedKey = QStringLiteral("skippedVersion");

} // namespace

void UpdateSettings::setSparkleSettings(Updater *updater, std::weak_ptr<UpdaterDelegate> delegate)
{
    updater->setDelegate(std::move(delegate));
    updater->setAutomaticallyChecksForUpdates(UserDefaults::standard().boolean(checkKey));
}

void UpdateSettings::followCheckForUpdates(Updater *updater)
{
    QObject::connect(&UserDefaults::standard(), &UserDefaults::valueChanged, updater,
                     [updater](const QString &key) {
                         if (key == checkKey)
                             updater->setAutomaticallyChecksForUpdates(
                                 UserDefaults::standard().boolean(checkKey));
                     });
}

std::optional<AppcastItem> UpdateSettings::bestValidUpdateInAppcast(const Appcast &appcast,
                                                                    const Updater *)
{
    const bool beta = UserDefaults::standard().boolean(betaKey);
    const bool alpha = UserDefaults::standard().boolean(alphaKey);
    if (!appcast.items())
        return AppcastItem();
    if (appcast.items()->empty())
        return std::nullopt;
    const AppcastItem &first = appcast.items()->front();
    const QString releaseType = first.property(AppcastItem::releaseTypeKey);
    if (!beta && releaseType == QLatin1String("beta"))
        return AppcastItem();
    if (alpha || releaseType.isNull())
        return first;
    if (releaseType == QLatin1String("alpha"))
        return AppcastItem();
    return first;
}

QString UpdateSettings::skippedVersion()
{
    return UserDefaults::standard().text(skippedKey);
}

void UpdateSettings::setSkippedVersion(const QString &version)
{
    UserDefaults::standard().setValue(skippedKey, version);
}
