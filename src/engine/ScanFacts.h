#pragma once

#include "platform/FileSystemKind.h"

#include <QByteArray>

#include <cstdint>
#include <map>

/// What the scan saw of a name, kept for the work that is done on it later.
struct ScanFacts
{
    /// How many bytes of the path name the folder that holds the item which the user handed over.
    /// Links up to there are the user's own; below, none is followed (FolderAccess).
    /// -1: the item itself was handed over, its whole folder counts as given.
    std::int32_t givenLength = -1;
    bool isLink = false;        ///< it was a symbolic link
    bool hasOtherNames = false; ///< the file has more than one hard link
    /// The scan was stopped before it had seen all that is in the folder. There may be hidden files
    /// that nobody has listed, so it is removed only if it holds nothing at all.
    bool isUnfinished = false;
    /// Of the file or folder; of a link, that of what it leads to. 0: it could not be seen.
    std::uint64_t inode = 0;
    /// Of a link: bytes of what it leads to, whether that is to be left alone or not; -1 unknown.
    double targetSize = -1;
    /// Its file system, if that is one that writes new blocks instead of old ones.
    FileSystemKind::CopyOnWrite copyOnWrite = FileSystemKind::CopyOnWrite::None;

    [[nodiscard]] bool isCopyOnWrite() const
    {
        return copyOnWrite != FileSystemKind::CopyOnWrite::None;
    }
};

/// The folders that a scan met, by path.
using FolderMap = std::map<QByteArray, ScanFacts>;

/// A later entry of the same path takes the place of the earlier one.
inline void mergeFolders(FolderMap &into, const FolderMap &folders)
{
    for (const auto &[path, facts] : folders)
        into.insert_or_assign(path, facts);
}
