#include "support/BytesFormatter.h"

#include "support/NumberText.h"

#include <QLatin1String>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::array units = {
    QLatin1String("Bytes"), QLatin1String("KB"), QLatin1String("MB"),
    QLatin1String("GB"),    QLatin1String("TB"), QLatin1String("PB"),
    QLatin1String("EB"),    QLatin1String("ZB"), QLatin1String("YB"),
};

constexpr double unitStep = 1000.0;

double shownBytes(double bytes)
{
    return std::isnan(bytes) || bytes > NumberText::largestShown ? 0.0 : bytes;
}

QString numberWithUnit(const QString &number, std::size_t unit)
{
    return number + QLatin1Char(' ') + units.at(unit);
}

} // namespace

QString BytesFormatter::formatBytes(double bytes)
{
    double value = shownBytes(bytes);
    std::size_t unit = 0;
    // Kept on purpose: the step is 1000, not 1024, and exactly 1000 stays in the smaller unit.
    while (value > unitStep) {
        value /= unitStep;
        ++unit;
    }
    if (unit == 0)
        return numberWithUnit(QString::number(NumberText::truncatedTo32Bits(value)), unit);
    // Kept on purpose: beyond the last unit the value is not scaled back, 10^30 reads "1000.00 YB".
    unit = std::min(unit, units.size() - 1);
    return numberWithUnit(NumberText::withTwoDecimals(value), unit);
}
