#include "app/CautionCounter.h"

#include "engine/QueueArray.h"
#include "platform/MainThread.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

constexpr qint64 sliceMilliseconds = 4;
constexpr std::size_t itemsBetweenLooks = 512; ///< at the clock

} // namespace

CautionCounter::CautionCounter(Report report) : report_(std::move(report))
{
}

void CautionCounter::countAppended()
{
    if (!isCounting_)
        scheduleSlice();
}

void CautionCounter::reset()
{
    count_ = {};
    counted_ = 0;
}

void CautionCounter::scheduleSlice()
{
    isCounting_ = true;
    MainThread::post([this, alive = std::weak_ptr<bool>(alive_)] {
        if (!alive.expired())
            countSlice();
    });
}

void CautionCounter::countSlice()
{
    isCounting_ = false;
    const std::shared_ptr<QueueArray> queue = queue_.lock();
    if (!queue)
        return;
    const CautionCount before = count_;
    const QueueArray::Items &items = queue->items();
    QElapsedTimer elapsed;
    elapsed.start();
    while (counted_ < items.size() && elapsed.elapsed() < sliceMilliseconds) {
        const std::size_t end = std::min(items.size(), counted_ + itemsBetweenLooks);
        for (; counted_ < end; ++counted_)
            count_.add(items[counted_]->scanFacts());
    }
    if (counted_ < items.size())
        scheduleSlice();
    if (!(count_ == before))
        report_(count_);
}
