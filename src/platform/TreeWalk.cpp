#include "platform/TreeWalk.h"

#include "platform/PathBytes.h"

#include <cerrno>
#include <cstring>

namespace {

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

Descriptor openFolder(int parent, const char *name)
{
    return Descriptor(SystemCalls::current().open(parent, name, Access::Folder, LastLink::Stop));
}

} // namespace

const char *TreeWalk::Level::takeName()
{
    const char *name = names.c_str() + next;
    next += std::strlen(name) + 1;
    return name;
}

bool TreeWalk::walk(Descriptor folder, const QByteArray &path)
{
    path_ = path;
    levels_.clear();
    descend(std::move(folder));
    while (!levels_.empty() && !visitor_.shouldStop()) {
        if (levels_.back().isDone())
            leave();
        else
            enterNext();
    }
    const bool isWhole = levels_.empty();
    levels_.clear();
    return isWhole;
}

/// Makes the folder at `path_` the deepest level and tells its entries.
void TreeWalk::descend(Descriptor folder)
{
    Level level;
    level.folder = std::move(folder);
    level.pathLength = path_.size();
    if (const int result = SystemCalls::current().status(level.folder.fd(), level.status);
        result < 0)
        visitor_.unreadableFolder(path_, -result);
    else if (visitor_.openedFolder(path_, level.status))
        read(level);
    levels_.push_back(std::move(level));
    closeOldest();
}

void TreeWalk::read(Level &level)
{
    FolderReader reader(level.folder.fd());
    FolderReader::Entry entry{};
    while (reader.next(entry)) {
        if (entry.kind == FileKind::Unknown) {
            FileStatus status;
            const int result = SystemCalls::current().statusAt(level.folder.fd(), entry.name,
                                                               LastLink::Stop, status);
            if (result < 0) {
                visitor_.unreadableEntry(PathBytes::join(path_, entry.name), -result);
                continue;
            }
            entry.kind = status.kind;
        }
        if (entry.kind == FileKind::Folder)
            level.names.append(entry.name, std::strlen(entry.name) + 1);
        else
            visitor_.visitEntry(level.folder.fd(), path_, entry.name, entry.kind);
        if (visitor_.shouldStop())
            return;
    }
    if (reader.error() != 0)
        visitor_.unreadableFolder(path_, reader.error());
}

void TreeWalk::enterNext()
{
    Level &parent = levels_.back();
    const char *name = parent.takeName();
    if (!path_.endsWith('/'))
        path_ += '/';
    path_ += name;
    if (!visitor_.enterFolder(path_)) {
        path_.truncate(parent.pathLength);
        return;
    }
    Descriptor folder = openFolder(parent.folder.fd(), name);
    if (folder.isOpen()) {
        descend(std::move(folder));
        return;
    }
    visitor_.unreadableFolder(path_, folder.error());
    visitor_.leaveFolder(parent.folder.fd(), path_, name);
    path_.truncate(parent.pathLength);
}

/// Goes up one level. A parent that cannot be opened again is told as unreadable and left in turn.
void TreeWalk::leave()
{
    if (levels_.size() == 1) {
        levels_.clear();
        return;
    }
    const std::size_t parent = levels_.size() - 2;
    const bool isOpen = levels_[parent].folder.isOpen() || openAgain(parent);
    const QByteArray name = path_.mid(levels_[parent].pathLength).replace('/', QByteArray());
    levels_.pop_back();
    if (isOpen)
        visitor_.leaveFolder(levels_[parent].folder.fd(), path_, name.constData());
    path_.truncate(levels_[parent].pathLength);
}

bool TreeWalk::openAgain(std::size_t level)
{
    Descriptor folder = reopenParent(levels_[level]);
    if (!folder.isOpen())
        folder = reopenFromTop(level);
    if (folder.isOpen()) {
        levels_[level].folder = std::move(folder);
        return true;
    }
    visitor_.unreadableFolder(path_.first(levels_[level].pathLength), folder.error());
    levels_[level].next = levels_[level].names.size();
    return false;
}

/// Through ".." of the level below, which is open.
Descriptor TreeWalk::reopenParent(const Level &level) const
{
    Descriptor folder = openFolder(levels_.back().folder.fd(), "..");
    FileStatus status;
    if (folder.isOpen() && SystemCalls::current().status(folder.fd(), status) >= 0 &&
        status.isSameFile(level.status))
        return folder;
    return Descriptor(-ENOENT);
}

/// Name by name from the folder where the walk began, which stays open: the way back when the level
/// below was moved elsewhere meanwhile.
Descriptor TreeWalk::reopenFromTop(std::size_t level) const
{
    Descriptor folder;
    for (std::size_t at = 1; at <= level; ++at) {
        const qsizetype start = levels_[at - 1].pathLength;
        const QByteArray name =
            path_.mid(start, levels_[at].pathLength - start).replace('/', QByteArray());
        const int parent = at == 1 ? levels_.front().folder.fd() : folder.fd();
        folder = openFolder(parent, name.constData());
        FileStatus status;
        if (!folder.isOpen() || SystemCalls::current().status(folder.fd(), status) < 0 ||
            !status.isSameFile(levels_[at].status))
            return Descriptor(-ENOENT);
    }
    return folder;
}

/// The first level stays open, as the anchor of reopenFromTop().
void TreeWalk::closeOldest()
{
    if (levels_.size() > openFolders + 1)
        levels_[levels_.size() - 1 - openFolders].folder.close();
}
