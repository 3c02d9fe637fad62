#include "platform/BackgroundQueue.h"

#include "platform/ThreadSignals.h"

#include <QThreadPool>

#include <atomic>
#include <memory>

namespace {

class HighPriorityPool : public QThreadPool
{
  public:
    HighPriorityPool() { setThreadPriority(QThread::HighPriority); }
};

QThreadPool &pool()
{
    static HighPriorityPool threads;
    return threads;
}

} // namespace

void BackgroundQueue::submit(std::function<void()> task)
{
    // The pool's own locks are invisible to the thread sanitizer; this atomic makes the hand-over
    // plain.
    struct Envelope
    {
        std::function<void()> task;
        std::atomic<bool> isSealed = false;
    };
    const auto envelope = std::make_shared<Envelope>();
    envelope->task = std::move(task);
    envelope->isSealed.store(true, std::memory_order_release);
    pool().start([envelope] {
        ThreadSignals::blockAll();
        if (envelope->isSealed.load(std::memory_order_acquire))
            envelope->task();
    });
}
