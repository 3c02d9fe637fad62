#pragma once

#include "app/update/AppcastItem.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// A feed of releases: RSS 2.0 with these additions of our own.
///
///     <rss version="2.0" xmlns:sparkle="..." xmlns:vantorel="...">
///       <channel>
///         <item>                                  the newest release first
///           <pubDate>Tue, 15 Nov 2022 06:59:11 +0000</pubDate>
///           <description>Notes, plain text</description>
///           <sparkle:relType>beta</sparkle:relType>            test releases only
///           <vantorel:version>1.2.0</vantorel:version>
///           <vantorel:operatingSystem>linux</vantorel:operatingSystem>
///           <vantorel:minimumSystem>5.10</vantorel:minimumSystem>
///           <enclosure url="https://..." length="1234" type="application/zip"
///                      vantorel:signature="base64 of the file's Ed25519 signature"/>
///
/// All but the enclosure may also stand as an attribute of the item.
///
/// The signature says who made the file, not which version it is: who has power over the feed's
/// host can offer an old file of ours under a newer number, though never a file of their own.
///
/// Thread: any (a value)
class Appcast
{
  public:
    using Items = std::vector<AppcastItem>;

    Appcast() = default; ///< a feed without a list
    explicit Appcast(Items items) : items_(std::move(items)) {}

    /// Nothing where the bytes are no such feed. Pure.
    static std::optional<Appcast> read(const QByteArray &bytes);

    /// In the feed's order. No list is another thing than an empty one.
    [[nodiscard]] const std::optional<Items> &items() const { return items_; }

  private:
    std::optional<Items> items_;
};
