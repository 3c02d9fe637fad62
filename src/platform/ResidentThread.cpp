#include "platform/ResidentThread.h"

#include "platform/ThreadSignals.h"

bool ResidentThread::submit(CallList::Call task)
{
    if (!isRunning())
        start();
    if (!isRunning())
        return false;
    tasks_.push(std::move(task));
    waiting_.release();
    return true;
}

void ResidentThread::run()
{
    ThreadSignals::blockAll();
    for (std::deque<CallList::Call> calls;;) {
        waiting_.acquire();
        tasks_.takeInto(calls);
        for (; !calls.empty(); calls.pop_front())
            calls.front()();
    }
}
