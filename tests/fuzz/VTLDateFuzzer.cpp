// Dates and zones from the network, and the texts of the time stamps that come of them.

#include "Fuzzer.h"

#include "support/VTLDate.h"

#include <QRegularExpression>

#include <cstring>

namespace {

using Fuzzer::require;

/// Returns what it checked, so that the texts can be made of it.
std::int64_t checkDate(const QString &text, std::int64_t localOffset)
{
    const std::int64_t timestamp = VTLDate::timestampFromDateString(text, 0);
    const auto sum =
        static_cast<std::uint64_t>(timestamp) + static_cast<std::uint64_t>(localOffset);
    require(text.isNull() || VTLDate::timestampFromDateString(text, localOffset) ==
                                 static_cast<std::int64_t>(sum),
            "the local offset is added");
    return timestamp;
}

void checkZone(const QString &zone)
{
    const QString numeric = VTLDate::iso8601TimezoneFromString(zone);
    static const QRegularExpression signAndDigits(QStringLiteral("^[+-][0-9]{4}$"));
    require(zone.endsWith(QLatin1Char('0')) ? numeric == zone
                                            : signAndDigits.match(numeric).hasMatch(),
            "a zone has a sign and four digits");
    constexpr std::int64_t largest = 65'535LL * (36'000 + 3'600 + 600 + 10);
    require(std::abs(VTLDate::timezoneToSeconds(zone)) <= largest, "four characters count");
}

void checkTexts(std::int64_t timestamp, const QString &format, std::int64_t now)
{
    require(VTLDate::convertTimestamp(timestamp, format).size() <= 127, "127 bytes at most");
    const QString minutes = VTLDate::unixTimeToDate(timestamp, false);
    const QString seconds = VTLDate::unixTimeToDate(timestamp, true);
    require(seconds.startsWith(minutes) && minutes.isEmpty() == seconds.isEmpty(),
            "seconds follow the minutes");
    const QString age = VTLDate::dateStringShortStyleFromTimestamp(timestamp, now);
    const bool isNone = timestamp < 1;
    require((age == QLatin1String("--")) == isNone, "only what is no time stamp has no age");
    require((VTLDate::dateStringFromTimestamp(timestamp, true, now) == QLatin1String("--")) ==
                isNone,
            "only what is no time stamp has no date");
    require(!VTLDate::stringFromMinutes(timestamp).isEmpty(), "every interval has a name");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(Fuzzer::bytesOf(data, size));
    std::int64_t bits = 0;
    std::memcpy(&bits, data, std::min(size, sizeof bits));

    const std::int64_t timestamp = checkDate(text, bits);
    checkZone(text);
    checkTexts(timestamp, text, bits);
    checkTexts(bits, text, timestamp);
    return 0;
}
