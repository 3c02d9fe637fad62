#include "app/WindowOptions.h"

#include <QTest>

class WindowOptionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everythingThatIsNoOptionIsAPath();
    void behindTwoDashesEverythingIsAPath();
    void namesStayTheBytesTheyAre();
    void helpAndVersionAreRead();
    void theHeartbeatTakesAFile();
    void anUnknownOptionIsAnError_data();
    void anUnknownOptionIsAnError();
};

void WindowOptionsTest::everythingThatIsNoOptionIsAPath()
{
    const auto options = WindowOptions::parse({"a", "/b/c", "--version", "d"});
    QCOMPARE(options.paths, (std::vector<QByteArray>{"a", "/b/c", "d"}));
    QVERIFY(options.error.isEmpty() && options.heartbeatPath.isNull());
}

void WindowOptionsTest::behindTwoDashesEverythingIsAPath()
{
    const auto options = WindowOptions::parse({"--", "-h", "--version", "--"});
    QCOMPARE(options.paths, (std::vector<QByteArray>{"-h", "--version", "--"}));
    QVERIFY(!options.wantsHelp && !options.wantsVersion);
}

void WindowOptionsTest::namesStayTheBytesTheyAre()
{
    QCOMPARE(WindowOptions::parse({"caf\xe9", ""}).paths, (std::vector<QByteArray>{"caf\xe9", ""}));
}

void WindowOptionsTest::helpAndVersionAreRead()
{
    QVERIFY(WindowOptions::parse({"-h"}).wantsHelp);
    QVERIFY(WindowOptions::parse({"--help"}).wantsHelp);
    QVERIFY(WindowOptions::parse({"--version"}).wantsVersion);
    QVERIFY(!WindowOptions::parse({}).wantsHelp && !WindowOptions::parse({}).wantsVersion);
}

void WindowOptionsTest::theHeartbeatTakesAFile()
{
    QCOMPARE(WindowOptions::parse({"--heartbeat", "file"}).heartbeatPath, QByteArray("file"));
    QCOMPARE(WindowOptions::parse({"--heartbeat=file"}).heartbeatPath, QByteArray("file"));
    QVERIFY(!WindowOptions::parse({"--heartbeat"}).error.isEmpty());
}

void WindowOptionsTest::anUnknownOptionIsAnError_data()
{
    QTest::addColumn<QByteArray>("option");
    QTest::newRow("long") << QByteArray("--erase");
    QTest::newRow("short") << QByteArray("-x");
    QTest::newRow("one of Qt's") << QByteArray("-platform");
}

void WindowOptionsTest::anUnknownOptionIsAnError()
{
    QFETCH(QByteArray, option);
    QVERIFY(!WindowOptions::parse({option, "file"}).error.isEmpty());
}

QTEST_GUILESS_MAIN(WindowOptionsTest)
#include "WindowOptionsTest.moc"
