#include "platform/LogFile.h"

#include "platform/FileSystemKind.h"
#include "platform/PathBytes.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

// Without O_NONBLOCK a file that another program holds a lease on would keep us waiting for it.
constexpr int writing = O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC;
constexpr int appending = writing | O_APPEND;

/// A name of the inode behind the handle, whatever has its own name by now.
QByteArray nameOf(const Descriptor &handle)
{
    return "/proc/self/fd/" + QByteArray::number(handle.fd());
}

Descriptor reopened(const Descriptor &handle, int flags)
{
    const int fd = ::open(nameOf(handle).constData(), flags);
    return Descriptor(fd < 0 ? -errno : fd);
}

bool isKernelsOwn(const QByteArray &path)
{
    std::uint64_t type = 0;
    return SystemCalls::current().fileSystemType(path.constData(), type) >= 0 &&
           FileSystemKind::isKernelInterface(type);
}

/// What is behind the handle. The kernel's switches and tables look like ordinary files, but are
/// none.
int kindOf(const Descriptor &handle, FileKind &kind)
{
    FileStatus status;
    const int result = SystemCalls::current().status(handle.fd(), status);
    const bool isSwitch = status.kind == FileKind::Regular && isKernelsOwn(nameOf(handle));
    kind = isSwitch ? FileKind::Unknown : status.kind;
    return result < 0 ? -result : 0;
}

Descriptor made(const QByteArray &path)
{
    constexpr mode_t permissions = 0666; // less the user's mask
    const int fd = ::open(path.constData(), appending | O_CREAT | O_EXCL, permissions);
    return Descriptor(fd < 0 ? -errno : fd);
}

int refusal(FileKind kind)
{
    switch (kind) {
    case FileKind::Regular:
        return 0;
    case FileKind::Folder:
        return EISDIR;
    case FileKind::Link:
        return ELOOP;
    default:
        return EINVAL;
    }
}

/// Empties what is there; ENOENT where nothing is.
Descriptor emptied(const QByteArray &path)
{
    using Calls = SystemCalls;
    const Descriptor handle(Calls::current().open(Calls::startFolder, path.constData(),
                                                  Calls::Access::Handle, Calls::LastLink::Stop));
    FileKind kind = FileKind::Unknown;
    int error = handle.error();
    if (error == 0)
        error = kindOf(handle, kind);
    if (error == 0)
        error = refusal(kind);
    return error == 0 ? reopened(handle, appending | O_TRUNC) : Descriptor(-error);
}

int whyNotMade(const QByteArray &path)
{
    const QByteArray folder = PathBytes::withoutLastComponent(path);
    if (isKernelsOwn(folder))
        return EACCES;
    const int result = ::faccessat(AT_FDCWD, folder.constData(), W_OK | X_OK, AT_EACCESS);
    return result == 0 ? 0 : errno;
}

} // namespace

LogPathFacts LogFile::look(const QByteArray &path)
{
    using Calls = SystemCalls;
    const Descriptor handle(Calls::current().open(Calls::startFolder, path.constData(),
                                                  Calls::Access::Handle, Calls::LastLink::Stop));
    if (handle.error() == ENOENT)
        return {std::nullopt, whyNotMade(path)};
    if (!handle.isOpen())
        return {std::nullopt, handle.error()};
    FileKind kind = FileKind::Unknown;
    if (const int error = kindOf(handle, kind); error != 0)
        return {std::nullopt, error};
    // Without O_APPEND: a file that can only grow cannot be emptied either.
    return {kind, kind == FileKind::Regular ? reopened(handle, writing).error() : 0};
}

int LogFile::open(const QByteArray &path)
{
    file_ = emptied(path);
    if (file_.error() == ENOENT)
        file_ = made(path);
    return file_.error();
}

bool LogFile::isRemoved() const
{
    FileStatus status;
    return isOpen() && SystemCalls::current().status(file_.fd(), status) >= 0 &&
           status.hardLinks == 0;
}

int LogFile::write(const QByteArray &line)
{
    const QByteArray bytes = isLineCut_.exchange(false) ? '\n' + line : line;
    constexpr int patience = 1000; // calls that a signal may interrupt
    std::int64_t written = -EINTR;
    for (int attempt = 0; written == -EINTR && attempt < patience; ++attempt)
        written = SystemCalls::current().write(file_.fd(), bytes.constData(),
                                               static_cast<std::size_t>(bytes.size()));
    if (written == bytes.size())
        return 0;
    if (written > 0 || bytes.size() > line.size())
        isLineCut_ = true;
    return written < 0 ? static_cast<int>(-written) : EIO;
}
