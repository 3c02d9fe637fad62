#pragma once

/// The end of the process at once, whatever its threads are doing: nothing is destroyed, nothing
/// flushed (_exit(2)).
///
/// Thread: any
namespace ProcessEnd {

/// What a shell reports of a process that SIGTERM ended.
inline constexpr int terminated = 128 + 15;

[[noreturn]] void now(int exitCode);

} // namespace ProcessEnd
