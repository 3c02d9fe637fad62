#pragma once

#include <QDateTime>
#include <QString>

#include <cstdint>

/// Dates as the network and people write them: from an internet-style date text to a time stamp, of
/// zones to their offsets, of time stamps and durations to what is shown. It is no calendar
/// library: some results differ from one's, and those are what the callers count on.
///
/// Thread:  any
/// Units:   seconds since 1970, UTC; offsets in seconds east of UTC
/// Failure: none is reported: a date that cannot be read is the local offset or a nonsense date, an
///          unknown zone is 0, a time stamp beyond the calendar is an empty text
class VTLDate
{
  public:
    /// Reads "Tue, 15 Nov 2022 08:12:31 +0100"; the weekday may be missing, the year may have two
    /// digits (20xx), the zone may be an abbreviation. 0 for a null text; `tz_offset_local` where
    /// the text has fewer than six parts. `tz_offset_local` is the local offset on that date.
    static std::int64_t timestampFromDateString(const QString &text, std::int64_t tz_offset_local);

    /// A zone's abbreviation as a sign and four digits; what ends with "0" counts as that already.
    /// Kept on purpose: the digits are hundredths of an hour, not minutes: IST is "+0550".
    static QString iso8601TimezoneFromString(const QString &zone);

    /// Kept on purpose: the last digit counts ten seconds, so "+0545" is 20450; what is no digit
    /// counts by its character value.
    static std::int64_t timezoneToSeconds(const QString &zone);
    /// By way of its text "+hhmm", so with the weights of timezoneToSeconds().
    static std::int64_t localTimezoneOffsetInSeconds(std::int64_t now = currentTimestamp());

    /// The time stamp in UTC by a format of strftime(3); up to 127 bytes, otherwise empty.
    static QString convertTimestamp(std::int64_t timestamp, const QString &toDateFormat);
    /// Local time, "2022-11-15 09:12:31" or without the seconds.
    static QString unixTimeToDate(std::int64_t timestamp, bool includeSeconds);
    /// The locale's short date, or "Today" or "Yesterday"; with the short time if wanted. "--" for
    /// what is no time stamp.
    static QString dateStringFromTimestamp(std::int64_t timestamp, bool alwaysTime,
                                           std::int64_t now = currentTimestamp());
    /// The age: "5 minutes", "8 days", or the date beyond that. "--" for what is no time stamp.
    static QString dateStringShortStyleFromTimestamp(std::int64_t timestamp,
                                                     std::int64_t now = currentTimestamp());
    /// The name of an interval: "Manual", "1 hour", "2 weeks", "--" from four weeks (40,320
    /// minutes) on.
    static QString stringFromMinutes(std::int64_t minutes);

    static std::int64_t currentTimestamp() { return QDateTime::currentSecsSinceEpoch(); }
};
