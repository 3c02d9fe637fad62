#include "app/CautionCounter.h"

#include "engine/QueueArray.h"
#include "platform/MainThread.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

constexpr std::int64_t sliceMilliseconds = 4;
constexpr std::int64_t reportMilliseconds = 500;
constexpr std::size_t itemsBetweenLooks = 512; ///< at the clock

CautionCounter::Clock runningClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return std::int64_t(timer.elapsed()); };
}

} // namespace

CautionCounter::CautionCounter(Report report) : report_(std::move(report)), clock_(runningClock())
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
    reported_ = {};
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
    const QueueArray::Items &items = queue->items();
    const std::int64_t startedAt = clock_();
    while (counted_ < items.size() && clock_() - startedAt < sliceMilliseconds) {
        const std::size_t end = std::min(items.size(), counted_ + itemsBetweenLooks);
        for (; counted_ < end; ++counted_)
            count_.add(items[counted_]->scanFacts());
    }
    if (counted_ < items.size())
        scheduleSlice();
    reportIfDue();
}

void CautionCounter::reportIfDue()
{
    if (count_ == reported_)
        return;
    const std::int64_t now = clock_();
    const bool isFirst = reported_ == CautionCount();
    if (isCounting_ && !isFirst && now - reportedAt_ < reportMilliseconds)
        return;
    reported_ = count_;
    reportedAt_ = now;
    report_(count_);
}
