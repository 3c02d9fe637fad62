#pragma once

#include "cli/Findings.h"
#include "engine/ScanReport.h"

#include <QByteArray>

#include <cstdint>

/// The outcome of a run as one JSON object.
///
/// Thread: pure
struct JsonReport
{
    std::int64_t method = 0;
    Findings found;
    std::int64_t filesWiped = 0;
    std::int64_t filesFailed = 0;
    std::int64_t filesRemaining = 0;
    double bytesWiped = 0;
    std::int64_t foldersRemoved = 0;
    double elapsedSeconds = 0;
    ScanFailures failures; ///< files that failed, and what was refused or could not be read

    [[nodiscard]] QByteArray toJson() const;
};
