#pragma once

#include "app/run/Throughput.h"
#include "engine/FileUtils.h"
#include "engine/QueueArray.h"
#include "engine/QueueStatsObject.h"
#include "engine/ScanFacts.h"

#include <cstdint>
#include <memory>
#include <vector>

/// A file that was not erased. If its item is not finished, the run was stopped before it came to
/// it.
struct FailedFile
{
    std::shared_ptr<QueueObject> item; ///< null for a hidden file that was not queued
    QByteArray path;
    /// Its folder held only hidden entries besides and was removed with it.
    bool removedWithFolder = false;
};

/// The data of one run after the other and what is reckoned from it: the queue, the statistics, the
/// folders to remove, the failed files, the throughput. It starts nothing and shows nothing; the
/// window's workflow and the terminal front end do.
///
/// Thread: main
/// Owns:   the queue and the statistics, which others hold weakly
/// Blocks: deleteFolders() on disk I/O; nothing else
/// Units:  bytes, seconds; times of day in whole seconds since 1970
class EraseRun
{
  public:
    EraseRun();

    [[nodiscard]] const std::shared_ptr<QueueArray> &queueArray() const { return queueArray_; }
    [[nodiscard]] const std::shared_ptr<QueueStatsObject> &queueStatsObject() const
    {
        return queueStatsObject_;
    }
    [[nodiscard]] const FolderMap &folderUrlsToDeleteDict() const
    {
        return folderUrlsToDeleteDict_;
    }
    [[nodiscard]] const std::vector<FailedFile> &failedFiles() const { return failedFiles_; }
    [[nodiscard]] bool hasFilesRemovedWithFolder() const;
    [[nodiscard]] const Throughput &throughput() const { return throughput_; }

    /// What is not queued yet, which is added to the files and bytes to do; the queue stays as it
    /// is.
    QueueArray::Items makeUniqueArray(QueueArray::Items objects);
    /// Appends makeUniqueArray() to the queue.
    void addObjectsFromArray(QueueArray::Items objects);
    void addFolderObjectsToQueueFromDict(FolderMap folders);

    void forgetFailures() { failedFiles_.clear(); }
    /// Forgets the failures of the run before and stamps the start.
    void begin(std::int64_t now);
    /// This run removes no folder: it overwrites nothing, and hidden files would go unread.
    void keepFolders() { removesFolders_ = false; }
    /// A link whose target is left alone has no bytes to overwrite.
    void setSkipLinkTargets(bool skip);
    void addFailure(std::shared_ptr<QueueObject> object);
    /// To be called once a second; answers the bytes per second.
    double updateBPSValue();
    double calculateBps(double bytesRemaining) { return throughput_.calculateBps(bytesRemaining); }
    void updateProgressBar();

    void makeResultStrings(std::int64_t now);
    /// Takes what a stopped run did not come to as failed; how many files that were.
    std::int64_t noteUnreached();
    /// Removes the folders that have become empty and forgets them all; notes which files went with
    /// them without having been overwritten. A run that was stopped removes none: hidden files in
    /// them may still wait to be overwritten.
    FolderSweep deleteFolders();
    /// What could not be looked into and has gone after all is no failure; whether there was such.
    static bool forgetRemoved(ScanFailures &failures, const FolderSweep &sweep);
    /// Back to nothing, but for the result strings and the failed files. The items that were in the
    /// queue are destroyed on a background thread.
    void resetWipeValues();

  private:
    void noteRemovedWithFolder(const std::vector<QByteArray> &paths);

    std::shared_ptr<QueueArray> queueArray_ = std::make_shared<QueueArray>();
    std::shared_ptr<QueueStatsObject> queueStatsObject_;
    FolderMap folderUrlsToDeleteDict_;
    std::vector<FailedFile> failedFiles_;
    Throughput throughput_;
    bool removesFolders_ = true;
};
