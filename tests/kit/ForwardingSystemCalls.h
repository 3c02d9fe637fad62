#pragma once

#include "platform/SystemCalls.h"

/// Hands every call on to the operating system: the base of the doubles that look at calls or make
/// some of them fail.
class ForwardingSystemCalls : public SystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        return real().open(folder, path, access, lastLink);
    }
    int openFolderWithoutLinks(int folder, const char *path) override
    {
        return real().openFolderWithoutLinks(folder, path);
    }
    int reopen(int handle, Access access) override { return real().reopen(handle, access); }
    int close(int fd) override { return real().close(fd); }
    int status(int fd, FileStatus &status) override { return real().status(fd, status); }
    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        return real().statusAt(folder, path, lastLink, status);
    }
    std::int64_t seek(int fd, std::int64_t offset) override { return real().seek(fd, offset); }
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        return real().write(fd, bytes, count);
    }
    int sync(int fd) override { return real().sync(fd); }
    int unlink(int folder, const char *name) override { return real().unlink(folder, name); }
    int removeFolder(int folder, const char *name) override
    {
        return real().removeFolder(folder, name);
    }
    int makeFolder(const char *path) override { return real().makeFolder(path); }
    int rename(const char *from, const char *to) override { return real().rename(from, to); }
    int truncate(const char *path, std::int64_t size) override
    {
        return real().truncate(path, size);
    }
    int setPermissions(int handle, std::uint32_t permissions) override
    {
        return real().setPermissions(handle, permissions);
    }
    int inodeFlags(int fd, std::uint32_t &flags) override { return real().inodeFlags(fd, flags); }
    int setInodeFlags(int fd, std::uint32_t flags) override
    {
        return real().setInodeFlags(fd, flags);
    }
    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        return real().readFolder(fd, buffer, capacity);
    }
    int fileSystemType(const char *path, std::uint64_t &type) override
    {
        return real().fileSystemType(path, type);
    }
};
