#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "support/Logger.h"

#include <QTest>

/// A stopped scan before the log has begun. The logger is the process's: one test.
class MainVCLogStoppedScanTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aStoppedScanEmptiesNoLogAndIsToldWhenItBegins();
};

/// The log may be what the scan had not come to.
void MainVCLogStoppedScanTest::aStoppedScanEmptiesNoLogAndIsToldWhenItBegins()
{
    const Scratch scratch;
    const QByteArray log = scratch.file("log", "of the start before\n");
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    for (const char *name : {"a", "b"}) {
        Stage::drop({scratch.file(name, 10)});
        stage.vc->btnStopScanningClicked();
        QVERIFY(Stage::waitFor([&stage] { return !stage.vc->isScanningFiles(); }));
    }
    QCOMPARE(Scratch::content(log), QByteArray("of the start before\n"));

    QVERIFY(stage.scan({scratch.file("c", 10)}));
    QVERIFY(stage.run());
    const QList<QByteArray> lines = Scratch::content(log).trimmed().split('\n');
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines[0].startsWith("[WARN]  ") && lines[0].endsWith("Scan cancelled"));
    QVERIFY(lines[1].endsWith("Scan cancelled"));
    QVERIFY(lines[2].contains("Run started: "));
}

QTEST_MAIN(MainVCLogStoppedScanTest)
#include "MainVCLogStoppedScanTest.moc"
