#pragma once

#include <QByteArray>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

/// The inode flags of a file (ioctl_iflags(2)), read and set beside the code under test.
namespace InodeFlags {

inline int of(const QByteArray &path)
{
    int flags = -1;
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    ::ioctl(fd, FS_IOC_GETFLAGS, &flags);
    ::close(fd);
    return flags;
}

inline bool set(const QByteArray &path, int flags)
{
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    const bool isSet = ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
    ::close(fd);
    return isSet;
}

inline bool add(const QByteArray &path, int flags)
{
    return set(path, of(path) | flags);
}

inline bool remove(const QByteArray &path, int flags)
{
    return set(path, of(path) & ~flags);
}

} // namespace InodeFlags
