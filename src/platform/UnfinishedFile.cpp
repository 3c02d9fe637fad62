#include "platform/UnfinishedFile.h"

#include <QFile>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int mostNames = 1000;
constexpr mode_t ownersOnly = 0600;

Descriptor opened(int folder, const char *path, int flags)
{
    const int fd = ::openat(folder, path, flags | O_CLOEXEC, ownersOnly);
    return Descriptor(fd < 0 ? -errno : fd);
}

QByteArray numbered(const QByteArray &stem, int number, const QByteArray &extension)
{
    return number == 1 ? stem + extension
                       : stem + " (" + QByteArray::number(number) + ')' + extension;
}

/// Tries the numbered names until `take` says anything but EEXIST.
template <class Take>
int firstFree(const QByteArray &stem, const QByteArray &extension, const Take &take)
{
    int error = EEXIST;
    for (int number = 1; number <= mostNames && error == EEXIST; ++number)
        error = take(numbered(stem, number, extension));
    return error;
}

/// umask(2) cannot be asked without setting it, which other threads would notice.
mode_t fileModeMask()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray &line : status.readAll().split('\n'))
            if (line.startsWith("Umask:"))
                return mode_t(line.sliced(6).trimmed().toUInt(nullptr, 8));
    return 077;
}

} // namespace

UnfinishedFile::UnfinishedFile(Kind kind, Descriptor folder, Descriptor file, QByteArray partName)
    : kind_(kind), folder_(std::move(folder)), file_(std::move(file)),
      partName_(std::move(partName))
{
}

UnfinishedFile::~UnfinishedFile()
{
    discard();
}

std::unique_ptr<UnfinishedFile> UnfinishedFile::make(const QByteArray &folder,
                                                     const QByteArray &stem, int &error, Kind kind)
{
    Descriptor place = opened(AT_FDCWD, folder.constData(), O_PATH | O_DIRECTORY);
    Descriptor file;
    QByteArray partName;
    if (place.isOpen() && kind == Kind::Nameless)
        file = opened(place.fd(), ".", O_TMPFILE | O_RDWR);
    if (place.isOpen() && !file.isOpen())
        firstFree(stem, QByteArrayLiteral(".part"), [&](const QByteArray &name) {
            file = opened(place.fd(), name.constData(), O_CREAT | O_EXCL | O_NOFOLLOW | O_RDWR);
            partName = name;
            return file.error();
        });
    error = place.isOpen() ? file.error() : place.error();
    if (error)
        return nullptr;
    return std::unique_ptr<UnfinishedFile>(
        new UnfinishedFile(kind, std::move(place), std::move(file), partName));
}

int UnfinishedFile::write(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const std::int64_t count =
            SystemCalls::current().write(file_.fd(), bytes.data(), std::size_t(bytes.size()));
        if (count < 0 && count != -EINTR)
            return int(-count);
        if (count > 0)
            bytes = bytes.sliced(qsizetype(count));
    }
    return 0;
}

int UnfinishedFile::sync()
{
    return -SystemCalls::current().sync(file_.fd());
}

std::optional<QByteArray> UnfinishedFile::content(std::int64_t size) const
{
    FileStatus status;
    if (SystemCalls::current().status(file_.fd(), status) != 0 || status.size != size)
        return std::nullopt;
    QByteArray bytes;
    try {
        bytes.resize(qsizetype(size));
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
    for (std::int64_t at = 0; at < size;) {
        const ssize_t count = ::pread(file_.fd(), bytes.data() + at, std::size_t(size - at), at);
        if (count == 0 || (count < 0 && errno != EINTR))
            return std::nullopt;
        at += std::max<ssize_t>(count, 0);
    }
    return bytes;
}

int UnfinishedFile::keep(const QByteArray &stem, const QByteArray &extension, QByteArray &name)
{
    // Some file systems have no permissions of their own; the file is as good there.
    SystemCalls::current().setPermissions(file_.fd(), 0666 & ~fileModeMask());
    return firstFree(stem, extension, [&](const QByteArray &next) {
        name = next;
        return giveName(next);
    });
}

int UnfinishedFile::giveName(const QByteArray &name)
{
    int error = kind_ == Kind::OneName ? EPERM : addName(name);
    if (error && error != EEXIST && !partName_.isEmpty())
        error = movePart(name);
    if (!error)
        discard();
    return error;
}

/// By way of the descriptor, so that it is this file whatever stands under its first name.
int UnfinishedFile::addName(const QByteArray &name)
{
    const QByteArray itself = "/proc/self/fd/" + QByteArray::number(file_.fd());
    const int result =
        ::linkat(AT_FDCWD, itself.constData(), folder_.fd(), name.constData(), AT_SYMLINK_FOLLOW);
    return result == 0 ? 0 : errno;
}

/// A rename goes by name only, so what it moved is looked at again.
int UnfinishedFile::movePart(const QByteArray &name)
{
    if (!isNamed(partName_))
        return ENOENT;
    const auto moved = [this](const QByteArray &from, const QByteArray &to) {
        return ::renameat2(folder_.fd(), from.constData(), folder_.fd(), to.constData(),
                           RENAME_NOREPLACE) == 0;
    };
    if (!moved(partName_, name))
        return errno;
    if (isNamed(name))
        return 0;
    moved(name, partName_);
    return ENOENT;
}

bool UnfinishedFile::isNamed(const QByteArray &name) const
{
    FileStatus ours;
    FileStatus there;
    SystemCalls &calls = SystemCalls::current();
    return calls.status(file_.fd(), ours) == 0 &&
           calls.statusAt(folder_.fd(), name.constData(), SystemCalls::LastLink::Stop, there) ==
               0 &&
           ours.isSameFile(there);
}

void UnfinishedFile::discard()
{
    if (!partName_.isEmpty() && isNamed(partName_))
        SystemCalls::current().unlink(folder_.fd(), partName_.constData());
    partName_.clear();
}
