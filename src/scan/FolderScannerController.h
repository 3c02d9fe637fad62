#pragma once

#include "engine/FileUtils.h"
#include "engine/ScanReport.h"

#include <QByteArray>

#include <atomic>
#include <memory>
#include <variant>
#include <vector>

/// Something handed over to be scanned: a path, a location, or nothing that can be scanned.
using ScanItem = std::variant<std::monostate, QByteArray, FileUrl>;
using ScanItems = std::vector<ScanItem>;

/// Hears of the end of a scan. All calls are optional (OptionalDelegate); made on the main thread.
class FolderScannerControllerDelegate
{
  public:
    enum class Call { newObjectsForQueue, scanFailed };

    virtual ~FolderScannerControllerDelegate() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;
    virtual void newObjectsForQueue(ScanReport /*report*/) {}
    /// What could not be read or was refused, if anything; told just before the report.
    virtual void scanFailed(const ScanFailures & /*failures*/) {}
};

/// Turns files and folders into queue items and a list of folders, on a background thread, one
/// batch after the other: what is handed over while it is busy goes into the next batch, and all
/// batches are reported at once. Can be stopped; what was found until then is reported.
///
/// Thread:       main; the walk itself runs on a pool thread
/// Owns:         its FileUtils
/// Holds weakly: its delegate
/// Blocks:       never
/// Failure:      told to the delegate; the scan goes on
class FolderScannerController : public std::enable_shared_from_this<FolderScannerController>
{
    struct Private
    {
    };

  public:
    static std::shared_ptr<FolderScannerController> create()
    {
        return std::make_shared<FolderScannerController>(Private{});
    }
    explicit FolderScannerController(Private) {}

    void setDelegate(const std::weak_ptr<FolderScannerControllerDelegate> &delegate)
    {
        delegate_ = delegate;
    }
    void setQueueStatsObject(std::shared_ptr<QueueStatsObject> stats)
    {
        queueStatsObject_ = std::move(stats);
    }
    void setSkipLinkTargets(bool skip) { fileUtils_->setSkipLinkTargets(skip); }
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] bool shouldCancel() const { return shouldCancel_; }

    void scanAndMakeObjects(const ScanItems &items);
    void cancelScan();

    void startScan();
    /// Thread: scan worker
    void buildFilePathArray(const ScanItems &items);
    void scanIsFinished();
    void sendFinishDelegate();

  private:
    std::weak_ptr<FolderScannerControllerDelegate> delegate_;
    std::shared_ptr<QueueStatsObject> queueStatsObject_;
    std::shared_ptr<FileUtils> fileUtils_ = std::make_shared<FileUtils>();
    ScanItems filepathsArray_;
    QueueArray::Items allfiles_; ///< these three: the worker's during a batch, then main's
    FolderMap allfolders_;
    ScanFailures failures_;
    std::atomic<bool> shouldCancel_ = false;
    bool isBusy_ = false;
};
