#include "platform/BackgroundQueue.h"

#include "platform/MainThread.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <atomic>
#include <csignal>
#include <memory>
#include <semaphore>

class BackgroundQueueTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aTaskRunsOnceOnAnotherThread();
    void submittingDoesNotWait();
    void tasksThatDoNotEndHoldUpNoOther();
    void aTaskRunsAtRaisedPriority();
    void signalsAreBlockedInATask_data();
    void signalsAreBlockedInATask();
    void theMainThreadGoesOnHearingSignals();
    void aTaskSeesWhatWasWrittenBefore();
    void tasksHandedOnSeeWhatTheOneBeforeWrote();
    void aTaskIsGivenUpWhenItIsDone();
};

void BackgroundQueueTest::aTaskRunsOnceOnAnotherThread()
{
    std::atomic<int> times = 0;
    std::atomic<QThread *> thread = nullptr;
    BackgroundQueue::submit([&] {
        thread = QThread::currentThread();
        ++times;
    });
    QTRY_COMPARE(times.load(), 1);
    QVERIFY(thread != QThread::currentThread());
}

void BackgroundQueueTest::submittingDoesNotWait()
{
    std::binary_semaphore mayEnd(0);
    std::atomic<bool> hasEnded = false;
    BackgroundQueue::submit([&] {
        mayEnd.acquire();
        hasEnded = true;
    });
    QVERIFY(!hasEnded);
    mayEnd.release();
    QTRY_VERIFY(hasEnded);
}

/// More than there are processors, and handed over at once.
void BackgroundQueueTest::tasksThatDoNotEndHoldUpNoOther()
{
    const int tasks = 4 * QThread::idealThreadCount() + 16;
    std::counting_semaphore<> mayEnd(0);
    std::atomic<int> begun = 0;
    std::atomic<int> ended = 0;
    for (int task = 0; task < tasks; ++task) {
        BackgroundQueue::submit([&] {
            ++begun;
            mayEnd.acquire();
            ++ended;
        });
    }
    const bool haveAllBegun = QTest::qWaitFor([&] { return begun == tasks; }, 20'000);
    mayEnd.release(tasks);
    QTRY_COMPARE(ended.load(), tasks);
    QVERIFY(haveAllBegun);
}

void BackgroundQueueTest::aTaskRunsAtRaisedPriority()
{
    std::atomic<int> priority = -1;
    BackgroundQueue::submit([&priority] { priority = QThread::currentThread()->priority(); });
    QTRY_COMPARE(priority.load(), int(QThread::HighPriority));
}

void BackgroundQueueTest::signalsAreBlockedInATask_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("the terminal's interrupt") << SIGINT;
    QTest::newRow("the request to end") << SIGTERM;
    QTest::newRow("the terminal gone") << SIGHUP;
    QTest::newRow("an alarm") << SIGALRM;
    QTest::newRow("a child's end") << SIGCHLD;
    QTest::newRow("a window's new size") << SIGWINCH;
    QTest::newRow("the user's first") << SIGUSR1;
}

void BackgroundQueueTest::signalsAreBlockedInATask()
{
    QFETCH(int, signal);
    std::atomic<int> isBlocked = -1;
    BackgroundQueue::submit([&isBlocked, signal] {
        sigset_t blocked;
        isBlocked = pthread_sigmask(SIG_SETMASK, nullptr, &blocked) == 0
                        ? sigismember(&blocked, signal)
                        : -2;
    });
    QTRY_VERIFY(isBlocked != -1);
    QCOMPARE(isBlocked.load(), 1);
}

void BackgroundQueueTest::theMainThreadGoesOnHearingSignals()
{
    std::atomic<bool> hasRun = false;
    BackgroundQueue::submit([&hasRun] { hasRun = true; });
    QTRY_VERIFY(hasRun);
    sigset_t blocked;
    QCOMPARE(pthread_sigmask(SIG_SETMASK, nullptr, &blocked), 0);
    QCOMPARE(sigismember(&blocked, SIGINT), 0);
    QCOMPARE(sigismember(&blocked, SIGTERM), 0);
}

void BackgroundQueueTest::aTaskSeesWhatWasWrittenBefore()
{
    const auto plain = std::make_shared<int>(0);
    std::atomic<int> seen = 0;
    *plain = 42;
    BackgroundQueue::submit([plain, &seen] { seen = *plain; });
    QTRY_COMPARE(seen.load(), 42);
}

/// As a scan does it: each task's results go through the main thread to the next task.
void BackgroundQueueTest::tasksHandedOnSeeWhatTheOneBeforeWrote()
{
    constexpr int tasks = 100;
    int sum = 0; // the task's while it runs, else the main thread's
    bool isDone = false;
    std::function<void(int)> next = [&](int number) {
        if (number == tasks) {
            isDone = true;
            return;
        }
        BackgroundQueue::submit([&, number] {
            sum += number;
            MainThread::post([&next, number] { next(number + 1); });
        });
    };
    next(0);
    QTRY_VERIFY(isDone);
    QCOMPARE(sum, tasks * (tasks - 1) / 2);
}

void BackgroundQueueTest::aTaskIsGivenUpWhenItIsDone()
{
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    BackgroundQueue::submit([held = std::move(held)] { Q_UNUSED(held); });
    QTRY_VERIFY(watched.expired());
}

QTEST_GUILESS_MAIN(BackgroundQueueTest)
#include "BackgroundQueueTest.moc"
