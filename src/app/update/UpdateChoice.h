#pragma once

#include "app/update/AppcastItem.h"

#include <QByteArray>
#include <QVersionNumber>

#include <optional>

/// Whether the item that was chosen is an update for this program on this system, and what its file
/// is called.
///
/// Thread: pure
namespace UpdateChoice {

/// What the answer depends on.
struct Facts
{
    QVersionNumber ours;
    QString operatingSystem;    ///< "linux"
    QVersionNumber system;      ///< its version: the kernel's
    QUrl feed;                  ///< where the item came from
    std::int64_t largestFile{}; ///< bytes
};

enum class Verdict {
    Offer,
    NotNewer,    ///< or no item at all
    OtherSystem, ///< another operating system, or a newer version of ours is needed
    Unusable     ///< what it says of itself is incomplete or makes no sense
};

Verdict judge(const std::optional<AppcastItem> &item, const Facts &facts);

/// Digits and dots and nothing else; zeros at the end do not count. Nothing where it is no version.
std::optional<QVersionNumber> version(const QString &text);

/// The file's name is ours: nothing of it is the feed's but the numbers of the version.
QByteArray fileStem(const QVersionNumber &version);
/// By the media type; empty for one that is not in our list.
QByteArray fileExtension(const QString &mediaType);

} // namespace UpdateChoice
