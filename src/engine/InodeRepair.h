#pragma once

#include "platform/Descriptor.h"

#include <QByteArray>

#include <optional>

/// Repairs what keeps one inode from being opened for writing, and puts back what it changed. It
/// works on the inode it was made for, whatever becomes of the names meanwhile.
///
/// Thread:  any; one thread at a time
/// Owns:    a handle to the inode
/// Blocks:  on disk I/O
/// Failure: false; nothing was changed then
class InodeRepair
{
  public:
    /// `handle` was opened with Access::Handle; `path` is for the log.
    InodeRepair(Descriptor handle, QByteArray path);

    /// Error 1, operation not permitted: unlock(); 13, permission denied: addWritePermission();
    /// any other: false.
    bool fix(int errorNumber);
    /// Clears the immutable flag of a regular file or folder; false where it is not set.
    bool unlock();
    /// Sets the permissions to 0777.
    bool addWritePermission();

    /// Undoes the repair where the inode still has a name. False: it stays repaired, as logged.
    bool putBack();
    /// The same for the permissions alone, which an opened descriptor needs no longer.
    bool putBackPermissions();

    /// Whether the inode may be used at all: a handle to a symbolic link itself may not.
    [[nodiscard]] bool isUsable() const;

  private:
    enum class FlagChange { Changed, AlreadySo, Failed };

    [[nodiscard]] bool isNameless() const;
    bool told(bool isPutBack) const;
    FlagChange setImmutable(bool immutable);

    Descriptor handle_;
    QByteArray path_;
    FileStatus status_;
    bool isKnown_ = false;
    bool wasUnlocked_ = false;
    std::optional<std::uint32_t> oldPermissions_;
};
