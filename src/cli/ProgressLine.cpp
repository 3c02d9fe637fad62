#include "cli/ProgressLine.h"

#include "platform/StandardStreams.h"
#include "support/BytesFormatter.h"
#include "support/PercentageToString.h"
#include "support/SecondsToString.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int barColumns = 20;

QString bar(double fraction)
{
    const int filled = static_cast<int>(fraction * barColumns);
    return QLatin1Char('[') + QString(filled, QLatin1Char('#')) +
           QString(barColumns - filled, QLatin1Char('-')) + QLatin1Char(']');
}

/// As many of the first characters as fit.
QString cut(const QString &text, int columns)
{
    QString result = text;
    while (!result.isEmpty() && StandardStreams::columnsOf(result) > columns) {
        result.chop(1);
        if (!result.isEmpty() && result.back().isHighSurrogate())
            result.chop(1);
    }
    return result;
}

} // namespace

QString ProgressLine::text(const State &state, int columns)
{
    const double fraction = std::isnan(state.fraction) ? 0 : std::clamp(state.fraction, 0.0, 1.0);
    const QString figures =
        QStringLiteral("%1 %2  %3/s  %4  ")
            .arg(bar(fraction), PercentageToString().transformedValue(fraction * 100).toString(),
                 BytesFormatter::formatBytes(state.bytesPerSecond),
                 SecondsToString::approximateDuration(state.secondsRemaining));
    return cut(figures + state.currentFile, columns - 1);
}

double ProgressLine::fraction(double bytesWritten, double totalBytes, double filesDone,
                              double totalFiles)
{
    const double fraction = totalBytes > 0   ? bytesWritten / totalBytes
                            : totalFiles > 0 ? filesDone / totalFiles
                                             : 0.0;
    return std::isfinite(fraction) ? std::clamp(fraction, 0.0, 1.0) : 0.0;
}
