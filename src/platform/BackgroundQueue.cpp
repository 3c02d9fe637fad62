#include "platform/BackgroundQueue.h"

#include "platform/CallList.h"
#include "platform/ThreadSignals.h"

#include <QThreadPool>

#include <deque>
#include <utility>

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

// The pool's own queue is invisible to the thread sanitizer, so the tasks pass beside it; the pool
// only says when.
CallList &handedOver()
{
    static CallList tasks;
    return tasks;
}

void runHandedOver()
{
    ThreadSignals::blockAll();
    std::deque<CallList::Call> tasks;
    handedOver().takeInto(tasks);
    for (const CallList::Call &task : tasks)
        task();
}

} // namespace

bool BackgroundQueue::finish(std::chrono::milliseconds limit)
{
    return pool().waitForDone(int(limit.count()));
}

void BackgroundQueue::submit(std::function<void()> task)
{
    handedOver().push(std::move(task));
    pool().start(runHandedOver);
}
