#include "support/VTLDate.h"

#include "platform/LocalTime.h"
#include "support/ZoneAbbreviations.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <vector>

namespace {

constexpr std::array<std::string_view, 12> monthNames = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

constexpr std::int64_t minute = 60;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Behind the first comma and the blanks that follow it.
std::string_view withoutWeekday(std::string_view text)
{
    const std::size_t comma = text.find(',');
    if (comma == std::string_view::npos)
        return text;
    const std::size_t start = text.find_first_not_of(' ', comma + 1);
    return start == std::string_view::npos ? text : text.substr(start);
}

/// A run of blanks is one separator; other separators side by side have an empty part between them.
std::vector<std::string_view> partsOf(std::string_view text)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != ' ' && text[at] != ':')
            continue;
        const std::string_view part = text.substr(start, at - start);
        while (text[at] == ' ' && at + 1 < text.size() && text[at + 1] == ' ')
            ++at;
        parts.push_back(part);
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

/// Its leading digits; beyond 32 bits the nearest end of the range.
int integerValue(std::string_view part)
{
    const bool isNegative = part.starts_with('-');
    if (isNegative || part.starts_with('+'))
        part.remove_prefix(1);
    std::int64_t value = 0;
    for (const char digit : part) {
        if (digit < '0' || digit > '9' || value > std::numeric_limits<int>::max())
            break;
        value = value * 10 + (digit - '0');
    }
    value = isNegative ? -value : value;
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

/// Kept on purpose: a month that is not known is -1, December of the year before.
int monthValue(std::string_view part)
{
    const auto *const found = std::find(monthNames.begin(), monthNames.end(), part);
    return found == monthNames.end() ? -1 : static_cast<int>(found - monthNames.begin());
}

std::int64_t yearValue(std::string_view part)
{
    const std::int64_t year = integerValue(part);
    return year < 100 ? year + 2000 : year;
}

std::int64_t localTimestamp(const std::vector<std::string_view> &parts)
{
    return LocalTime::timestampOf({yearValue(parts[2]), monthValue(parts[1]),
                                   integerValue(parts[0]), integerValue(parts[3]),
                                   integerValue(parts[4]), integerValue(parts[5])});
}

/// Without an undefined overflow, since the text may come from anywhere.
std::int64_t sum(std::int64_t one, std::int64_t other)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(one) +
                                     static_cast<std::uint64_t>(other));
}

QString counted(std::int64_t number, const QString &unit)
{
    const QString text = QString::number(number) + QLatin1Char(' ') + unit;
    return number == 1 ? text : text + QLatin1Char('s');
}

QDate dateOf(const CalendarFields &fields)
{
    if (fields.year > std::numeric_limits<int>::max())
        return {};
    return {static_cast<int>(fields.year), fields.month + 1, fields.day};
}

/// The locale's short date or the word that stands for it.
QString dayText(const QDate &date, std::int64_t now)
{
    const std::optional<CalendarFields> current = LocalTime::fieldsOf(now);
    const QDate today = current ? dateOf(*current) : QDate();
    if (today.isValid() && date == today)
        return QCoreApplication::translate("VTLDate", "Today");
    if (today.isValid() && date == today.addDays(-1))
        return QCoreApplication::translate("VTLDate", "Yesterday");
    return QLocale().toString(date, QLocale::ShortFormat);
}

} // namespace

std::int64_t VTLDate::timestampFromDateString(const QString &text, std::int64_t tz_offset_local)
{
    if (text.isNull())
        return 0;
    const QByteArray bytes = text.toUtf8();
    const std::vector<std::string_view> parts =
        partsOf(withoutWeekday({bytes.constData(), static_cast<std::size_t>(bytes.size())}));
    if (parts.size() < 6)
        return tz_offset_local;
    const std::int64_t zone =
        parts.size() > 6
            ? timezoneToSeconds(QString::fromUtf8(parts[6].data(), qsizetype(parts[6].size())))
            : 0;
    return sum(sum(tz_offset_local, -zone), localTimestamp(parts));
}

QString VTLDate::iso8601TimezoneFromString(const QString &zone)
{
    if (zone.isNull())
        return QStringLiteral("+0000");
    if (zone.endsWith(QLatin1Char('0')))
        return zone;
    const std::int64_t seconds = ZoneAbbreviations::secondsFromGmt(zone);
    constexpr std::int64_t hundredthOfAnHour = 36;
    const QLatin1Char sign(seconds < -35 ? '-' : '+');
    return sign +
           QStringLiteral("%1").arg(std::abs(seconds) / hundredthOfAnHour, 4, 10, QLatin1Char('0'));
}

