#include "app/run/EraseRun.h"

#include "app/run/FolderOrder.h"
#include "app/run/RunTexts.h"
#include "app/run/UniqueMerge.h"
#include "platform/BackgroundQueue.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <utility>

EraseRun::EraseRun() : queueStatsObject_(QueueStatsObject::create())
{
}

QueueArray::Items EraseRun::makeUniqueArray(QueueArray::Items objects)
{
    QueueArray::Items added = UniqueMerge::makeUniqueArray(*queueArray_, std::move(objects));
    double bytes = 0;
    for (const QueueArray::Item &item : added)
        bytes += item->filesize();
    QueueStatsObject &stats = *queueStatsObject_;
    stats.setTotalFilesRemaining(stats.totalFilesRemaining() + std::int64_t(added.size()));
    stats.setTotalBytes(stats.totalBytes() + bytes);
    return added;
}

void EraseRun::addObjectsFromArray(QueueArray::Items objects)
{
    queueArray_->append(makeUniqueArray(std::move(objects)));
}

void EraseRun::addFolderObjectsToQueueFromDict(FolderMap folders)
{
    if (folderUrlsToDeleteDict_.empty())
        folderUrlsToDeleteDict_ = std::move(folders);
    else
        mergeFolders(folderUrlsToDeleteDict_, folders);
}

void EraseRun::begin(std::int64_t now)
{
    forgetFailures();
    queueStatsObject_->setStartTimeStamp(now);
    removesFolders_ = true;
}

void EraseRun::setSkipLinkTargets(bool skip)
{
    double change = 0;
    for (const QueueArray::Item &item : queueArray_->items()) {
        if (!item->scanFacts().isLink || item->finished())
            continue;
        const double size = skip ? 0 : item->scanFacts().targetSize;
        change += size - item->filesize();
        item->setFilesize(size);
        item->setMaxValue(size);
    }
    queueStatsObject_->setTotalBytes(queueStatsObject_->totalBytes() + change);
}

void EraseRun::addFailure(std::shared_ptr<QueueObject> object)
{
    const QByteArray path = object->fullpath();
    failedFiles_.push_back({std::move(object), path, false});
}

bool EraseRun::hasFilesRemovedWithFolder() const
{
    return std::any_of(failedFiles_.begin(), failedFiles_.end(),
                       [](const FailedFile &failed) { return failed.removedWithFolder; });
}

double EraseRun::updateBPSValue()
{
    QueueStatsObject &stats = *queueStatsObject_;
    const double remaining = stats.totalBytes() - stats.bytesWritten();
    const double bps = calculateBps(remaining);
    stats.setTotalBytesRemaining(std::max(remaining, 0.0));
    // No guard against 0: an infinite or undefined time has its own words.
    stats.setTimeRemaining(stats.totalBytesRemaining() / bps);
    updateProgressBar();
    return bps;
}

void EraseRun::updateProgressBar()
{
    queueStatsObject_->setDoubleValue(queueStatsObject_->bytesWritten());
}

void EraseRun::makeResultStrings(std::int64_t now)
{
    QueueStatsObject &stats = *queueStatsObject_;
    stats.setWipedFilesString(
        RunTexts::wipedFiles(stats.totalBytesWiped(), stats.totalFilesWiped()));
    stats.setFailedFilesString(RunTexts::failedFiles(stats.filesFailed()));
    stats.setTimeElapsedString(RunTexts::timeElapsed(double(now - stats.startTimeStamp())));
}

std::int64_t EraseRun::noteUnreached()
{
    std::int64_t files = 0;
    if (!queueArray_->firstUnfinished())
        return files;
    for (const QueueArray::Item &item : queueArray_->items()) {
        if (item->finished())
            continue;
        addFailure(item);
        ++files;
    }
    return files;
}

FolderSweep EraseRun::deleteFolders()
{
    const FolderMap folders = std::exchange(folderUrlsToDeleteDict_, {});
    if (!removesFolders_ || queueArray_->firstUnfinished())
        return {};
    FolderSweep sweep = FileUtils().deleteFoldersFromArray(FolderOrder::deepestFirst(folders));
    noteRemovedWithFolder(sweep.removedFiles);
    return sweep;
}

bool EraseRun::forgetRemoved(ScanFailures &failures, const FolderSweep &sweep)
{
    const QSet<QByteArray> removed(sweep.removedFolders.begin(), sweep.removedFolders.end());
    return std::erase_if(failures, [&removed](const ScanFailure &failure) {
               return removed.contains(failure.path);
           }) > 0;
}

/// Most of these failed before. The others came after the scan, or the scan could not see them.
void EraseRun::noteRemovedWithFolder(const std::vector<QByteArray> &paths)
{
    QHash<QByteArray, std::size_t> known;
    for (std::size_t at = 0; at < failedFiles_.size() && !paths.empty(); ++at)
        known.insert(failedFiles_[at].path, at);
    for (const QByteArray &path : paths) {
        if (const auto at = known.constFind(path); at != known.constEnd())
            failedFiles_[*at].removedWithFolder = true;
        else
            failedFiles_.push_back({nullptr, path, true});
    }
}

void EraseRun::resetWipeValues()
{
    // A million items take their time to go.
    BackgroundQueue::submit(
        [items = std::make_shared<QueueArray::Items>(queueArray_->takeAll())] { items->clear(); });
    throughput_.reset();
    QueueStatsObject &stats = *queueStatsObject_;
    stats.setTotalBytes(0);
    stats.setTotalBytesRemaining(0);
    stats.setTotalBytesWiped(0);
    stats.setBytesWritten(0);
    stats.setMaxValue(0);
    stats.setDoubleValue(0);
    stats.setTotalFilesRemaining(0);
    stats.setTotalFilesWiped(0);
    stats.setFilesFailed(0);
}
