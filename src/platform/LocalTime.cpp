#include "platform/LocalTime.h"

#include <vector>

#include <locale.h>
#include <time.h>

namespace {

constexpr std::int64_t firstYear = 1900; // of tm_year

std::optional<tm> localTime(std::int64_t timestamp)
{
    const time_t time = timestamp;
    tm fields = {};
    if (::localtime_r(&time, &fields) == nullptr)
        return std::nullopt;
    return fields;
}

std::optional<tm> utcTime(std::int64_t timestamp)
{
    const time_t time = timestamp;
    tm fields = {};
    if (::gmtime_r(&time, &fields) == nullptr)
        return std::nullopt;
    return fields;
}

QByteArray formatted(const std::optional<tm> &time, const QByteArray &format, std::size_t capacity)
{
    static const locale_t cLocale = ::newlocale(LC_ALL_MASK, "C", nullptr);
    if (!time)
        return {};
    std::vector<char> buffer(capacity);
    const std::size_t size =
        ::strftime_l(buffer.data(), buffer.size(), format.constData(), &*time, cLocale);
    return {buffer.data(), static_cast<qsizetype>(size)};
}

} // namespace

std::int64_t LocalTime::timestampOf(const CalendarFields &local)
{
    tm fields = {};
    fields.tm_year = static_cast<int>(local.year - firstYear);
    fields.tm_mon = local.month;
    fields.tm_mday = local.day;
    fields.tm_hour = local.hour;
    fields.tm_min = local.minute;
    fields.tm_sec = local.second;
    fields.tm_isdst = -1;
    return ::mktime(&fields);
}

/// localtime_r(3) does not look the zone up, mktime(3) does.
std::optional<CalendarFields> LocalTime::fieldsOf(std::int64_t timestamp)
{
    ::tzset();
    const std::optional<tm> time = localTime(timestamp);
    if (!time)
        return std::nullopt;
    return CalendarFields{firstYear + time->tm_year,
                          time->tm_mon,
                          time->tm_mday,
                          time->tm_hour,
                          time->tm_min,
                          time->tm_sec};
}

QByteArray LocalTime::clock(std::chrono::system_clock::time_point now)
{
    using namespace std::chrono;
    const auto second = floor<seconds>(now);
    const auto rest = duration_cast<milliseconds>(now - second).count();
    constexpr std::size_t capacity = 16;
    const QByteArray time =
        formatted(localTime(second.time_since_epoch().count()), "%H:%M:%S", capacity);
    return time + '.' + QByteArray::number(qlonglong(rest)).rightJustified(3, '0');
}

QByteArray LocalTime::text(std::int64_t timestamp, const QByteArray &format, std::size_t capacity)
{
    ::tzset();
    return formatted(localTime(timestamp), format, capacity);
}

QByteArray LocalTime::utcText(std::int64_t timestamp, const QByteArray &format,
                              std::size_t capacity)
{
    return formatted(utcTime(timestamp), format, capacity);
}
