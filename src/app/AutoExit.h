#pragma once

/// The preference to quit after a finished run.
///
/// Thread: pure
namespace AutoExit {

/// How things stand when the end of a run has been told.
struct Situation
{
    bool isWanted = false; ///< the preference "AutoExit"
    bool hasFailures = false;
    bool isBusyWiping = false;
    bool isScanningFiles = false;
    bool isDialogOpen = false;
    bool isDragOver = false; ///< files hang over the window
    bool isQueueEmpty = true;
};

/// Never while a failure waits to be read, or something is going on or waits.
constexpr bool shouldQuit(const Situation &now)
{
    return now.isWanted && !now.hasFailures && !now.isBusyWiping && !now.isScanningFiles &&
           !now.isDialogOpen && !now.isDragOver && now.isQueueEmpty;
}

} // namespace AutoExit
