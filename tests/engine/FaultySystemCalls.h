#pragma once

#include "kit/ForwardingSystemCalls.h"

#include <QByteArray>
#include <QSet>

#include <array>
#include <cerrno>
#include <map>
#include <set>
#include <utility>
#include <vector>

/// Makes one kind of call fail at its n-th occurrence, once or from then on, and keeps a ledger of
/// its own of what really reached each file, which no code under test has a hand in.
///
/// Thread: any, one at a time
class FaultySystemCalls final : public ForwardingSystemCalls
{
  public:
    enum class Kind {
        Open,
        OpenFolder,
        OpenFolderWithoutLinks,
        Reopen,
        Status,
        StatusAt,
        Seek,
        Write,
        Sync,
        Close,
        Unlink,
        RemoveFolder,
        SetPermissions,
        InodeFlags,
        SetInodeFlags,
        ReadFolder,
        Count
    };

    /// What happens to the call instead; `error` is an error number, or one of the others.
    struct Fault
    {
        enum : int { WriteNothing = 0, WriteOneByte = -1 };

        Kind kind = Kind::Count; ///< none
        int occurrence = 0;      ///< from 1
        int error = EIO;
        bool isForEver = false;
    };

    explicit FaultySystemCalls(Fault fault, int passes) : fault_(fault), passes_(passes) {}

    /// Opening the name for writing answers EACCES until its permissions were set.
    void refuseUntilPermitted(const QByteArray &name) { unpermitted_.insert(name); }
    /// Opening the name for writing answers EPERM until its immutable flag was cleared.
    void refuseUntilUnlocked(const QByteArray &name) { locked_.insert(name); }

    [[nodiscard]] int occurrences(Kind kind) const { return counts_[std::size_t(kind)]; }
    /// Whether the file was written in full and synced, pass by pass, and closed without an error.
    [[nodiscard]] bool isOverwritten(const FileStatus &file) const
    {
        const auto entry = ledger_.find({file.device, file.inode});
        return entry != ledger_.end() && !entry->second.isTainted &&
               entry->second.passesOnDisk >= passes_;
    }

    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        const bool isFolder = access == Access::Folder || access == Access::FolderHandle;
        if (strikes(isFolder ? Kind::OpenFolder : Kind::Open))
            return -fault_.error;
        if (access == Access::ReadWrite && unpermitted_.contains(path))
            return -EACCES;
        if (access == Access::ReadWrite && locked_.contains(path))
            return -EPERM;
        const int fd = ForwardingSystemCalls::open(folder, path, access, lastLink);
        if (fd >= 0 && access == Access::ReadWrite)
            beginEntry(fd);
        if (access == Access::Handle)
            handleName_ = path;
        return fd;
    }
    int openFolderWithoutLinks(int folder, const char *path) override
    {
        return strikes(Kind::OpenFolderWithoutLinks)
                   ? -fault_.error
                   : ForwardingSystemCalls::openFolderWithoutLinks(folder, path);
    }
    int reopen(int handle, Access access) override
    {
        return strikes(Kind::Reopen) ? -fault_.error
                                     : ForwardingSystemCalls::reopen(handle, access);
    }
    int status(int fd, FileStatus &status) override
    {
        return strikes(Kind::Status) ? -fault_.error : ForwardingSystemCalls::status(fd, status);
    }
    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        return strikes(Kind::StatusAt)
                   ? -fault_.error
                   : ForwardingSystemCalls::statusAt(folder, path, lastLink, status);
    }
    std::int64_t seek(int fd, std::int64_t offset) override
    {
        if (strikes(Kind::Seek))
            return -fault_.error;
        if (const auto file = files_.find(fd); file != files_.end())
            file->second.at = file->second.writtenUpTo = offset;
        return ForwardingSystemCalls::seek(fd, offset);
    }
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        if (strikes(Kind::Write) && fault_.error >= 0)
            return fault_.error == Fault::WriteNothing ? 0 : -fault_.error;
        if (isStriking_)
            count = 1;
        const std::int64_t written = ForwardingSystemCalls::write(fd, bytes, count);
        OpenFile &file = files_.at(fd);
        if (written > 0 && file.at == file.writtenUpTo)
            file.writtenUpTo += written;
        file.at += written > 0 ? written : 0;
        return written;
    }
    /// Leaves the disk alone: what it would do is in the ledger.
    int sync(int fd) override
    {
        const OpenFile &file = files_.at(fd);
        if (strikes(Kind::Sync)) {
            ledger_[file.inode].isTainted = true;
            return -fault_.error;
        }
        if (file.writtenUpTo == file.size)
            ++ledger_[file.inode].passesOnDisk;
        return 0;
    }
    int close(int fd) override
    {
        const bool isStriking = strikes(Kind::Close);
        if (const auto file = files_.find(fd); file != files_.end()) {
            if (isStriking)
                ledger_[file->second.inode].isTainted = true;
            files_.erase(file);
        }
        // Linux closes the descriptor also when it answers an error.
        const int result = ForwardingSystemCalls::close(fd);
        return isStriking ? -fault_.error : result;
    }
    int unlink(int folder, const char *name) override
    {
        return strikes(Kind::Unlink) ? -fault_.error : ForwardingSystemCalls::unlink(folder, name);
    }
    int removeFolder(int folder, const char *name) override
    {
        return strikes(Kind::RemoveFolder) ? -fault_.error
                                           : ForwardingSystemCalls::removeFolder(folder, name);
    }
    int setPermissions(int handle, std::uint32_t permissions) override
    {
        if (strikes(Kind::SetPermissions))
            return -fault_.error;
        unpermitted_.erase(handleName_);
        return ForwardingSystemCalls::setPermissions(handle, permissions);
    }
    int inodeFlags(int /*fd*/, std::uint32_t &flags) override
    {
        if (strikes(Kind::InodeFlags))
            return -fault_.error;
        flags = locked_.contains(handleName_) ? immutableFlag : 0;
        return 0;
    }
    int setInodeFlags(int /*fd*/, std::uint32_t flags) override
    {
        if (strikes(Kind::SetInodeFlags))
            return -fault_.error;
        if ((flags & immutableFlag) == 0)
            locked_.erase(handleName_);
        return 0;
    }
    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        return strikes(Kind::ReadFolder) ? -fault_.error
                                         : ForwardingSystemCalls::readFolder(fd, buffer, capacity);
    }

  private:
    using Inode = std::pair<std::uint64_t, std::uint64_t>;

    struct OpenFile
    {
        Inode inode;
        std::int64_t size = 0;
        std::int64_t at = 0;
        std::int64_t writtenUpTo = 0; ///< from the start, without a gap, since the last seek
    };
    struct Entry
    {
        int passesOnDisk = 0;
        bool isTainted = false;
    };

    bool strikes(Kind kind)
    {
        const int count = ++counts_[std::size_t(kind)];
        isStriking_ = kind == fault_.kind &&
                      (fault_.isForEver ? count >= fault_.occurrence : count == fault_.occurrence);
        return isStriking_;
    }

    void beginEntry(int fd)
    {
        FileStatus status;
        real().status(fd, status);
        files_[fd] = {{status.device, status.inode}, status.size, 0, 0};
        ledger_[{status.device, status.inode}] = {};
    }

    Fault fault_;
    int passes_;
    bool isStriking_ = false;
    std::array<int, std::size_t(Kind::Count)> counts_{};
    std::map<int, OpenFile> files_;
    std::map<Inode, Entry> ledger_;
    std::set<QByteArray> unpermitted_;
    std::set<QByteArray> locked_;
    QByteArray handleName_;
};
