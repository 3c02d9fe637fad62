#include "platform/EndLimit.h"

#include "platform/ProcessEnd.h"
#include "platform/ThreadSignals.h"

EndLimit::~EndLimit()
{
    if (!wait_.joinable())
        return;
    hasGone_.release();
    wait_.join();
}

void EndLimit::start(std::chrono::milliseconds limit, int exitCode)
{
    wait_ = std::thread([this, limit, exitCode] {
        ThreadSignals::blockAll();
        if (!hasGone_.tryAcquire(1, int(limit.count())))
            ProcessEnd::now(exitCode);
    });
}
