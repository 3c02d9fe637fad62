#pragma once

#include "app/run/CautionCount.h"

#include <cstddef>
#include <functional>
#include <memory>

class QueueArray;

/// Counts what the queue's items call for caution, a few at a time between other events, so that a
/// million of them keep nobody waiting. Looks at what the scan noted, never at the disk.
///
/// Thread:       main
/// Holds weakly: the queue
/// Units:        milliseconds
/// Blocks:       for some milliseconds at a time
class CautionCounter
{
  public:
    using Report = std::function<void(const CautionCount &)>;

    /// Milliseconds from some fixed moment on.
    using Clock = std::function<std::int64_t()>;

    /// `report` hears the first count that is not zero, then at most two of a second, and the last.
    explicit CautionCounter(Report report);

    void setClock(Clock clock) { clock_ = std::move(clock); }
    void setQueueArray(const std::weak_ptr<QueueArray> &queue) { queue_ = queue; }
    /// Items were appended.
    void countAppended();
    /// The queue was emptied; reports nothing.
    void reset();

    [[nodiscard]] const CautionCount &count() const { return count_; }
    [[nodiscard]] bool isCounting() const { return isCounting_; }

  private:
    void countSlice();
    void scheduleSlice();
    void reportIfDue();

    Report report_;
    std::weak_ptr<QueueArray> queue_;
    Clock clock_;
    CautionCount count_;
    CautionCount reported_;
    std::int64_t reportedAt_ = 0;
    std::size_t counted_ = 0; ///< so many items at the queue's start
    bool isCounting_ = false;
    /// Goes with this object, and what was scheduled with it.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};
