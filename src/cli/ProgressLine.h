#pragma once

#include <QString>

/// The one line that shows how far a run is: bar, percent, bytes per second, time remaining,
/// current file.
///
/// Thread: pure
namespace ProgressLine {

struct State
{
    double fraction = 0; ///< 0 to 1
    double bytesPerSecond = 0;
    double secondsRemaining = 0;
    QString currentFile; ///< printable
};

/// At most `columns` - 1 columns wide, so that no terminal wraps it. The file's name is cut first.
QString text(const State &state, int columns);

/// How much of the run is done, by bytes, or by files where there are no bytes to write.
double fraction(double bytesWritten, double totalBytes, double filesDone, double totalFiles);

} // namespace ProgressLine
