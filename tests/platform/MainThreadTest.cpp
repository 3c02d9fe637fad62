#include "platform/MainThread.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QList>
#include <QTest>
#include <QThread>

#include <array>
#include <atomic>
#include <memory>
#include <semaphore>
#include <thread>
#include <vector>

namespace {

/// A thread that has ended when it goes.
using Thread = std::jthread;

/// What two threads share without a lock: whoever reads it must have been handed it.
struct Plain
{
    int value = 0;
};

} // namespace

class MainThreadTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aPostedCallNeverRunsAtOnce();
    void aPostedCallRunsOnTheMainThread();
    void callsOfOneThreadRunInOrder();
    void callsOfTwoThreadsRunInTheOrderOfTheirHandOver();
    void aCallPostedByACallRunsAfterThoseHandedOverBefore();
    void manyThreadsPostWithoutLossAndInOrder();
    void aCallSeesWhatTheThreadWroteBefore();
    void aCallIsGivenUpOnTheMainThread();

    void aWaitingCallReturnsWhenItIsDone();
    void aWaitingCallFromTheMainThreadRunsAtOnce();
    void aWaitingCallOvertakesNoPostedOne();
    void theThreadSeesWhatItsWaitingCallWrote();
    void manyThreadsWaitWithoutLoss();
    void aWaitingCallInsideAPostedOneRunsAtOnce();
    void ofTwoWaitingCallsTheSecondRunsBehindWhatTheFirstPosts();
    void twoWaitingCallsReturnWhenBothAreDone();

    void anEventLoopInsideACallGoesOnWithTheRestInOrder();
    void eventLoopsInsideEachOtherKeepTheOrder();
    void anEventLoopInsideACallServesOtherThreads();
    void onlyTheMainThreadIsCurrent();
};

void MainThreadTest::aPostedCallNeverRunsAtOnce()
{
    bool hasRun = false;
    MainThread::post([&hasRun] { hasRun = true; });
    QVERIFY(!hasRun);
    QTRY_VERIFY(hasRun);
}

void MainThreadTest::aPostedCallRunsOnTheMainThread()
{
    QThread *ranOn = nullptr;
    const Thread thread(
        [&ranOn] { MainThread::post([&ranOn] { ranOn = QThread::currentThread(); }); });
    QTRY_COMPARE(ranOn, QCoreApplication::instance()->thread());
}

void MainThreadTest::callsOfOneThreadRunInOrder()
{
    constexpr int count = 1000;
    QList<int> order;
    const Thread thread([&order] {
        for (int number = 0; number < count; ++number)
            MainThread::post([&order, number] { order.append(number); });
    });
    QTRY_COMPARE(order.size(), count);
    QVERIFY(std::is_sorted(order.begin(), order.end()));
}

/// Two threads take turns; the calls run in just that order.
void MainThreadTest::callsOfTwoThreadsRunInTheOrderOfTheirHandOver()
{
    constexpr int turns = 200;
    QList<int> order;
    std::array<std::binary_semaphore, 2> turn = {std::binary_semaphore(1),
                                                 std::binary_semaphore(0)};
    const auto takeTurns = [&order, &turn](std::size_t self) {
        for (int number = int(self); number < turns; number += 2) {
            turn.at(self).acquire();
            MainThread::post([&order, number] { order.append(number); });
            turn.at(1 - self).release();
        }
    };
    const Thread first(takeTurns, 0);
    const Thread second(takeTurns, 1);
    QTRY_COMPARE(order.size(), turns);
    for (int number = 0; number < turns; ++number)
        QCOMPARE(order.at(number), number);
}

void MainThreadTest::aCallPostedByACallRunsAfterThoseHandedOverBefore()
{
    QList<int> order;
    MainThread::post([&order] {
        order.append(1);
        MainThread::post([&order] { order.append(3); });
    });
    MainThread::post([&order] { order.append(2); });
    QTRY_COMPARE(order.size(), 3);
    QCOMPARE(order, QList<int>({1, 2, 3}));
}

