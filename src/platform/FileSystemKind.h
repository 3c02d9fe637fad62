#pragma once

#include <cstdint>

/// What is known of a file system by its type number.
///
/// Thread: pure
namespace FileSystemKind {

/// Whether overwriting a file in place leaves its old blocks as they are, because new data goes to
/// new ones: copy-on-write and log-structured file systems, and overlays, whose lower layer is
/// never written. `type` is the f_type of statfs(2); the numbers stand in statfs(2) and
/// linux/magic.h.
bool isCopyOnWrite(std::uint64_t type);

/// Whether the file system's files are the kernel's switches and tables rather than somebody's
/// data.
bool isKernelInterface(std::uint64_t type);

} // namespace FileSystemKind
