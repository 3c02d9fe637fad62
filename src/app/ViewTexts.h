#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// The words that the ready, erasing and finished views show for the numbers of a run.
///
/// Thread:  pure
/// Units:   bytes, seconds
/// Failure: none; what is not a number, negative or beyond all bounds has its own words
namespace ViewTexts {

/// With commas between groups of three: "1,000,000".
QString number(std::int64_t count);
/// "1 file", "1,000,000 files".
QString files(std::int64_t count);
/// "7 folders, removed once they are empty"
QString foldersToRemove(std::int64_t count);
/// Sizes that could not be read lower a sum below 0; it shows as "0 Bytes" then.
QString size(double bytes);
/// "55.26 GB to write in 3 passes"
QString work(double bytes, std::int64_t passes);
/// "3 passes"
QString passes(std::int64_t count);
/// "Wipe method: 3-Pass DoD 5220.22-M (E)"
QString methodLine(const QString &name);

/// Cut, never rounded up; 0 for an empty total.
std::int64_t percentage(double done, double total);
/// "41 %"
QString percent(double done, double total);
/// "7.58 GB of 18.42 GB"
QString amount(double done, double total);
/// "About 4 minutes"; "--" while there is none.
QString timeRemaining(double seconds);
/// "42.18 MB/s"
QString throughput(double bytesPerSecond);
/// "about 3 minutes"
QString elapsed(double seconds);
/// "102"; in a run of a thousand files or more, of which the table shows no more than a speck,
/// "102 of 1,000,000".
QString wiped(std::int64_t files, std::int64_t total);

/// The pass that a file of this size is in, from its progress credit; none without a size or
/// without passes.
std::optional<int> currentPass(double credit, double size, int passes);
/// "Pass 2 of 3", "Pass --"
QString pass(std::optional<int> pass, int passes);

/// "3 files could not be erased.", from the number as the run's result wrote it.
QString failures(const QString &failedFilesString);
/// What is said where no file failed, and something was not overwritten, read or removed.
QString notOverwritten(std::int64_t errors);
/// What a run that was stopped did not come to.
QString stopped(std::int64_t unreached);
/// Why lines of the log are missing: "The log is not complete: No space left on device."
QString logProblem(const QString &problem);
/// What a screen reader is told at the end: "Finished. 18.40 GB in 245 files. 3 failed."
QString ending(const QString &wipedFilesString, const QString &failedFilesString);

/// "Release to add 12 items"
QString releaseToAdd(std::int64_t items);
/// "They join the 248 files already listed."; where none are, that nothing happens yet.
QString theyJoin(std::int64_t files);
/// What is said of what came in and was queued before.
QString alreadyInTheList(std::int64_t files);

} // namespace ViewTexts
