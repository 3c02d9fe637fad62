#pragma once

#include <cstddef>
#include <cstdint>

/// What a name in a folder is.
enum class FileKind : std::uint8_t {
    Regular,
    Folder,
    Link,
    Fifo,
    Socket,
    BlockDevice,
    CharacterDevice,
    Unknown
};

/// What fstat(2) tells of a file.
struct FileStatus
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t hardLinks = 0;
    std::int64_t size = 0;         ///< bytes
    std::uint32_t permissions = 0; ///< the mode's low twelve bits
    FileKind kind = FileKind::Unknown;

    [[nodiscard]] bool isSameFile(const FileStatus &other) const
    {
        return inode == other.inode && device == other.device;
    }
    [[nodiscard]] bool isDevice() const
    {
        return kind == FileKind::BlockDevice || kind == FileKind::CharacterDevice;
    }
};

/// The calls into the operating system through which the project reaches files. Each is one system
/// call, or two where it says so; nothing is retried and nothing is decided here.
///
/// The real body is the default. A test puts its own in place with `Replacement` and so sees every
/// call, and makes any of them fail.
///
/// Thread:  any; replaced only while no other thread uses it
/// Units:   bytes
/// Failure: every call returns 0 or a count, or the negative error number (-ENOENT, ...); the
///          global errno means nothing to callers
class SystemCalls
{
  public:
    enum class Access {
        ReadWrite,   ///< never creates, never cuts
        Read,        ///< does not block on a FIFO
        Handle,      ///< names the inode, needs no permission on it and touches nothing (O_PATH)
        Folder,      ///< to list it; anything but a folder is refused
        FolderHandle ///< to reach what is in it; anything but a folder is refused
    };

    /// What becomes of a symbolic link in the last component of a path. With `Stop`, opening one
    /// fails with ELOOP (or ENOTDIR for the folder kinds), except as a `Handle`, which then is the
    /// link itself.
    enum class LastLink { Follow, Stop };

    static constexpr int startFolder = -100; ///< AT_FDCWD: relative to the working folder

    virtual ~SystemCalls() = default;

    static SystemCalls &current();

    virtual int open(int folder, const char *path, Access access, LastLink lastLink) = 0;
    /// openat2(2) with RESOLVE_NO_SYMLINKS as a FolderHandle: -ELOOP where any component is a link,
    /// -ENOSYS where the system does not know the call.
    virtual int openFolderWithoutLinks(int folder, const char *path) = 0;
    /// Opens the inode behind a handle anew, whatever its names are by now (needs /proc).
    virtual int reopen(int handle, Access access) = 0;
    virtual int close(int fd) = 0;

    virtual int status(int fd, FileStatus &status) = 0;
    virtual int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) = 0;

    virtual std::int64_t seek(int fd, std::int64_t offset) = 0;
    virtual std::int64_t write(int fd, const void *bytes, std::size_t count) = 0;
    virtual int sync(int fd) = 0;

    virtual int unlink(int folder, const char *name) = 0;
    virtual int removeFolder(int folder, const char *name) = 0;
    virtual int makeFolder(const char *path) = 0;
    virtual int rename(const char *from, const char *to) = 0;
    virtual int truncate(const char *path, std::int64_t size) = 0;

    /// Sets the permissions of the inode behind a handle (needs /proc: chmod(2) knows no handles).
    virtual int setPermissions(int handle, std::uint32_t permissions) = 0;

    /// The inode flags of FS_IOC_GETFLAGS, ioctl_iflags(2); `fd` is opened for reading.
    virtual int inodeFlags(int fd, std::uint32_t &flags) = 0;
    virtual int setInodeFlags(int fd, std::uint32_t flags) = 0;
    static constexpr std::uint32_t immutableFlag = 0x10; ///< FS_IMMUTABLE_FL

    /// Raw directory entries of getdents64(2): how many bytes of `buffer` are filled, 0 at the end.
    virtual std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) = 0;
    /// The f_type of statfs(2) for the path.
    virtual int fileSystemType(const char *path, std::uint64_t &type) = 0;
    /// Whether something is mounted at the path, be it of the same file system (statx(2),
    /// STATX_ATTR_MOUNT_ROOT); false where the system does not say.
    virtual bool isMountPoint(const char *path);

    /// Puts another body in place for its own lifetime.
    class Replacement
    {
      public:
        explicit Replacement(SystemCalls &calls);
        ~Replacement();
        Replacement(const Replacement &) = delete;
        Replacement &operator=(const Replacement &) = delete;

      private:
        SystemCalls *previous_;
    };

    /// The operating system itself.
    static SystemCalls &real();
};
