#pragma once

#include "engine/ScanFacts.h"
#include "platform/Descriptor.h"

#include <QByteArray>

#include <vector>

/// The removal of one folder, which is opened once: that it is empty is judged on the same folder
/// that is then removed. No link is followed below the item that the user handed over, and a name
/// that is no folder any more is left alone. Of a link to a folder that was handed over itself
/// (`facts.isLink`), the folder behind it is judged and the link removed.
///
/// Thread:  any; one thread at a time
/// Blocks:  on disk I/O
/// Failure: the error number of the first call that failed; what could be removed is gone then
class FolderRemoval
{
  public:
    enum class Contents {
        All,       ///< whatever the folder holds
        HiddenOnly ///< what the rule of emptiness passes over; a visible entry keeps the folder
    };

    FolderRemoval(const QByteArray &path, const ScanFacts &facts);

    /// Whether the folder holds no entry but hidden ones (".name"); none at all if it was not
    /// scanned to its end. Kept on purpose: a folder that cannot be listed counts as empty.
    [[nodiscard]] bool isEmpty() const;
    /// 0, or an error number: EPERM for a protected place. To be called once.
    int remove(Contents contents);
    /// What remove() took away with the folder: entries of other kinds, and folders.
    [[nodiscard]] const std::vector<QByteArray> &removedEntries() const { return removedEntries_; }
    [[nodiscard]] const std::vector<QByteArray> &removedFolders() const { return removedFolders_; }

  private:
    int removeFolder(Contents contents);
    int removeContents(Contents contents);
    int removeLink();

    QByteArray path_;
    QByteArray name_;
    bool isLink_;
    bool isUnfinished_;
    std::vector<QByteArray> removedEntries_;
    std::vector<QByteArray> removedFolders_;
    Descriptor parent_;
    Descriptor folder_; ///< closed where the folder could not be opened for listing
};
