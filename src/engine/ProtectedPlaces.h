#pragma once

#include <QByteArray>
#include <QString>

/// The places that are never erased when they are named: the root folder and the roots of /proc,
/// /sys and /dev, by whatever path they are reached, and the empty path, which names nothing.
///
/// Thread: any
/// Blocks: on disk I/O
namespace ProtectedPlaces {

/// Why the item is refused, in the user's words; a null text where it is not.
QString refusal(const QByteArray &path);

} // namespace ProtectedPlaces
