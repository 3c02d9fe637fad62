#include "platform/StopSignals.h"

#include <QCoreApplication>
#include <QTest>

#include <csignal>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Exit codes of the children, unlike any of a signal.
enum { ToldOnce = 7, NotTold = 8, ToldOtherwise = 9 };

/// How a child process ends that runs `work`: its exit code, or minus the signal that ended it.
template <class Work> int endOf(Work work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return -1000;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// Raises the signal. A thread sanitizer holds signals back until the program makes a call, so it
/// gets one that does nothing.
void raiseSignal(int signal)
{
    std::raise(signal);
    ::poll(nullptr, 0, 0);
}

void addSignals()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("the terminal's interrupt") << SIGINT;
    QTest::newRow("the request to end") << SIGTERM;
}

} // namespace

/// There is one object a process, so each case is a child process of its own.
class StopSignalsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theFirstSignalIsToldOnTheMainThread_data() { addSignals(); }
    void theFirstSignalIsToldOnTheMainThread();
    void theSecondSignalEndsTheProcessAtOnce_data() { addSignals(); }
    void theSecondSignalEndsTheProcessAtOnce();
    void theSecondSignalGivesTheExitCode();
    void aSignalTheCallerIgnoredStaysIgnored();
};

void StopSignalsTest::theFirstSignalIsToldOnTheMainThread()
{
    QFETCH(int, signal);
    const auto work = [signal] {
        int told = 0;
        int times = 0;
        const StopSignals signals([&](int number) {
            told = number;
            ++times;
        });
        raiseSignal(signal);
        if (times != 0)
            return int(ToldOtherwise); // told from inside the handler
        if (!QTest::qWaitFor([&times] { return times != 0; }))
            return int(NotTold);
        QCoreApplication::processEvents();
        return told == signal && times == 1 ? int(ToldOnce) : int(ToldOtherwise);
    };
    QCOMPARE(endOf(work), int(ToldOnce));
}

void StopSignalsTest::theSecondSignalEndsTheProcessAtOnce()
{
    QFETCH(int, signal);
    const auto work = [signal] {
        const StopSignals signals([](int) {});
        raiseSignal(signal);
        raiseSignal(signal);
        return int(NotTold);
    };
    QCOMPARE(endOf(work), 128 + signal);
}

void StopSignalsTest::theSecondSignalGivesTheExitCode()
{
    const auto work = [] {
        const StopSignals signals([](int) {});
        raiseSignal(SIGINT);
        raiseSignal(SIGTERM);
        return int(NotTold);
    };
    QCOMPARE(endOf(work), 143);
}

void StopSignalsTest::aSignalTheCallerIgnoredStaysIgnored()
{
    const auto work = [] {
        std::signal(SIGINT, SIG_IGN);
        int times = 0;
        const StopSignals signals([&times](int) { ++times; });
        raiseSignal(SIGINT);
        raiseSignal(SIGINT);
        raiseSignal(SIGTERM);
        if (!QTest::qWaitFor([&times] { return times != 0; }))
            return int(NotTold);
        return times == 1 ? int(ToldOnce) : int(ToldOtherwise);
    };
    QCOMPARE(endOf(work), int(ToldOnce));
}

QTEST_GUILESS_MAIN(StopSignalsTest)
#include "StopSignalsTest.moc"
