#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "support/Logger.h"

#include <QTest>

/// A link to the log where targets of links are left alone. The logger is the process's: one test.
class MainVCLogLinkTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLinkWhoseTargetIsLeftAloneCostsNoLog();
};

void MainVCLogLinkTest::aLinkWhoseTargetIsLeftAloneCostsNoLog()
{
    const Scratch scratch;
    const QByteArray log = scratch.file("log", "of the start before\n");
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    UserDefaults::standard().setValue(QStringLiteral("skipLinkTargets"), true);
    QVERIFY(stage.scan({scratch.link("link", "log")}));
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(scratch.path("link")));
    QCOMPARE(Scratch::content(log).count('\n'), 2);
    QVERIFY(Scratch::content(log).contains("1 file erased"));
    QCOMPARE(Logger::shared().logFileProblem(), QString());
}

QTEST_MAIN(MainVCLogLinkTest)
#include "MainVCLogLinkTest.moc"
