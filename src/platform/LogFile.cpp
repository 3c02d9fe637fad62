#include "platform/LogFile.h"

#include "platform/PathBytes.h"

#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int appending = O_WRONLY | O_APPEND | O_NOCTTY | O_CLOEXEC;

/// Opens the inode behind the handle, whatever has its name by now.
Descriptor reopened(const Descriptor &handle, int flags)
{
    std::array<char, 32> path{};
    std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", handle.fd());
    const int fd = ::open(path.data(), flags);
    return Descriptor(fd < 0 ? -errno : fd);
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
    FileStatus status;
    int error = handle.error();
    if (error == 0)
        error = -Calls::current().status(handle.fd(), status);
    if (error == 0)
        error = refusal(status.kind);
    return error == 0 ? reopened(handle, appending | O_TRUNC) : Descriptor(-error);
}

int whyNotMade(const QByteArray &path)
{
    const QByteArray folder = PathBytes::withoutLastComponent(path);
    const int result = ::faccessat(AT_FDCWD, folder.constData(), W_OK | X_OK, AT_EACCESS);
    return result == 0 ? 0 : errno;
}

int whyNotWritten(const QByteArray &path)
{
    using Calls = SystemCalls;
    const Descriptor handle(Calls::current().open(Calls::startFolder, path.constData(),
                                                  Calls::Access::Handle, Calls::LastLink::Stop));
    FileStatus status;
    if (!handle.isOpen() || Calls::current().status(handle.fd(), status) < 0)
        return handle.error();
    // Without O_APPEND: a file that can only grow cannot be emptied either.
    const int flags = O_WRONLY | O_NOCTTY | O_CLOEXEC;
    return status.kind == FileKind::Regular ? reopened(handle, flags).error() : 0;
}

} // namespace

LogPathFacts LogFile::look(const QByteArray &path)
{
    using Calls = SystemCalls;
    FileStatus status;
    const int result = Calls::current().statusAt(Calls::startFolder, path.constData(),
                                                 Calls::LastLink::Stop, status);
    if (result == -ENOENT)
        return {std::nullopt, whyNotMade(path)};
    if (result < 0)
        return {std::nullopt, -result};
    return {status.kind, status.kind == FileKind::Regular ? whyNotWritten(path) : 0};
}

int LogFile::open(const QByteArray &path)
{
    // Twice, since the name may come and go in between.
    for (int attempt = 0; attempt < 2; ++attempt) {
        file_ = emptied(path);
        if (file_.error() == ENOENT)
            file_ = made(path);
        if (file_.error() != EEXIST)
            break;
    }
    return file_.error();
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
