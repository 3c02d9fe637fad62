#include "platform/StopSignals.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <csignal>

namespace {

/// How the child processes end where no signal ends them.
enum ExitCode { ToldOnce = 7, NotTold = 8, ToldOtherwise = 9 };

/// Listens, raises the signals one after the other, and waits to be told.
int listen(const QList<int> &signalNumbers)
{
    int told = 0;
    int times = 0;
    const StopSignals signals([&](int number) {
        told = number;
        ++times;
    });
    for (const int number : signalNumbers)
        std::raise(number);
    if (times != 0)
        return ToldOtherwise; // told from inside the handler
    if (!QTest::qWaitFor([&times] { return times != 0; }))
        return NotTold;
    QCoreApplication::processEvents();
    return told == signalNumbers.last() && times == 1 ? ToldOnce : ToldOtherwise;
}

/// What a child process does: "ignoring" a signal that its caller had ignored, the numbers to be
/// raised after that.
int runChild(QStringList arguments)
{
    if (arguments.first() == QStringLiteral("ignoring")) {
        arguments.removeFirst();
        std::signal(arguments.takeFirst().toInt(), SIG_IGN);
    }
    QList<int> numbers;
    for (const QString &argument : arguments)
        numbers.append(argument.toInt());
    return listen(numbers);
}

int exitCodeOfChild(const QStringList &arguments)
{
    return QProcess::execute(QCoreApplication::applicationFilePath(),
                             QStringList(QStringLiteral("child")) + arguments);
}

QString text(int number)
{
    return QString::number(number);
}

void addSignals()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("the terminal's interrupt") << SIGINT;
    QTest::newRow("the request to end") << SIGTERM;
}

} // namespace

/// There is one listener a process, and the second signal ends it, so each case is a process of its
/// own: this program again.
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
    QCOMPARE(exitCodeOfChild({text(signal)}), int(ToldOnce));
}

void StopSignalsTest::theSecondSignalEndsTheProcessAtOnce()
{
    QFETCH(int, signal);
    QCOMPARE(exitCodeOfChild({text(signal), text(signal)}), 128 + signal);
}

void StopSignalsTest::theSecondSignalGivesTheExitCode()
{
    QCOMPARE(exitCodeOfChild({text(SIGINT), text(SIGTERM)}), 143);
    QCOMPARE(exitCodeOfChild({text(SIGTERM), text(SIGINT)}), 130);
}

void StopSignalsTest::aSignalTheCallerIgnoredStaysIgnored()
{
    QCOMPARE(exitCodeOfChild({QStringLiteral("ignoring"), text(SIGINT), text(SIGINT), text(SIGINT),
                              text(SIGTERM)}),
             int(ToldOnce));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 2 && arguments.at(1) == QStringLiteral("child"))
        return runChild(arguments.mid(2));
    StopSignalsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "StopSignalsTest.moc"
