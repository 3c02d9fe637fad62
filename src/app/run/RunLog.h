#pragma once

#include <cstdint>

class EraseRun;
struct FailedFile;

/// What the log is told of a run, by whichever front end it is made. Never a name: neither of what
/// was erased nor of what failed.
///
/// Thread:  main
/// Blocks:  on the log file
/// Failure: none; the logger keeps its own
namespace RunLog {

/// The scan was stopped; what it found until then counts. Not to be the line that empties an old
/// log: what was named was not all seen.
void scanCancelled();
/// When the queue is complete and before the first file.
void runStarted(std::int64_t method, const EraseRun &run);
/// Each failed file when it fails.
void fileFailed(const FailedFile &failed);
/// When the folders have been removed: the files that went with one, not overwritten.
void foldersRemoved(const EraseRun &run);
/// Behind all else of the run, and before its figures are set back.
void runEnded(std::int64_t method, const EraseRun &run);

} // namespace RunLog
