#include "engine/FolderRemoval.h"

#include "engine/ProtectedPlaces.h"
#include "platform/FolderAccess.h"
#include "platform/PathBytes.h"
#include "platform/TreeWalk.h"

#include <cerrno>
#include <utility>

namespace {

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

bool isHidden(const char *name)
{
    return name[0] == '.';
}

/// Removes what it is told of, and remembers the first failure. Stays where it began: it enters
/// nothing that is mounted below, and no protected place.
class Remover final : public TreeVisitor
{
  public:
    Remover(QByteArray top, const FileStatus &status, FolderRemoval::Contents contents)
        : top_(std::move(top)), device_(status.device), contents_(contents)
    {
    }

    bool enterFolder(const QByteArray &path) override
    {
        const qsizetype slash = path.lastIndexOf('/');
        return mayRemove(slash == top_.size(), path.constData() + slash + 1);
    }

    bool openedFolder(const QByteArray &path, const FileStatus &status) override
    {
        const bool isTop = path.size() == top_.size();
        if (status.device == device_ && !protectedPlaces_.contains(status, 0) &&
            (isTop || !SystemCalls::current().isMountPoint(path.constData())))
            return true;
        note(-EXDEV);
        return false;
    }

    void visitEntry(int folder, const QByteArray &folderPath, const char *name,
                    FileKind /*kind*/) override
    {
        if (!mayRemove(folderPath.size() == top_.size(), name))
            return;
        const int result = SystemCalls::current().unlink(folder, name);
        note(result);
        if (result >= 0)
            entries.push_back(PathBytes::join(folderPath, name));
    }

    void leaveFolder(int parent, const QByteArray &path, const char *name) override
    {
        const int result = SystemCalls::current().removeFolder(parent, name);
        note(result);
        // A longer one cannot have been queued for removal by its path.
        if (result >= 0 && PathBytes::fitsTheSystem(path))
            folders.push_back(path);
    }

    /// Whether a folder that may not be listed holds anything, its own removal tells.
    void unreadableFolder(const QByteArray & /*path*/, int error) override
    {
        if (error != EACCES)
            note(-error);
    }
    void unreadableEntry(const QByteArray & /*path*/, int error) override { note(-error); }
    [[nodiscard]] bool shouldStop() const override { return false; }

    [[nodiscard]] int error() const { return error_; }

    std::vector<QByteArray> entries;
    std::vector<QByteArray> folders;

  private:
    [[nodiscard]] bool mayRemove(bool isInTop, const char *name) const
    {
        return contents_ == FolderRemoval::Contents::All || !isInTop || isHidden(name);
    }

    void note(int result)
    {
        if (result < 0 && error_ == 0)
            error_ = -result;
    }

    QByteArray top_;
    std::uint64_t device_;
    FolderRemoval::Contents contents_;
    ProtectedPlaces protectedPlaces_;
    int error_ = 0;
};

} // namespace

FolderRemoval::FolderRemoval(const QByteArray &path, const ScanFacts &facts)
    : path_(PathBytes::withoutTrailingSlashes(path)), name_(PathBytes::lastComponent(path)),
      isLink_(facts.isLink), isUnfinished_(facts.isUnfinished)
{
    parent_ = FolderAccess::open(PathBytes::withoutLastComponent(path), facts.givenLength);
    if (parent_.isOpen())
        folder_ =
            Descriptor(SystemCalls::current().open(parent_.fd(), name_.constData(), Access::Folder,
                                                   isLink_ ? LastLink::Follow : LastLink::Stop));
}

bool FolderRemoval::isEmpty() const
{
    if (!folder_.isOpen())
        return true;
    SystemCalls::current().seek(folder_.fd(), 0);
    FolderReader reader(folder_.fd());
    FolderReader::Entry entry{};
    while (reader.next(entry)) {
        if (isUnfinished_ || !isHidden(entry.name))
            return false;
    }
    return true;
}

int FolderRemoval::remove(Contents contents)
{
    if (!parent_.isOpen())
        return parent_.error();
    if (!ProtectedPlaces::refusal(path_).isNull())
        return EPERM;
    return isLink_ ? removeLink() : removeFolder(contents);
}

int FolderRemoval::removeFolder(Contents contents)
{
    // A folder that may not be listed can still be removed, if it is empty.
    if (!folder_.isOpen() && folder_.error() != EACCES)
        return folder_.error();
    if (folder_.isOpen() && !isUnfinished_) {
        if (const int error = removeContents(contents); error != 0)
            return error;
    }
    return -SystemCalls::current().removeFolder(parent_.fd(), name_.constData());
}

/// 0 if the name then still is the folder that was opened.
int FolderRemoval::removeContents(Contents contents)
{
    SystemCalls &calls = SystemCalls::current();
    FileStatus opened;
    if (const int result = calls.status(folder_.fd(), opened); result < 0)
        return -result;
    calls.seek(folder_.fd(), 0);
    Remover remover(path_, opened, contents);
    TreeWalk(remover).walk(std::move(folder_), path_);
    removedEntries_ = std::move(remover.entries);
    removedFolders_ = std::move(remover.folders);
    if (remover.error() != 0)
        return remover.error();
    FileStatus named;
    const int result = calls.statusAt(parent_.fd(), name_.constData(), LastLink::Stop, named);
    if (result < 0)
        return -result;
    return named.isSameFile(opened) ? 0 : ENOENT;
}

int FolderRemoval::removeLink()
{
    SystemCalls &calls = SystemCalls::current();
    FileStatus named;
    const int result = calls.statusAt(parent_.fd(), name_.constData(), LastLink::Stop, named);
    if (result < 0)
        return -result;
    if (named.kind != FileKind::Link)
        return ENOLINK;
    return -calls.unlink(parent_.fd(), name_.constData());
}
