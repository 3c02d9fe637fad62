#pragma once

#include "engine/QueueStatsObject.h"
#include "engine/ScanReport.h"
#include "platform/FileUrl.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

class TreeScan;

/// What became of folders that were offered for removal.
struct FolderSweep
{
    std::vector<QByteArray> removedFolders; ///< also those that went inside another one
    /// The hidden files that went with them, which nothing has overwritten.
    std::vector<QByteArray> removedFiles;
    ScanFailures kept; ///< folders that are still there, and why
};

/// The file-system operations of the system: tests, sizes, folder creation, removal, repair of what
/// keeps a file from being opened for writing, a random name, cutting to nothing; and the scan that
/// turns one item into queue items and folders.
///
/// Thread:  any; the scan operations on one worker at a time, `cancelScanProcess` from any
/// Blocks:  on disk I/O
/// Units:   bytes
/// Failure: false, nothing, -1 or the location that was passed in; where something was to be
/// changed,
///          one line in the system log
/// Paths:   absolute
class FileUtils
{
  public:
    using FolderPaths = std::vector<std::pair<QByteArray, ScanFacts>>;

    /// Makes the folder and those above it; its path is cut to its first 240 characters. Where the
    /// folder exists: the location as it is, or with `allowAlternative` a new folder with the first
    /// free number as its extension.
    static FileUrl createFolder(const FileUrl &url, bool allowAlternative);
    static bool doesFolderExists(const FileUrl &url);
    static bool doesFileExists(const FileUrl &url);
    /// Kept on purpose: also true for a path where nothing exists.
    static bool isFile(const FileUrl &url);
    static std::int64_t bytesOfFilePath(const QByteArray &path);

    [[nodiscard]] std::int64_t getFileSizeFor(const QByteArray &path) const;
    [[nodiscard]] bool checkIfFolder(const QByteArray &path) const;
    [[nodiscard]] QByteArray extractFileNameFrom(const QByteArray &path) const;
    [[nodiscard]] QByteArray extractFilePathFrom(const QByteArray &path) const;
    [[nodiscard]] FileUrl makeUrlFromFilePath(const QByteArray &path) const;

    /// Kept on purpose: hidden entries do not count, and a folder that cannot be listed is empty.
    /// A link is judged by the folder behind it.
    [[nodiscard]] bool isEmptyFolder(const QByteArray &path) const;
    /// Removes the folder and whatever it holds. Never follows a link, and leaves a path that is no
    /// folder.
    void deleteFolder(const QByteArray &path) const;
    /// Removes, in this order, the folders that are empty. Of a link to a folder only the link
    /// goes.
    FolderSweep deleteFoldersFromArray(const FolderPaths &folders) const;
    /// Only unlinks: a folder stays.
    bool deleteFile(const FileUrl &url) const;
    /// The same for the path's last component in a folder that is open. 0, or the error number.
    [[nodiscard]] int deleteFileIn(int folder, const QByteArray &path) const;

    bool fixError(int errorNumber, const QByteArray &forPath) const;
    bool unlockFilepath(const QByteArray &path) const;
    bool changePermissionsForFile(const QByteArray &path) const;
    bool changePermissionsForUrl(const FileUrl &url) const;
    bool truncateSize(const QByteArray &path) const;
    /// Renames the file to a random name; an existing file of that name would be replaced.
    [[nodiscard]] FileUrl scrambleFilename(const FileUrl &url) const;
    /// 6 to 20 letters a to z, a full stop, 3 letters.
    [[nodiscard]] QString randomFilename() const;

    [[nodiscard]] const std::shared_ptr<QueueStatsObject> &queueStatsObject() const
    {
        return queueStatsObject_;
    }
    void setQueueStatsObject(std::shared_ptr<QueueStatsObject> stats)
    {
        queueStatsObject_ = std::move(stats);
    }
    [[nodiscard]] bool shouldCancel() const { return shouldCancel_; }
    void setShouldCancel(bool shouldCancel) { shouldCancel_ = shouldCancel; }
    /// Links are queued with size 0, since their targets will be left alone.
    void setSkipLinkTargets(bool skip) { skipLinkTargets_ = skip; }

    void cancelScanProcess() { shouldCancel_ = true; }
    /// What one item holds. Nothing for an item that is refused (ProtectedPlaces).
    ScanReport readFilesFromPath(const QByteArray &path);
    void recursiveScan(const FileUrl &url);
    void fileScan(const FileUrl &url);
    [[nodiscard]] QueueArray::Item makeObjectFromUrl(const FileUrl &url);
    /// Counts the item as found. Thread: main
    void updateStats(const QueueArray::Item &object) const;
    /// What readFilesFromPath() could not read or refused since the last call.
    ScanFailures takeScanFailures();

  private:
    [[nodiscard]] TreeScan treeScan();

    std::shared_ptr<QueueStatsObject> queueStatsObject_;
    std::atomic<bool> shouldCancel_ = false;
    std::atomic<bool> skipLinkTargets_ = false;
    QueueArray::Items filesArray_;
    FolderMap foldersDict_;
    std::int32_t givenLength_ = -1;
    ScanFailures scanFailures_;
};
