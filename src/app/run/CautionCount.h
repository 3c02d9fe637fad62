#pragma once

#include "engine/ScanFacts.h"

#include <array>
#include <cstdint>
#include <numeric>

/// How many of the queued files overwriting reaches more, or less, than one thinks.
///
/// Thread: pure
struct CautionCount
{
    std::int64_t links = 0;     ///< symbolic links
    std::int64_t hardLinks = 0; ///< files with other names
    /// Files whose old blocks overwriting does not reach, by their file system.
    std::array<std::int64_t, FileSystemKind::copyOnWriteKinds> byFileSystem{};

    void add(const ScanFacts &facts)
    {
        links += facts.isLink ? 1 : 0;
        hardLinks += facts.hasOtherNames ? 1 : 0;
        byFileSystem.at(std::size_t(facts.copyOnWrite)) += facts.isCopyOnWrite() ? 1 : 0;
    }
    [[nodiscard]] std::int64_t copyOnWrite() const
    {
        return std::accumulate(byFileSystem.begin(), byFileSystem.end(), std::int64_t(0));
    }
    bool operator==(const CautionCount &) const = default;
};
