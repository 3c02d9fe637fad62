#include "platform/FileSystemKind.h"

bool FileSystemKind::isCopyOnWrite(std::uint64_t type)
{
    switch (type) {
    case 0x9123683E: // btrfs
    case 0x2FC12FC1: // ZFS
    case 0xCA451A4E: // bcachefs
    case 0xF2F52010: // F2FS
    case 0x3434:     // NILFS2
    case 0x72B6:     // JFFS2
    case 0x24051905: // UBIFS
    case 0x794C7630: // overlayfs
        return true;
    default:
        return false;
    }
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