void MainThreadTest::manyThreadsPostWithoutLossAndInOrder()
{
    constexpr int threads = 8;
    constexpr int posts = 2000;
    std::array<int, threads> counts{};
    bool isOrdered = true;
    int total = 0;
    std::vector<Thread> running;
    for (std::size_t thread = 0; thread < threads; ++thread)
        running.emplace_back([&, thread] {
            for (int number = 0; number < posts; ++number)
                MainThread::post([&, thread, number] {
                    isOrdered = isOrdered && counts.at(thread) == number;
                    ++counts.at(thread);
                    ++total;
                });
        });
    QTRY_COMPARE_WITH_TIMEOUT(total, threads * posts, 60'000);
    QVERIFY(isOrdered);
}

void MainThreadTest::aCallSeesWhatTheThreadWroteBefore()
{
    const auto plain = std::make_shared<Plain>();
    int seen = 0;
    const Thread thread([plain, &seen] {
        plain->value = 42;
        MainThread::post([plain, &seen] { seen = plain->value; });
    });
    QTRY_COMPARE(seen, 42);
}

/// What a call holds is destroyed where it ran, before the next call.
void MainThreadTest::aCallIsGivenUpOnTheMainThread()
{
    class Held
    {
      public:
        explicit Held(QThread *&destroyedOn) : destroyedOn_(destroyedOn) {}
        ~Held() { destroyedOn_ = QThread::currentThread(); }
        Held(const Held &) = delete;
        Held &operator=(const Held &) = delete;

      private:
        QThread *&destroyedOn_;
    };
    QThread *destroyedOn = nullptr;
    QThread *seenByNext = nullptr;
    bool hasRun = false;
    const Thread thread([&] {
        MainThread::post([held = std::make_shared<Held>(destroyedOn)] { QVERIFY(held); });
        MainThread::post([&] {
            seenByNext = destroyedOn;
            hasRun = true;
        });
    });
    QTRY_VERIFY(hasRun);
    QCOMPARE(destroyedOn, QCoreApplication::instance()->thread());
    QCOMPARE(seenByNext, QCoreApplication::instance()->thread());
}

void MainThreadTest::aWaitingCallReturnsWhenItIsDone()
{
    QThread *ranOn = nullptr;
    std::atomic<bool> hasReturned = false;
    bool returnedBefore = false;
    const Thread thread([&] {
        MainThread::callAndWait([&] {
            returnedBefore = hasReturned;
            ranOn = QThread::currentThread();
        });
        hasReturned = true;
    });
    QTRY_VERIFY(hasReturned);
    QVERIFY(!returnedBefore);
    QCOMPARE(ranOn, QCoreApplication::instance()->thread());
}

void MainThreadTest::aWaitingCallFromTheMainThreadRunsAtOnce()
{
    bool postedHasRun = false;
    MainThread::post([&postedHasRun] { postedHasRun = true; });
    bool hasRun = false;
    MainThread::callAndWait([&hasRun] { hasRun = true; });
    QVERIFY(hasRun);
    QVERIFY(!postedHasRun);
    QTRY_VERIFY(postedHasRun);
}

void MainThreadTest::aWaitingCallOvertakesNoPostedOne()
{
    QList<int> order;
    std::atomic<bool> hasReturned = false;
    const Thread thread([&] {
        MainThread::post([&order] { order.append(1); });
        MainThread::callAndWait([&order] { order.append(2); });
        MainThread::post([&order] { order.append(3); });
        hasReturned = true;
    });
    QTRY_VERIFY(hasReturned);
    QTRY_COMPARE(order.size(), 3);
    QCOMPARE(order, QList<int>({1, 2, 3}));
}

void MainThreadTest::theThreadSeesWhatItsWaitingCallWrote()
{
    std::atomic<int> seen = 0;
    const Thread thread([&seen] {
        Plain plain;
        MainThread::callAndWait([&plain] { plain.value = 42; });
        seen = plain.value;
    });
    QTRY_COMPARE(seen.load(), 42);
}

void MainThreadTest::manyThreadsWaitWithoutLoss()
{
    constexpr int threads = 8;
    constexpr int calls = 250;
    int total = 0;
    std::atomic<int> returned = 0;
    std::vector<Thread> running;
    for (int thread = 0; thread < threads; ++thread)
        running.emplace_back([&total, &returned] {
            for (int number = 0; number < calls; ++number)
                MainThread::callAndWait([&total] { ++total; });
            ++returned;
        });
    QTRY_COMPARE_WITH_TIMEOUT(returned.load(), threads, 60'000);
    QCOMPARE(total, threads * calls);
}

void MainThreadTest::aWaitingCallInsideAPostedOneRunsAtOnce()
{
    QList<int> order;
    MainThread::post([&order] {
        order.append(1);
        MainThread::callAndWait([&order] { order.append(2); });
        order.append(3);
    });
    MainThread::post([&order] { order.append(4); });
    QTRY_COMPARE(order.size(), 4);
    QCOMPARE(order, QList<int>({1, 2, 3, 4}));
}

void MainThreadTest::ofTwoWaitingCallsTheSecondRunsBehindWhatTheFirstPosts()
{
    QList<int> order;
    std::atomic<bool> hasReturned = false;
    const Thread thread([&] {
        MainThread::post([&order] { order.append(1); });
        MainThread::callAndWait(
            [&order] {
                order.append(2);
                MainThread::post([&order] { order.append(3); });
                MainThread::post([&order] { order.append(4); });
            },
            [&order] { order.append(5); });
        MainThread::post([&order] { order.append(6); });
        hasReturned = true;
    });
    QTRY_VERIFY(hasReturned);
    QTRY_COMPARE(order.size(), 6);
    QCOMPARE(order, QList<int>({1, 2, 3, 4, 5, 6}));
}

void MainThreadTest::twoWaitingCallsReturnWhenBothAreDone()
{
    std::atomic<int> seen = 0;
    QThread *ranOn = nullptr;
    const Thread thread([&] {
        Plain plain;
        MainThread::callAndWait([&plain] { plain.value = 40; },
                                [&plain, &ranOn] {
                                    plain.value += 2;
                                    ranOn = QThread::currentThread();
                                });
        seen = plain.value;
    });
    QTRY_COMPARE(seen.load(), 42);
    QCOMPARE(ranOn, QCoreApplication::instance()->thread());
}

void MainThreadTest::anEventLoopInsideACallGoesOnWithTheRestInOrder()
{
    QList<int> order;
    MainThread::post([&order] {
        order.append(1);
        QEventLoop loop;
        MainThread::post([&order, &loop] {
            order.append(4);
            loop.quit();
        });
        loop.exec();
        order.append(5);
    });
    MainThread::post([&order] { order.append(2); });
    MainThread::post([&order] { order.append(3); });
    QTRY_COMPARE(order.size(), 5);
    QCOMPARE(order, QList<int>({1, 2, 3, 4, 5}));
}

void MainThreadTest::eventLoopsInsideEachOtherKeepTheOrder()
{
    QList<int> order;
    QEventLoop outer;
    QEventLoop inner;
    MainThread::post([&] {
        order.append(1);
        outer.exec();
        order.append(7);
    });
    MainThread::post([&] {
        order.append(2);
        inner.exec();
        order.append(5);
    });
    MainThread::post([&] { order.append(3); });
    MainThread::post([&] {
        order.append(4);
        inner.quit();
        MainThread::post([&] {
            order.append(6);
            outer.quit();
        });
    });
    QTRY_COMPARE(order.size(), 7);
    QCOMPARE(order, QList<int>({1, 2, 3, 4, 5, 6, 7}));
}

void MainThreadTest::anEventLoopInsideACallServesOtherThreads()
{
    constexpr int calls = 100;
    QEventLoop loop;
    std::atomic<bool> isInside = false;
    bool isDone = false;
    int served = 0;
    MainThread::post([&] {
        isInside = true;
        isInside.notify_all();
        loop.exec();
        isDone = true;
    });
    const Thread thread([&] {
        isInside.wait(false);
        for (int number = 0; number < calls; ++number)
            MainThread::callAndWait([&served] { ++served; });
        MainThread::post([&loop] { loop.quit(); });
    });
    QTRY_VERIFY(isDone);
    QCOMPARE(served, calls);
}

void MainThreadTest::onlyTheMainThreadIsCurrent()
{
    QVERIFY(MainThread::isCurrent());
    bool isCurrentElsewhere = true;
    Thread([&isCurrentElsewhere] { isCurrentElsewhere = MainThread::isCurrent(); }).join();
    QVERIFY(!isCurrentElsewhere);
}

QTEST_GUILESS_MAIN(MainThreadTest)
#include "MainThreadTest.moc"
