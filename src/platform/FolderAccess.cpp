#include "platform/FolderAccess.h"

#include <QList>

#include <algorithm>
#include <cerrno>

namespace {

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

/// EPERM is what some container filters answer to calls they do not know.
bool isUnknownCall(int result)
{
    return result == -ENOSYS || result == -EPERM;
}

Descriptor openComponentByComponent(const Descriptor &base, const QByteArray &relativePath)
{
    Descriptor folder;
    for (const QByteArray &name : relativePath.split('/')) {
        const int parent = folder.isOpen() ? folder.fd() : base.fd();
        folder = Descriptor(SystemCalls::current().open(parent, name.constData(),
                                                        Access::FolderHandle, LastLink::Stop));
        if (!folder.isOpen())
            break;
    }
    return folder;
}

Descriptor openBelow(const Descriptor &base, const QByteArray &relativePath)
{
    const int fd =
        SystemCalls::current().openFolderWithoutLinks(base.fd(), relativePath.constData());
    return isUnknownCall(fd) ? openComponentByComponent(base, relativePath) : Descriptor(fd);
}

} // namespace

Descriptor FolderAccess::open(const QByteArray &path, qsizetype givenLength)
{
    if (path.isEmpty())
        return Descriptor(-ENOENT);
    if (givenLength < 0)
        givenLength = path.size();
    // Most paths hold no link at all, and then one call does it.
    SystemCalls &calls = SystemCalls::current();
    if (const int fd = calls.openFolderWithoutLinks(SystemCalls::startFolder, path.constData());
        fd >= 0)
        return Descriptor(fd);

    const QByteArray given = path.first(std::min(givenLength, path.size()));
    QByteArray found = path.mid(givenLength);
    if (found.startsWith('/'))
        found.remove(0, 1);
    Descriptor folder(calls.open(SystemCalls::startFolder, given.constData(), Access::FolderHandle,
                                 LastLink::Follow));
    if (!folder.isOpen() || found.isEmpty())
        return folder;
    return openBelow(folder, found);
}
