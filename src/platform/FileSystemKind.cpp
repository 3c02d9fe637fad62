#include "platform/FileSystemKind.h"

#include <array>

FileSystemKind::CopyOnWrite FileSystemKind::copyOnWrite(std::uint64_t type)
{
    switch (type) {
    case 0x9123683E:
        return CopyOnWrite::Btrfs;
    case 0x2FC12FC1:
        return CopyOnWrite::Zfs;
    case 0xCA451A4E:
        return CopyOnWrite::Bcachefs;
    case 0xF2F52010:
        return CopyOnWrite::F2fs;
    case 0x3434:
        return CopyOnWrite::Nilfs2;
    case 0x72B6:
        return CopyOnWrite::Jffs2;
    case 0x24051905:
        return CopyOnWrite::Ubifs;
    case 0x794C7630:
        return CopyOnWrite::Overlayfs;
    default:
        return CopyOnWrite::None;
    }
}

QLatin1String FileSystemKind::name(CopyOnWrite kind)
{
    constexpr std::array<const char *, copyOnWriteKinds> names = {
        "", "btrfs", "zfs", "bcachefs", "f2fs", "nilfs2", "jffs2", "ubifs", "overlayfs"};
    return QLatin1String(names.at(std::size_t(kind)));
}

bool FileSystemKind::isKernelInterface(std::uint64_t type)
{
    switch (type) {
    case 0x9FA0:     // proc
    case 0x62656572: // sysfs
    case 0x0027E0EB: // cgroup
    case 0x63677270: // cgroup2
    case 0x1CD1:     // devpts
    case 0x64626720: // debugfs
    case 0x74726163: // tracefs
    case 0x73636673: // securityfs
    case 0xCAFE4A11: // bpf
    case 0xDE5E81E4: // efivarfs
    case 0x62656570: // configfs
    case 0x6165676C: // pstore
    case 0xF97CFF8C: // selinuxfs
        return true;
    default:
        return false;
    }
}
