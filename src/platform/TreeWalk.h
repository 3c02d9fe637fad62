#pragma once

#include "platform/Descriptor.h"
#include "platform/FolderReader.h"

#include <QByteArray>
#include <QList>

#include <string>
#include <vector>

/// What a walk tells of the tree. The same receiver hears of every entry exactly once.
class TreeVisitor
{
  public:
    virtual ~TreeVisitor() = default;

    /// A folder was met, perhaps one that then cannot be read. False: it is passed over.
    virtual bool enterFolder(const QByteArray &path) = 0;
    /// The folder is open, also the one where the walk began. False: nothing in it is told.
    virtual bool openedFolder(const QByteArray &path, const FileStatus &status) = 0;
    /// Anything but a folder, among it links to folders. `folder` is the open folder that holds it.
    virtual void visitEntry(int folder, const QByteArray &folderPath, const char *name,
                            FileKind kind) = 0;
    /// All that is below a folder that was entered has been told; `parent` is the open folder that
    /// holds it, under `name`. Not told of the folder where the walk began.
    virtual void leaveFolder(int parent, const QByteArray &path, const char *name) = 0;
    /// A folder could not be opened or read to its end.
    virtual void unreadableFolder(const QByteArray &path, int error) = 0;
    /// What the entry is could not be found out; it is not visited.
    virtual void unreadableEntry(const QByteArray &path, int error) = 0;
    [[nodiscard]] virtual bool shouldStop() const = 0;
};

/// A depth-first walk of a folder's tree that enters no link. In each folder the entries that are
/// no folders come first.
///
/// Depth costs a few bytes a level: there is no recursion, and of the folders on the way down only
/// the deepest `openFolders` stay open; a parent that was closed is found again through the child's
/// "..", and recognised by its inode. Width costs the names of the sub-folders not yet entered.
///
/// Thread:  any; one thread at a time
/// Blocks:  on disk I/O
/// Failure: told to the visitor; the walk goes on with what else there is
class TreeWalk
{
  public:
    static constexpr std::size_t openFolders = 32;

    explicit TreeWalk(TreeVisitor &visitor) : visitor_(visitor) {}

    /// `folder` is the open folder that bears `path`. False if the visitor stopped the walk.
    bool walk(Descriptor folder, const QByteArray &path);

  private:
    /// A folder on the way down whose entries have been read and whose sub-folders are entered one
    /// after the other.
    struct Level
    {
        Descriptor folder;
        FileStatus status;
        qsizetype pathLength = 0;
        std::string names; ///< of the sub-folders, each with its NUL
        std::size_t next = 0;

        [[nodiscard]] bool isDone() const { return next == names.size(); }
        const char *takeName();
    };

    void descend(Descriptor folder);
    void read(Level &level);
    void enterNext();
    void leave();
    bool openAgain(std::size_t level);
    Descriptor reopenParent(const Level &level) const;
    Descriptor reopenFromTop(std::size_t level) const;
    void closeOldest();

    TreeVisitor &visitor_;
    QByteArray path_;
    std::vector<Level> levels_;
};
