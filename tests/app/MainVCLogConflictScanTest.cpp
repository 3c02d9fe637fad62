#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "support/Logger.h"

#include <QTest>

/// A log that is itself listed when a scan is stopped. The logger is the process's: one test.
class MainVCLogConflictScanTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLogThatIsListedIsNotEmptiedByAStoppedScan();
};

void MainVCLogConflictScanTest::aLogThatIsListedIsNotEmptiedByAStoppedScan()
{
    const Scratch scratch;
    const QByteArray content = QByteArray("of the start before\n").repeated(100);
    const QByteArray log = scratch.file("log", content);
    const QByteArray other = scratch.file("other", 10);
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    QVERIFY(stage.scan({log}));

    Stage::drop({other});
    stage.vc->btnStopScanningClicked();
    QVERIFY(Stage::waitFor([&stage] { return !stage.vc->isScanningFiles(); }));

    // The word that it was worth has to wait.
    Logger &logger = Logger::shared();
    QVERIFY(!logger.isSetUp());
    QCOMPARE(Scratch::content(log), content);

    QVERIFY(stage.run());
    QVERIFY(stage.stats().wipedFilesString().startsWith(QLatin1String("2.0")));
    QVERIFY(!Scratch::exists(log));
    QVERIFY(!logger.isLogFileOpen());
    logger.flush();
    QCOMPARE(logger.logArray().size(), std::size_t(3));
    QCOMPARE(logger.logArray().front()->message, QStringLiteral("Scan cancelled"));
}

QTEST_MAIN(MainVCLogConflictScanTest)
#include "MainVCLogConflictScanTest.moc"
