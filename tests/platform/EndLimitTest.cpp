#include "platform/EndLimit.h"

#include <QProcess>
#include <QTest>

#include <array>

using namespace std::chrono_literals;

namespace {

constexpr int endedByLimit = 7;
constexpr int endedByItself = 3;

/// What stands here for the part of the end that waits.
struct WaitsInItsEnd
{
    ~WaitsInItsEnd() { std::this_thread::sleep_for(duration); }

    std::chrono::seconds duration;
};

int hang()
{
    EndLimit limit;
    const WaitsInItsEnd waits{600s};
    limit.start(1ms, endedByLimit);
    return endedByItself;
}

int endInTime()
{
    EndLimit limit;
    const WaitsInItsEnd waits{0s};
    limit.start(600s, endedByLimit);
    return endedByItself;
}

int endWithoutLimit()
{
    const EndLimit limit;
    return endedByItself;
}

constexpr std::array ways = {hang, endInTime, endWithoutLimit};

} // namespace

/// The ends of child processes, which are this program with a number.
class EndLimitTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void noEndTakesLonger_data();
    void noEndTakesLonger();
};

void EndLimitTest::noEndTakesLonger_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("it hangs") << QStringLiteral("0") << endedByLimit;
    QTest::newRow("it is in time") << QStringLiteral("1") << endedByItself;
    QTest::newRow("there is no limit") << QStringLiteral("2") << endedByItself;
}

void EndLimitTest::noEndTakesLonger()
{
    QFETCH(QString, way);
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("WAY_TO_END"), way);
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(child.waitForFinished(60'000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QTEST(child.exitCode(), "exitCode");
}

int main(int argc, char *argv[])
{
    bool isChild = false;
    const int way = qEnvironmentVariableIntValue("WAY_TO_END", &isChild);
    if (isChild)
        return ways.at(std::size_t(way))();
    QCoreApplication application(argc, argv);
    EndLimitTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "EndLimitTest.moc"