std::int64_t VTLDate::timezoneToSeconds(const QString &zone)
{
    if (zone.isEmpty())
        return 0;
    const QChar first = zone.front();
    const bool isNumeric = first == QLatin1Char('+') || first == QLatin1Char('-') || isDigit(first);
    const QString text = isNumeric ? zone : iso8601TimezoneFromString(zone);
    constexpr qsizetype signAndDigits = 5;
    const qsizetype start = text.size() == signAndDigits ? 1 : 0;
    const bool isNegative = start == 1 && text.front() == QLatin1Char('-');
    constexpr std::array<std::int64_t, 4> weights = {36000, 3600, 600, 10};
    std::int64_t seconds = 0;
    for (qsizetype at = 0; at < 4 && start + at < text.size(); ++at)
        seconds += weights[std::size_t(at)] * (text.at(start + at).unicode() - '0');
    return isNegative ? -seconds : seconds;
}

std::int64_t VTLDate::localTimezoneOffsetInSeconds(std::int64_t now)
{
    constexpr std::size_t capacity = 80;
    return timezoneToSeconds(QString::fromLatin1(LocalTime::text(now, "%z", capacity)));
}

QString VTLDate::convertTimestamp(std::int64_t timestamp, const QString &toDateFormat)
{
    constexpr std::size_t capacity = 128;
    return QString::fromUtf8(LocalTime::utcText(timestamp, toDateFormat.toUtf8(), capacity));
}

QString VTLDate::unixTimeToDate(std::int64_t timestamp, bool includeSeconds)
{
    const std::optional<CalendarFields> fields = LocalTime::fieldsOf(timestamp);
    if (!fields)
        return {};
    const QString text =
        QString::asprintf("%04lld-%02d-%02d %02d:%02d", qlonglong(fields->year), fields->month + 1,
                          fields->day, fields->hour, fields->minute);
    return includeSeconds ? text + QString::asprintf(":%02d", fields->second) : text;
}

QString VTLDate::dateStringFromTimestamp(std::int64_t timestamp, bool alwaysTime, std::int64_t now)
{
    if (timestamp < 1)
        return QStringLiteral("--");
    const std::optional<CalendarFields> fields = LocalTime::fieldsOf(timestamp);
    const QDate date = fields ? dateOf(*fields) : QDate();
    if (!date.isValid())
        return {};
    const QString text = dayText(date, now);
    if (!alwaysTime)
        return text;
    // A leap second is no time of Qt's.
    const QTime time(fields->hour, fields->minute, std::min(fields->second, 59));
    return text + QLatin1Char(' ') + QLocale().toString(time, QLocale::ShortFormat);
}

QString VTLDate::dateStringShortStyleFromTimestamp(std::int64_t timestamp, std::int64_t now)
{
    if (timestamp < 1)
        return QStringLiteral("--");
    const std::int64_t age = now > timestamp ? now - timestamp : 0;
    if (age < minute)
        return counted(age, QStringLiteral("second"));
    if (age < hour)
        return counted(age / minute, QStringLiteral("minute"));
    if (age < day)
        return counted(age / hour, QStringLiteral("hour"));
    if (age <= 8 * day)
        return counted(age / day, QStringLiteral("day"));
    return dateStringFromTimestamp(timestamp, false, now);
}

QString VTLDate::stringFromMinutes(std::int64_t minutes)
{
    constexpr std::int64_t minutesPerHour = 60;
    constexpr std::int64_t minutesPerDay = 24 * minutesPerHour;
    constexpr std::int64_t minutesPerWeek = 7 * minutesPerDay;
    if (minutes <= 0)
        return QStringLiteral("Manual");
    if (minutes < minutesPerHour)
        return counted(minutes, QStringLiteral("minute"));
    if (minutes < minutesPerDay)
        return counted(minutes / minutesPerHour, QStringLiteral("hour"));
    if (minutes < minutesPerWeek)
        return counted(minutes / minutesPerDay, QStringLiteral("day"));
    if (minutes < 4 * minutesPerWeek)
        return counted(minutes / minutesPerWeek, QStringLiteral("week"));
    return QStringLiteral("--");
}
