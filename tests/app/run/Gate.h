#pragma once

#include "kit/ForwardingSystemCalls.h"

#include <QByteArray>

#include <atomic>
#include <semaphore>
#include <utility>

/// Both ends of what a file of this name waits for, the first time it is to be removed.
class Gate final : public ForwardingSystemCalls
{
  public:
    explicit Gate(QByteArray name) : name_(std::move(name)) {}
    ~Gate() override { open(); }
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;

    using ForwardingSystemCalls::open;
    int unlink(int folder, const char *name) override
    {
        if (name_ == name && !isReached_.exchange(true))
            mayGoOn_.acquire();
        return ForwardingSystemCalls::unlink(folder, name);
    }

    [[nodiscard]] bool isReached() const { return isReached_; }
    void open()
    {
        if (!std::exchange(isOpen_, true))
            mayGoOn_.release();
    }

  private:
    QByteArray name_;
    std::atomic<bool> isReached_ = false;
    std::binary_semaphore mayGoOn_{0};
    bool isOpen_ = false;
};
