#include "platform/BackgroundQueue.h"

#include "platform/ThreadSignals.h"

#include <QThreadPool>

#include <atomic>
#include <limits>
#include <memory>
#include <utility>

namespace {

class HighPriorityPool : public QThreadPool
{
  public:
    HighPriorityPool()
    {
        setThreadPriority(QThread::HighPriority);
        // The tasks wait for disks, not for processors.
        setMaxThreadCount(std::numeric_limits<int>::max());
    }
};

QThreadPool &pool()
{
    static HighPriorityPool threads;
    return threads;
}

// The pool's own queue is invisible to the thread sanitizer; that a task comes after its submitting
// is seen by this.
std::atomic<unsigned> submissions = 0;

void run(std::function<void()> *submitted)
{
    ThreadSignals::blockAll();
    (void)submissions.load(std::memory_order_acquire);
    const std::unique_ptr<std::function<void()>> task(submitted);
    (*task)();
}

} // namespace

bool BackgroundQueue::finish(std::chrono::milliseconds limit)
{
    return pool().waitForDone(int(limit.count()));
}

void BackgroundQueue::submit(std::function<void()> task)
{
    auto *const submitted = new std::function<void()>(std::move(task));
    submissions.fetch_add(1, std::memory_order_release);
    pool().start([submitted] { run(submitted); });
}
