#include "app/MainVC.h"

#include "app/Stage.h"
#include "kit/Scratch.h"
#include "support/Logger.h"
#include "ui/FinishedView.h"
#include "ui/TextLabel.h"

#include <QTest>

/// A log that is itself to be erased. The logger is the process's: one test.
class MainVCLogConflictTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aLogThatIsQueuedIsErasedAndNotEmptied();
};

void MainVCLogConflictTest::aLogThatIsQueuedIsErasedAndNotEmptied()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("folder");
    const QByteArray log = scratch.file("folder/log", 5000);
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log));
    QVERIFY(stage.scan({folder}));
    QVERIFY(stage.run());
    // All of what it held was overwritten, and nothing was written anew.
    QCOMPARE(stage.stats().wipedFilesString(), QStringLiteral("5.00 KB in 1 files"));
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 0);
    QVERIFY(!Scratch::exists(folder));
    QVERIFY(!Logger::shared().isLogFileOpen());
    QVERIFY(stage.outlets.viewFinished->note()->text().endsWith(
        QLatin1String("The log is not complete: It was among what was to be erased.")));
}

QTEST_MAIN(MainVCLogConflictTest)
#include "MainVCLogConflictTest.moc"
