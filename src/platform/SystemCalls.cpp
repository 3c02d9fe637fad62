#include "platform/SystemCalls.h"

#include <array>
#include <cerrno>
#include <cstdio>

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/openat2.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

static_assert(SystemCalls::startFolder == AT_FDCWD);
static_assert(SystemCalls::immutableFlag == FS_IMMUTABLE_FL);
static_assert(sizeof(off_t) == 8, "large files need a 64-bit off_t");

template <class Result> Result orError(Result result)
{
    return result < 0 ? static_cast<Result>(-errno) : result;
}

int openFlags(SystemCalls::Access access)
{
    switch (access) {
    case SystemCalls::Access::ReadWrite:
        return O_RDWR | O_NOCTTY | O_CLOEXEC;
    case SystemCalls::Access::Read:
        return O_RDONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;
    case SystemCalls::Access::Handle:
        return O_PATH | O_CLOEXEC;
    case SystemCalls::Access::Folder:
        return O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    case SystemCalls::Access::FolderHandle:
        return O_PATH | O_DIRECTORY | O_CLOEXEC;
    }
    return O_PATH;
}

FileKind kindOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return FileKind::Regular;
    case S_IFDIR:
        return FileKind::Folder;
    case S_IFLNK:
        return FileKind::Link;
    case S_IFIFO:
        return FileKind::Fifo;
    case S_IFSOCK:
        return FileKind::Socket;
    case S_IFBLK:
        return FileKind::BlockDevice;
    case S_IFCHR:
        return FileKind::CharacterDevice;
    default:
        return FileKind::Unknown;
    }
}

FileStatus statusOf(const struct stat &buffer)
{
    FileStatus status;
    status.device = buffer.st_dev;
    status.inode = buffer.st_ino;
    status.hardLinks = buffer.st_nlink;
    status.size = buffer.st_size;
    status.permissions = buffer.st_mode & 07777U;
    status.kind = kindOf(buffer.st_mode);
    return status;
}

/// The name under which /proc offers an open descriptor's inode.
class DescriptorPath
{
  public:
    explicit DescriptorPath(int fd)
    {
        std::snprintf(text_.data(), text_.size(), "/proc/self/fd/%d", fd);
    }
    [[nodiscard]] const char *text() const { return text_.data(); }

  private:
    std::array<char, 32> text_{};
};

class RealSystemCalls final : public SystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        const int stop = lastLink == LastLink::Stop ? O_NOFOLLOW : 0;
        return orError(::openat(folder, path, openFlags(access) | stop));
    }

    int openFolderWithoutLinks(int folder, const char *path) override
    {
        struct open_how how = {};
        how.flags = static_cast<std::uint64_t>(openFlags(Access::FolderHandle));
        how.resolve = RESOLVE_NO_SYMLINKS;
        // glibc has no wrapper for this call.
        return static_cast<int>(orError(::syscall(SYS_openat2, folder, path, &how, sizeof how)));
    }

    int reopen(int handle, Access access) override
    {
        return orError(::open(DescriptorPath(handle).text(), openFlags(access)));
    }

    int close(int fd) override { return orError(::close(fd)); }

    int status(int fd, FileStatus &status) override
    {
        struct stat buffer = {};
        const int result = orError(::fstat(fd, &buffer));
        if (result >= 0)
            status = statusOf(buffer);
        return result;
    }

    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        struct stat buffer = {};
        const int stop = lastLink == LastLink::Stop ? AT_SYMLINK_NOFOLLOW : 0;
        const int result = orError(::fstatat(folder, path, &buffer, stop | AT_NO_AUTOMOUNT));
        if (result >= 0)
            status = statusOf(buffer);
        return result;
    }

    std::int64_t seek(int fd, std::int64_t offset) override
    {
        return orError(::lseek(fd, offset, SEEK_SET));
    }

    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        return orError(::write(fd, bytes, count));
    }

    int sync(int fd) override { return orError(::fsync(fd)); }

    int unlink(int folder, const char *name) override
    {
        return orError(::unlinkat(folder, name, 0));
    }

    int removeFolder(int folder, const char *name) override
    {
        return orError(::unlinkat(folder, name, AT_REMOVEDIR));
    }

    int makeFolder(const char *path) override { return orError(::mkdir(path, 0777)); }

    int rename(const char *from, const char *to) override { return orError(::rename(from, to)); }

    int truncate(const char *path, std::int64_t size) override
    {
        return orError(::truncate(path, size));
    }

    int setPermissions(int handle, std::uint32_t permissions) override
    {
        return orError(::chmod(DescriptorPath(handle).text(), permissions));
    }

    int inodeFlags(int fd, std::uint32_t &flags) override
    {
        // The kernel reads and writes an int here, whatever the request's name says.
        int value = 0;
        const int result = orError(::ioctl(fd, FS_IOC_GETFLAGS, &value));
        if (result >= 0)
            flags = static_cast<std::uint32_t>(value);
        return result;
    }

    int setInodeFlags(int fd, std::uint32_t flags) override
    {
        int value = static_cast<int>(flags);
        return orError(::ioctl(fd, FS_IOC_SETFLAGS, &value));
    }

    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        return orError(::getdents64(fd, buffer, capacity));
    }

    int fileSystemType(const char *path, std::uint64_t &type) override
    {
        struct statfs buffer = {};
        const int result = orError(::statfs(path, &buffer));
        if (result >= 0)
            type = static_cast<std::uint32_t>(buffer.f_type);
        return result;
    }
};

SystemCalls *currentCalls = &SystemCalls::real();

} // namespace

SystemCalls &SystemCalls::real()
{
    static RealSystemCalls calls;
    return calls;
}

bool SystemCalls::isMountPoint(const char *path)
{
    struct statx status = {};
    return ::statx(AT_FDCWD, path, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, 0, &status) == 0 &&
           (status.stx_attributes_mask & status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

SystemCalls &SystemCalls::current()
{
    return *currentCalls;
}

SystemCalls::Replacement::Replacement(SystemCalls &calls) : previous_(currentCalls)
{
    currentCalls = &calls;
}

SystemCalls::Replacement::~Replacement()
{
    currentCalls = previous_;
}
