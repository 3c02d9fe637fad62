#include "support/SecondsToString.h"

#include "support/NumberText.h"
#include "support/TimeFormatter.h"

#include <cmath>

namespace {

using Time = TimeFormatter;

// From this moment the estimate reads "2 minute".
constexpr double minuteAndAHalf = 90.0;

bool isUnknown(double seconds)
{
    return std::isnan(seconds) || seconds < 1.0 || seconds > NumberText::largestShown;
}

QString textBelowTwoMinutes(double seconds)
{
    if (seconds < 6.0)
        return QStringLiteral("About 5 seconds");
    if (seconds < 11.0)
        return QStringLiteral("About 10 seconds");
    if (seconds < Time::secondsPerMinute)
        return QStringLiteral("Less than a minute");
    if (seconds < minuteAndAHalf)
        return QStringLiteral("About a minute");
    return QStringLiteral("About 2 minute");
}

QString singularText(double seconds)
{
    if (seconds < 2.0 * Time::secondsPerMinute)
        return textBelowTwoMinutes(seconds);
    if (seconds < Time::secondsPerHour)
        return QStringLiteral("About %1 minute")
            .arg(Time::wholeUnits(seconds, Time::secondsPerMinute));
    if (seconds < Time::secondsPerDay)
        return QStringLiteral("About %1 hour").arg(Time::wholeUnits(seconds, Time::secondsPerHour));
    if (seconds < Time::firstSecondInYears)
        return QStringLiteral("About %1 day").arg(Time::wholeUnits(seconds, Time::secondsPerDay));
    return QStringLiteral("About %1 year").arg(Time::wholeUnits(seconds, Time::secondsPerYear));
}

} // namespace

QVariant SecondsToString::transformedValue(const QVariant &value) const
{
    return approximateDuration(value.toDouble());
}

QString SecondsToString::approximateDuration(double seconds)
{
    if (isUnknown(seconds))
        return QStringLiteral("--");
    const QString text = singularText(seconds);
    // Kept on purpose: exactly 90 seconds read "About 2 minute", and one hour "About 1 hours".
    return seconds > minuteAndAHalf ? text + QLatin1Char('s') : text;
}
