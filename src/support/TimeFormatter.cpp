#include "support/TimeFormatter.h"

#include "support/NumberText.h"

#include <cmath>

namespace {

QString singularText(double seconds)
{
    using Time = TimeFormatter;
    if (std::isnan(seconds) || seconds < 1.0 || seconds > NumberText::largestShown)
        return QStringLiteral("0 second");
    if (seconds < Time::secondsPerMinute)
        return QStringLiteral("%1 second").arg(Time::wholeUnits(seconds, 1.0));
    if (seconds < Time::secondsPerHour)
        return QStringLiteral("about %1 minute")
            .arg(Time::wholeUnits(seconds, Time::secondsPerMinute));
    if (seconds < Time::secondsPerDay)
        return QStringLiteral("about %1 hour").arg(Time::wholeUnits(seconds, Time::secondsPerHour));
    if (seconds < Time::firstSecondInYears)
        return QStringLiteral("%1 day").arg(Time::wholeUnits(seconds, Time::secondsPerDay));
    return QStringLiteral("%1 year").arg(Time::wholeUnits(seconds, Time::secondsPerYear));
}

} // namespace

QString TimeFormatter::formatSeconds(double seconds)
{
    const QString text = singularText(seconds);
    // Kept on purpose: only a leading "1 " is singular, so 61 seconds read "about 1 minutes".
    return text.startsWith(QLatin1String("1 ")) ? text : text + QLatin1Char('s');
}

QString TimeFormatter::wholeUnits(double seconds, double unitSeconds)
{
    return QString::number(NumberText::truncatedTo32Bits(std::floor(seconds / unitSeconds)));
}
