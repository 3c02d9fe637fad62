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
