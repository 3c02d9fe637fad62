// The feed of releases: whatever a server sends instead of one.

#include "Fuzzer.h"

#include "app/update/Appcast.h"
#include "app/update/AppcastReader.h"
#include "app/update/UpdateChoice.h"

namespace {

using Fuzzer::require;

const UpdateChoice::Facts &facts()
{
    static const UpdateChoice::Facts facts{
        QVersionNumber(1, 0), QStringLiteral("linux"), QVersionNumber(6, 1),
        QUrl(QStringLiteral("https://vantorel.org/feed.xml")), 1'000'000};
    return facts;
}

bool isBounded(const QString &key, const QString &text)
{
    const bool isNotes = key == AppcastItem::titleKey || key == AppcastItem::descriptionKey;
    return text.size() <= (isNotes ? AppcastReader::longestNotes : AppcastReader::longestText);
}

void checkOffer(const AppcastItem &item)
{
    const auto version = UpdateChoice::version(item.property(AppcastItem::versionKey));
    require(version && *version > facts().ours, "an offer is newer");
    require(item.enclosure.url.scheme() == QLatin1String("https"), "an offer comes over https");
    require(item.enclosure.length > 0 && item.enclosure.length <= facts().largestFile,
            "an offer has a length in the limits");
    require(!UpdateChoice::fileStem(*version).contains('/'), "a file's name holds no folder");
}

void check(const AppcastItem &item)
{
    for (auto property = item.properties.cbegin(); property != item.properties.cend(); ++property)
        require(isBounded(property.key(), property.value()), "a text has its bound");
    if (UpdateChoice::judge(item, facts()) == UpdateChoice::Verdict::Offer)
        checkOffer(item);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = Fuzzer::bytesOf(data, size);
    const std::optional<Appcast> feed = Appcast::read(bytes);
    const std::optional<Appcast> again = Appcast::read(bytes);
    require(feed.has_value() == again.has_value(), "the same bytes are the same feed");
    if (!feed)
        return 0;
    require(feed->items() == again->items(), "the same bytes are the same items");
    if (!feed->items())
        return 0;
    for (const AppcastItem &item : *feed->items())
        check(item);
    return 0;
}
