#include "scan/FolderScannerController.h"

#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"
#include "platform/OptionalDelegate.h"

#include <iterator>
#include <utility>

namespace {

using Call = FolderScannerControllerDelegate::Call;

/// Null for what cannot be scanned.
QByteArray pathOf(const ScanItem &item)
{
    if (const auto *path = std::get_if<QByteArray>(&item))
        return path->isNull() ? QByteArrayLiteral("") : *path;
    if (const auto *url = std::get_if<FileUrl>(&item))
        return url->path();
    return {};
}

template <class Container> void moveToEnd(Container &to, Container from)
{
    if (to.empty())
        to = std::move(from);
    else
        to.insert(to.end(), std::make_move_iterator(from.begin()),
                  std::make_move_iterator(from.end()));
}

} // namespace

void FolderScannerController::scanAndMakeObjects(const ScanItems &items)
{
    shouldCancel_ = false;
    fileUtils_->setShouldCancel(false);
    filepathsArray_.insert(filepathsArray_.end(), items.begin(), items.end());
    if (isBusy_)
        return;
    isBusy_ = true;
    startScan();
}

void FolderScannerController::cancelScan()
{
    shouldCancel_ = true;
    fileUtils_->cancelScanProcess();
}

void FolderScannerController::startScan()
{
    if (!fileUtils_->queueStatsObject())
        fileUtils_->setQueueStatsObject(queueStatsObject_);
    BackgroundQueue::submit(
        [self = shared_from_this(), items = std::exchange(filepathsArray_, {})] {
            self->buildFilePathArray(items);
            MainThread::post([self] { self->scanIsFinished(); });
        });
}

void FolderScannerController::buildFilePathArray(const ScanItems &items)
{
    for (const ScanItem &item : items) {
        if (const QByteArray path = pathOf(item); !path.isNull()) {
            ScanReport report = fileUtils_->readFilesFromPath(path);
            moveToEnd(allfiles_, std::move(report.files));
            mergeFolders(allfolders_, report.folders);
            moveToEnd(failures_, fileUtils_->takeScanFailures());
        }
        if (shouldCancel_)
            return;
    }
}

void FolderScannerController::scanIsFinished()
{
    if (filepathsArray_.empty())
        sendFinishDelegate();
    else
        startScan();
}

/// Kept on purpose: with a delegate that does not answer the report, the controller stays busy and
/// goes on collecting.
void FolderScannerController::sendFinishDelegate()
{
    if (!OptionalDelegate::answers(delegate_, Call::newObjectsForQueue))
        return;
    isBusy_ = false;
    // Moved out first: the delegate may start another scan from inside the call.
    ScanReport report{std::exchange(allfiles_, {}), std::exchange(allfolders_, {})};
    const ScanFailures failures = std::exchange(failures_, {});
    if (!failures.empty())
        OptionalDelegate::call(delegate_, Call::scanFailed,
                               &FolderScannerControllerDelegate::scanFailed, failures);
    OptionalDelegate::call(delegate_, Call::newObjectsForQueue,
                           &FolderScannerControllerDelegate::newObjectsForQueue, std::move(report));
}
