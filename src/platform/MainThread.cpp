#include "platform/MainThread.h"

#include "platform/CallList.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>

#include <atomic>
#include <deque>
#include <semaphore>

namespace {

/// The calls handed over and not yet run. Qt's event only wakes the main thread; the calls
/// themselves pass through a CallList, whose order is plain to every reader and tool.
class CallQueue final : public QObject
{
  public:
    /// First made with the application, on the main thread. Never destroyed: a call may still be
    /// handed over while the process ends.
    static CallQueue &instance()
    {
        static CallQueue *const queue = new CallQueue;
        return *queue;
    }

    void push(MainThread::Call call)
    {
        handedOver_.push(std::move(call));
        wake();
    }

  protected:
    /// The event itself says nothing: it is not looked at.
    void customEvent(QEvent * /*event*/) override { drain(); }

  private:
    CallQueue() = default;

    void wake()
    {
        if (!isAwake_.exchange(true))
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    void drain()
    {
        isAwake_.exchange(false);
        handedOver_.takeInto(ready_);
        while (!ready_.empty()) {
            const MainThread::Call call = std::move(ready_.front());
            ready_.pop_front();
            // Should the call run an event loop of its own, that one goes on with the rest.
            if (!ready_.empty())
                wake();
            call();
        }
    }

    CallList handedOver_;
    std::atomic<bool> isAwake_ = false;
    std::deque<MainThread::Call> ready_; ///< main thread only
};

void makeCallQueue()
{
    CallQueue::instance();
}
Q_COREAPP_STARTUP_FUNCTION(makeCallQueue)

} // namespace

bool MainThread::isCurrent()
{
    return QThread::currentThread() == CallQueue::instance().thread();
}

void MainThread::post(Call call)
{
    CallQueue::instance().push(std::move(call));
}

void MainThread::callAndWait(const Call &call)
{
    if (isCurrent()) {
        call();
        return;
    }
    std::binary_semaphore done(0);
    post([&call, &done] {
        call();
        done.release();
    });
    done.acquire();
}

void MainThread::callAndWait(const Call &first, const Call &second)
{
    Q_ASSERT(!isCurrent());
    std::binary_semaphore done(0);
    post([&first, &second, &done] {
        first();
        post([&second, &done] {
            second();
            done.release();
        });
    });
    done.acquire();
}
