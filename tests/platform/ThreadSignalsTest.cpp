#include "platform/ThreadSignals.h"

#include <QTest>

#include <csignal>
#include <thread>

namespace {

volatile std::sig_atomic_t handledSignals = 0;

void handle(int)
{
    handledSignals = handledSignals + 1;
}

bool isBlocked(int signal)
{
    sigset_t blocked;
    return pthread_sigmask(SIG_SETMASK, nullptr, &blocked) == 0 &&
           sigismember(&blocked, signal) == 1;
}

} // namespace

class ThreadSignalsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everySignalThatCanBeBlockedIsBlocked();
    void theOtherThreadsAreLeftAlone();
    void aBlockedSignalWaits();
};

void ThreadSignalsTest::everySignalThatCanBeBlockedIsBlocked()
{
    QList<int> open;
    std::thread([&open] {
        ThreadSignals::blockAll();
        for (int signal = 1; signal <= SIGRTMAX; ++signal) {
            // The library keeps the two below SIGRTMIN for itself.
            const bool isTheLibrarys = signal >= 32 && signal < SIGRTMIN;
            if (!isTheLibrarys && !isBlocked(signal))
                open.append(signal);
        }
    }).join();
    QCOMPARE(open, QList<int>({SIGKILL, SIGSTOP}));
}

void ThreadSignalsTest::theOtherThreadsAreLeftAlone()
{
    std::thread([] { ThreadSignals::blockAll(); }).join();
    QVERIFY(!isBlocked(SIGINT));
    QVERIFY(!isBlocked(SIGTERM));
}

void ThreadSignalsTest::aBlockedSignalWaits()
{
    struct sigaction action = {};
    struct sigaction old = {};
    action.sa_handler = handle;
    QCOMPARE(::sigaction(SIGUSR1, &action, &old), 0);
    handledSignals = 0;
    bool isPending = false;
    std::thread([&isPending] {
        ThreadSignals::blockAll();
        pthread_kill(pthread_self(), SIGUSR1);
        sigset_t pending;
        isPending = sigpending(&pending) == 0 && sigismember(&pending, SIGUSR1) == 1;
    }).join();
    QVERIFY(isPending);
    QCOMPARE(int(handledSignals), 0);
    QCOMPARE(::sigaction(SIGUSR1, &old, nullptr), 0);
}

QTEST_APPLESS_MAIN(ThreadSignalsTest)
#include "ThreadSignalsTest.moc"
