#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"

#include <QTest>

/// What the log file holds of the window's runs. The logger is the process's: one test.
class MainVCLogTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aRunIsLoggedWithoutAName();
};

void MainVCLogTest::aRunIsLoggedWithoutAName()
{
    const Scratch scratch;
    const QByteArray log = scratch.file("log", QByteArray("of the start before\n"));
    const QByteArray folder = scratch.folder("a secret folder");
    QVERIFY(!scratch.file("a secret folder/secret", 1000).isEmpty());
    const QByteArray gone = scratch.file("secretly gone", 10);
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    QVERIFY(stage.scan({folder, gone}));
    // Nothing was logged yet.
    QCOMPARE(Scratch::content(log), QByteArray("of the start before\n"));
    QVERIFY(QFile::remove(QFile::decodeName(gone)));
    QVERIFY(stage.run());

    const QByteArray logged = Scratch::content(log);
    QVERIFY(!logged.contains("secret"));
    QVERIFY(!logged.contains("of the start before"));
    const QList<QByteArray> lines = logged.trimmed().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[0].contains("Run started: "));
    QVERIFY(lines[0].contains("2 files, 1010 bytes"));
    QVERIFY(lines[1].contains("No such file or directory"));
    QVERIFY(lines[2].contains("1 file erased, 1000 bytes, 1 failed, 0 not touched"));

    // A stopped scan is worth a word.
    Stage::drop({scratch.file("b", 1)});
    stage.vc->btnStopScanningClicked();
    QVERIFY(Stage::waitFor([&stage] { return !stage.vc->isScanningFiles(); }));
    QVERIFY(Scratch::content(log).contains("Scan cancelled"));
}

QTEST_MAIN(MainVCLogTest)
#include "MainVCLogTest.moc"
