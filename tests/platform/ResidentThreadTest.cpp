#include "platform/ResidentThread.h"
#include "platform/CallList.h"

#include <QTest>

#include <atomic>
#include <csignal>
#include <semaphore>
#include <thread>

/// The list in which calls pass between threads, and the thread that stays.
class ResidentThreadTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void callsComeOutInTheOrderTheyWentIn()
    {
        CallList list;
        QByteArray order;
        for (const char letter : {'a', 'b', 'c'})
            list.push([&order, letter] { order += letter; });
        std::deque<CallList::Call> calls;
        list.takeInto(calls);
        list.push([&order] { order += 'd'; });
        list.takeInto(calls);

        for (const CallList::Call &call : calls)
            call();

        QCOMPARE(order, QByteArray("abcd"));
    }

    void callsOfManyThreadsKeepEachThreadsOrder()
    {
        CallList list;
        std::array<int, 4> last{};
        std::atomic<bool> isOrdered = true;
        std::vector<std::thread> threads;
        for (std::size_t thread = 0; thread < last.size(); ++thread) {
            threads.emplace_back([&, thread] {
                for (int number = 1; number <= 1000; ++number)
                    list.push([&, thread, number] {
                        if (std::exchange(last[thread], number) != number - 1)
                            isOrdered = false;
                    });
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        std::deque<CallList::Call> calls;
        list.takeInto(calls);

        for (const CallList::Call &call : calls)
            call();

        QCOMPARE(calls.size(), std::size_t(4000));
        QVERIFY(isOrdered);
    }

    void callsThatNobodyTakesAreReleased()
    {
        const auto held = std::make_shared<int>(1);
        {
            CallList list;
            list.push([held] {});
            QCOMPARE(held.use_count(), 2);
        }
        QCOMPARE(held.use_count(), 1);
    }

    void tasksRunOneAfterTheOtherOnTheSameThread()
    {
        // Stays for the rest of the process, as its users' does.
        static ResidentThread *const thread = new ResidentThread;
        std::binary_semaphore isDone(0);
        std::atomic<int> running = 0;
        std::atomic<bool> isAlone = true;
        QList<std::thread::id> ids;
        for (int task = 0; task < 100; ++task) {
            QVERIFY(thread->submit([&, task] {
                if (running.fetch_add(1) != 0)
                    isAlone = false;
                ids.append(std::this_thread::get_id());
                running.fetch_sub(1);
                if (task == 99)
                    isDone.release();
            }));
        }
        isDone.acquire();

        QVERIFY(isAlone);
        QCOMPARE(ids.size(), 100);
        QCOMPARE(ids.count(ids.first()), 100);
        QVERIFY(ids.first() != std::this_thread::get_id());
    }

    void aTaskHandedOverFromInsideOneWaitsForItsEnd()
    {
        static ResidentThread *const thread = new ResidentThread;
        std::binary_semaphore isDone(0);
        QByteArray order;
        QVERIFY(thread->submit([&] {
            order += "first begins, ";
            if (!thread->submit([&] {
                    order += "second";
                    isDone.release();
                }))
                isDone.release();
            order += "first ends, ";
        }));
        isDone.acquire();

        QCOMPARE(order, QByteArray("first begins, first ends, second"));
    }

    void everySignalIsBlockedThere()
    {
        static ResidentThread *const thread = new ResidentThread;
        std::binary_semaphore isDone(0);
        sigset_t blocked;
        QVERIFY(thread->submit([&] {
            pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
            isDone.release();
        }));
        isDone.acquire();

        QCOMPARE(sigismember(&blocked, SIGINT), 1);
        QCOMPARE(sigismember(&blocked, SIGTERM), 1);
    }
};

QTEST_GUILESS_MAIN(ResidentThreadTest)
#include "ResidentThreadTest.moc"
