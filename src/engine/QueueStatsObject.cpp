#include "engine/QueueStatsObject.h"

#include "platform/OptionalDelegate.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// What a double is as a signed 64-bit integer, the nearest one where it is none.
double asInteger(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    return std::isnan(value) ? 0 : std::clamp(std::trunc(value), -limit, limit);
}

} // namespace

QueueStatsObject::QueueStatsObject(Private)
{
    startAllObservers();
}

QueueStatsObject::~QueueStatsObject()
{
    removeAllObservers();
}

void QueueStatsObject::setStatus(std::int64_t status)
{
    const std::int64_t old = std::exchange(status_, status);
    observeValueForKeyPath(KeyPath::status, {double(old), double(status)});
}

void QueueStatsObject::setTotalBytes(double bytes)
{
    const double old = std::exchange(totalBytes_, bytes);
    observeValueForKeyPath(KeyPath::totalBytes, {old, bytes});
}

void QueueStatsObject::startAllObservers()
{
    isObserving_ = true;
}

void QueueStatsObject::removeAllObservers()
{
    isObserving_ = false;
}

void QueueStatsObject::observeValueForKeyPath(KeyPath keyPath, const PropertyChange &change)
{
    if (!isObserving_ || !change.isChange())
        return;
    switch (keyPath) {
    case KeyPath::totalBytes:
        postChange(shared_from_this(), &QueueStatsObject::totalBytesChanged, change);
        break;
    case KeyPath::filesFinished:
        postChange(shared_from_this(), &QueueStatsObject::filesFinishedChanged, change);
        break;
    case KeyPath::status:
        postChange(shared_from_this(), &QueueStatsObject::updateStatus, change);
        break;
    }
}

void QueueStatsObject::totalBytesChanged(const PropertyChange &change)
{
    setMaxValue(asInteger(change.newValue));
}

void QueueStatsObject::filesFinishedChanged(const PropertyChange & /*change*/)
{
    updateStatus({});
}

void QueueStatsObject::updateStatus(const PropertyChange &change)
{
    if (totalFilesRemaining_ < 1)
        setStatus(Done);
    if (change.isChange())
        MainThread::callAndWait([this] { statusChangedDelegate(); });
}

void QueueStatsObject::statusChangedDelegate()
{
    OptionalDelegate::call(delegate_, QueueStatsObjectDelegate::Call::statusChangedTo,
                           &QueueStatsObjectDelegate::statusChangedTo, status_);
}
