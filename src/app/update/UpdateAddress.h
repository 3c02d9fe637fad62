#pragma once

#include <QUrl>

/// From where the updater fetches anything: over https only. A feed on this machine itself may be
/// fetched over http, as tests do, and may then lead to others there.
///
/// Thread: pure
namespace UpdateAddress {

/// Whether the feed's own address may be asked.
bool isFeedAllowed(const QUrl &feed);
/// Whether it may be fetched when it came from this feed, in its list or by a redirection.
bool isAllowed(const QUrl &url, const QUrl &feed);
/// Whether it is an address of the loopback interface, or stands for one.
bool isOnThisMachine(const QUrl &url);

} // namespace UpdateAddress
