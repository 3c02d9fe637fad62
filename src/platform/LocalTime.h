#pragma once

#include <QByteArray>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

/// A point in time as people write it. Values beyond their range are carried over: second 60 is
/// second 0 of the next minute, month -1 is December of the year before.
struct CalendarFields
{
    std::int64_t year = 1970;
    int month = 0; ///< 0 to 11
    int day = 1;   ///< 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// Calendar and texts of points in time, by the system's local time zone and in the C locale.
///
/// Thread: any
/// Units:  seconds since 1970, UTC
namespace LocalTime {

/// Whether daylight saving counts, the system decides. Kept on purpose: -1 for what it cannot
/// reckon, as mktime(3) answers.
std::int64_t timestampOf(const CalendarFields &local);
/// Nothing for a point in time whose year the system cannot hold.
std::optional<CalendarFields> fieldsOf(std::int64_t timestamp);

/// The time of day as "HH:mm:ss.zzz". In the zone that was the system's when it was last looked up:
/// a line of a log should not cost a look at the zone's file.
QByteArray clock(std::chrono::system_clock::time_point now = std::chrono::system_clock::now());

/// strftime(3). Empty where the text does not fit into `capacity` bytes with its end mark, or the
/// year cannot be held.
QByteArray text(std::int64_t timestamp, const QByteArray &format, std::size_t capacity);
QByteArray utcText(std::int64_t timestamp, const QByteArray &format, std::size_t capacity);

} // namespace LocalTime
