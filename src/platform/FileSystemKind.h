#pragma once

#include <QLatin1String>

#include <cstddef>
#include <cstdint>

/// What is known of a file system by its type number.
///
/// Thread: pure
namespace FileSystemKind {

/// The file systems on which overwriting a file in place leaves its old blocks as they are, because
/// new data goes to new ones: copy-on-write and log-structured ones, and overlays, whose lower
/// layer is never written.
enum class CopyOnWrite : std::uint8_t {
    None,
    Btrfs,
    Zfs,
    Bcachefs,
    F2fs,
    Nilfs2,
    Jffs2,
    Ubifs,
    Overlayfs
};
inline constexpr std::size_t copyOnWriteKinds = 9;

/// Which of them it is. `type` is the f_type of statfs(2); the numbers stand in statfs(2) and
/// linux/magic.h.
CopyOnWrite copyOnWrite(std::uint64_t type);
/// As mount(8) calls it: "btrfs". Empty for None.
QLatin1String name(CopyOnWrite kind);

/// Whether the file system's files are the kernel's switches and tables rather than somebody's
/// data.
bool isKernelInterface(std::uint64_t type);

} // namespace FileSystemKind
