#pragma once

#include <QString>

#include <cstdint>

struct FailedFile;

/// What is said of a run at its end.
///
/// Thread: pure
namespace RunTexts {

/// "1.54 MB in 12 files"
QString wipedFiles(double bytes, std::int64_t files);
QString failedFiles(std::int64_t files);
QString timeElapsed(double seconds);
/// Why a file was not erased, and if so, that its name is gone all the same.
QString failure(const FailedFile &failed);

} // namespace RunTexts
