#pragma once

#include "app/run/EraseRun.h"

#include <QString>

#include <cstdint>

/// What a scan found, summed up for the question before a run and for its report.
///
/// Thread: pure
/// Units:  bytes; files of unknown size count as files only
struct Findings
{
    std::int64_t files = 0;
    double bytes = 0;
    std::int64_t folders = 0;
    std::int64_t links = 0;       ///< symbolic links among the files
    std::int64_t hardLinks = 0;   ///< files with other names
    std::int64_t copyOnWrite = 0; ///< files whose old blocks overwriting does not reach

    static Findings of(const EraseRun &run);

    [[nodiscard]] bool isEmpty() const { return files == 0 && folders == 0; }
    /// Some lines, each with its newline.
    [[nodiscard]] QString text(std::int64_t method, bool leavesLinkTargets) const;
    [[nodiscard]] QString question() const;
};
