#pragma once

#include "kit/ForwardingSystemCalls.h"
#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"

#include <atomic>
#include <chrono>
#include <semaphore>
#include <utility>

/// While it lives, a download's file is not read back before it may go on: the check of the
/// signature is under way for as long as a test wants.
class HeldReading final : public ForwardingSystemCalls
{
  public:
    HeldReading() = default;
    ~HeldReading() override
    {
        goOn();
        // The calls are put back only when nobody is in them, as the thread sanitizer sees, too.
        BackgroundQueue::finish(std::chrono::seconds(10));
        (void)calls_.load(std::memory_order_acquire);
    }
    HeldReading(const HeldReading &) = delete;
    HeldReading &operator=(const HeldReading &) = delete;

    int status(int fd, FileStatus &status) override
    {
        if (!MainThread::isCurrent() && !isReached_.exchange(true))
            mayGoOn_.acquire();
        return counted(real().status(fd, status));
    }
    int sync(int fd) override { return counted(real().sync(fd)); }
    int close(int fd) override { return counted(real().close(fd)); }

    [[nodiscard]] bool isReached() const { return isReached_; }
    void goOn()
    {
        if (!std::exchange(goesOn_, true))
            mayGoOn_.release();
    }

  private:
    int counted(int result)
    {
        calls_.fetch_add(1, std::memory_order_release);
        return result;
    }

    std::atomic<int> calls_ = 0;
    std::atomic<bool> isReached_ = false;
    std::binary_semaphore mayGoOn_{0};
    bool goesOn_ = false;
    SystemCalls::Replacement replacement_{*this};
};
