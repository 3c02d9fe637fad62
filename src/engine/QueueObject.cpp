#include "engine/QueueObject.h"

#include "engine/QueueStatsObject.h"

#include <utility>

namespace {
std::uint64_t reopened = 0;
}

QueueObject::QueueObject(Private)
{
    startAllObservers();
}

QueueObject::~QueueObject()
{
    removeAllObservers();
}

void QueueObject::setFinished(bool finished)
{
    const bool old = std::exchange(finished_, finished);
    if (old && !finished)
        ++reopened;
    observeValueForKeyPath(KeyPath::finished, {double(old), double(finished)});
}

void QueueObject::setStatus(std::int64_t status)
{
    const std::int64_t old = std::exchange(status_, status);
    observeValueForKeyPath(KeyPath::status, {double(old), double(status)});
}

void QueueObject::startAllObservers()
{
    isObserving_ = true;
}

void QueueObject::removeAllObservers()
{
    isObserving_ = false;
}

void QueueObject::observeValueForKeyPath(KeyPath keyPath, const PropertyChange &change)
{
    if (!isObserving_ || !change.isChange())
        return;
    postChange(shared_from_this(),
               keyPath == KeyPath::finished ? &QueueObject::finishedChanged
                                            : &QueueObject::statusChanged,
               change);
}

void QueueObject::statusChanged(const PropertyChange &change)
{
    const auto stats = queueStatsObject_.lock();
    if (stats && change.newValue == double(Failed))
        stats->setFilesFailed(stats->filesFailed() + 1);
}

void QueueObject::finishedChanged(const PropertyChange &change)
{
    const auto stats = queueStatsObject_.lock();
    if (!stats || change.newValue <= change.oldValue)
        return;
    if (status_ != Failed) {
        stats->setTotalFilesWiped(stats->totalFilesWiped() + 1);
        stats->setTotalBytesWiped(stats->totalBytesWiped() + filesize_);
    }
    stats->setTotalFilesRemaining(stats->totalFilesRemaining() - 1);
}

std::uint64_t QueueObject::reopenedCount()
{
    return reopened;
}
