#pragma once

#include <QString>

#include <cstdint>

class QueueObject;

/// What is said of a run at its end.
///
/// Thread: pure
namespace RunTexts {

/// "1.54 MB in 12 files"
QString wipedFiles(double bytes, std::int64_t files);
QString failedFiles(std::int64_t files);
QString timeElapsed(double seconds);
/// Why an item failed. `removedWithFolder`: its name is gone all the same, with a folder that held
/// nothing but hidden entries.
QString failure(const QueueObject &item, bool removedWithFolder);

} // namespace RunTexts
