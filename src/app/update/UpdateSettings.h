#pragma once

#include "app/update/Appcast.h"
#include "app/update/UpdaterDelegate.h"

#include <memory>
#include <optional>

/// What the user's preferences make of the updater.
///
/// Thread: main
namespace UpdateSettings {

/// Makes `delegate` the updater's and lets it check automatically if "checkForUpdates" is on.
void setSparkleSettings(Updater *updater, std::weak_ptr<UpdaterDelegate> delegate);

/// From now on the switch counts at once, for as long as the updater lives.
void followCheckForUpdates(Updater *updater);

/// The update to offer, by "checkForBetaReleases" and "checkForAlphaReleases".
///
/// Kept on purpose: only the first item is ever looked at, so a test release that the user has not
/// asked for hides older ordinary ones; the two switches are independent; a release type in other
/// letter case is an ordinary release. A feed without a list gives the empty item, an empty list
/// none.
std::optional<AppcastItem> bestValidUpdateInAppcast(const Appcast &appcast,
                                                    const Updater *forUpdater);

/// The version that the user does not want to hear of any more.
QString skippedVersion();
void setSkippedVersion(const QString &version);

} // namespace UpdateSettings
