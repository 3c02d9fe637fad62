#pragma once

#include <QString>

/// Shows a duration that has passed: "59 seconds", "about 12 minutes", "2 days". The time that is
/// still to come is worded by SecondsToString.
///
/// Thread:     pure
/// Units:      seconds
/// Failure:    none; less than a second, what is not a number and what is beyond
///             NumberText::largestShown read "0 seconds"
class TimeFormatter
{
  public:
    static constexpr double secondsPerMinute = 60.0;
    static constexpr double secondsPerHour = 3600.0;
    static constexpr double secondsPerDay = 86400.0;
    static constexpr double secondsPerYear = 31536000.0;
    /// From here on, five years of 365 days, days are no longer counted.
    static constexpr double firstSecondInYears = 157680000.0;

    static QString formatSeconds(double seconds);

    /// How many whole units of `unitSeconds` the duration holds, as digits.
    static QString wholeUnits(double seconds, double unitSeconds);
};
