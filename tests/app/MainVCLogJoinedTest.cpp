#include "app/MainVC.h"

#include "app/Stage.h"
#include "app/run/Gate.h"
#include "kit/Scratch.h"
#include "support/Logger.h"
#include "ui/FinishedView.h"
#include "ui/TextLabel.h"

#include <QTest>

/// A log that joins a run which is logged in it. The logger is the process's, so the second test
/// goes on with the log of the first.
class MainVCLogJoinedTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aStoppedScanBeginsALogWhereNoneIs();
    void aLogThatJoinsARunIsLeftToTheEraser();

  private:
    const Scratch scratch_;
    const QByteArray log_ = scratch_.path("log");
};

void MainVCLogJoinedTest::aStoppedScanBeginsALogWhereNoneIs()
{
    Stage stage;
    UserDefaults::standard().setValue(QStringLiteral("logFilePath"), QFile::decodeName(log_));
    Stage::drop({scratch_.file("a", 10)});
    stage.vc->btnStopScanningClicked();
    QVERIFY(Stage::waitFor([&stage] { return !stage.vc->isScanningFiles(); }));
    QVERIFY(Scratch::content(log_).endsWith("Scan cancelled\n"));
}

void MainVCLogJoinedTest::aLogThatJoinsARunIsLeftToTheEraser()
{
    Gate gate("b");
    const SystemCalls::Replacement replacement(gate);
    Stage stage;
    QVERIFY(stage.scan({scratch_.file("b", 10)}));
    stage.vc->btnStartClicked();
    QTRY_VERIFY(gate.isReached());
    const auto size = Scratch::content(log_).size();
    QVERIFY(stage.scan({log_}));
    gate.open();
    QTRY_COMPARE(stage.vc->currentView(), MainView::Finished);
    QVERIFY(!Scratch::exists(log_));
    QVERIFY(stage.outlets.viewFinished->note()->text().endsWith(
        QLatin1String("The log is not complete: It was among what was to be erased.")));
    QVERIFY(stage.stats().wipedFilesString().startsWith(QString::number(size + 10)));
}

QTEST_MAIN(MainVCLogJoinedTest)
#include "MainVCLogJoinedTest.moc"
