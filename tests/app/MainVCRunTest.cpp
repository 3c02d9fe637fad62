#include "app/Stage.h"

#include "app/run/Gate.h"
#include "kit/ForwardingSystemCalls.h"
#include "ui/ButtonRed.h"
#include "ui/CautionBand.h"
#include "ui/Figure.h"
#include "ui/PassStrip.h"
#include "ui/QueueTable.h"
#include "ui/QueueTableModel.h"

#include <QItemSelectionModel>
#include <QPointer>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <semaphore>
#include <utility>

using V = MainView;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

QStringList errorRows(const Stage &stage)
{
    const QAbstractItemModel &model = *stage.outlets.errorLogArrayController;
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells.append(model.index(row, column).data().toString());
        rows.append(cells.join(QLatin1Char('|')));
    }
    return rows;
}

QByteArrayList queued(const Stage &stage)
{
    QByteArrayList paths;
    for (const QueueArray::Item &item : stage.vc->queueArray()->items())
        paths.append(item->fullpath());
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// Lets no scan get past this path, the first time it comes to it.
class HeldScan final : public ForwardingSystemCalls
{
  public:
    explicit HeldScan(QByteArray path) : path_(std::move(path)) {}
    ~HeldScan() override { goOn(); }
    HeldScan(const HeldScan &) = delete;
    HeldScan &operator=(const HeldScan &) = delete;

    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        if (path_ == path && !isReached_.exchange(true))
            mayGoOn_.acquire();
        return ForwardingSystemCalls::statusAt(folder, path, lastLink, status);
    }

    [[nodiscard]] bool isReached() const { return isReached_; }
    void goOn()
    {
        if (!std::exchange(goesOn_, true))
            mayGoOn_.release();
    }

  private:
    QByteArray path_;
    std::atomic<bool> isReached_ = false;
    std::binary_semaphore mayGoOn_{0};
    bool goesOn_ = false;
};

} // namespace

class MainVCRunTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    // Entry of files
    void whatIsPostedIsScannedAndListed();
    void anEmptyListShowsTheReadyView();
    void aScanThatFindsNothingShowsTheReadyView();
    void theSheetSaysWhatIsFound();
    void theOpenPanelIsAskedForFilesAndFolders();
    void aCancelledPanelDoesNothing();
    void stoppingAScanQueuesWhatWasFound();
    void theSameFileTwiceIsQueuedOnce();
    void aFileAndItsFolderQueueItOnce();
    void aFileThatIsQueuedAlreadyAddsNothing();
    void whatIsLeftOutOfADropIsSaid();
    void aFirstDropThatBringsAFileTwiceSaysNothing();
    void aSecondDropJoinsAScanThatGoesOn();
    void filesThatDifferOnlyInCaseAreBothQueued();
    void moreFilesJoinTheReadyView();
    void filesAddedInTheFinishedViewShowTheReadyViewFromTheLeft();
    void filesThatComeWhileThePreferencesAreOpenShowTheReadyView();
    void theReadyViewSaysWhatWaits();
    void startIsDisabledOnlyWhereNothingWaits();
    void cautionsStandInTheReadyView();
    void leavingTheTargetsOfLinksChangesTheCaution();
    void whatCannotBeLookedIntoStandsInTheErrorLog();

    // Run
    void startTakesFiveStepsInTheirOrder();
    void theTimersTickOnceAndTwiceASecond();
    void theFirstTickComesAtTheStart();
    void aWholeRunErasesAndSaysSo();
    void theEndTakesEightStepsInTheirOrder();
    void afterARunEverythingBeginsAtZero();
    void aSecondRunStartsFromZero();
    void aFailedFileIsCountedAndLogged();
    void theErrorLogIsEmptiedAtTheNextStart();
    void aHiddenFileThatWentWithItsFolderStandsInTheErrorLog();
    void filesAddedDuringARunAreErasedInIt();
    void aReportBetweenTheLastFileAndTheEndIsNotLost();
    void aMethodOutsideTheCatalogueFailsEveryFileUntouched();
    void anotherMethodCountsForTheNextFile();
    void targetsOfLinksAreLeftAloneWhereWanted();
    void theErasingViewFollowsTheRun();
    void anEmptyRunEndsAtOnce();
    void aScanThatOutlivesTheRunReportsIntoTheFinishedView();
    void emptyingTheListTwiceKeepsItsSelection();

    // Progress
    void theItemsBarFollowsItsBytes();
    void theThroughputIsMeasuredOnceASecond();
    void itemsAddedSilenceOneTick();

    // After the run
    void theUserIsToldOfTheEnd();
    void quitsAfterARunWhereWanted();
    void staysWhereItIsNotWanted();
    void staysWhileAFailureWaits();
    void staysWhileADialogIsOpen();
    void staysWhileAScanGoesOn();
    void aReportAfterItStayedStartsAnew();
    void staysWhileFilesWait();

    // Error log
    void theFileIsShownInItsFolder();
    void nothingSelectedShowsNothing();
};

// Entry of files

void MainVCRunTest::whatIsPostedIsScannedAndListed()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("top");
    const QByteArray file = scratch.file("top/a", 100);
    Stage stage;
    stage.vc->showInitialView();

    Stage::drop({folder});
    QVERIFY(stage.vc->isScanningFiles());
    QVERIFY(stage.vc->scanningFilesWindowIsOpen());
    QVERIFY(stage.window.windowScanningFiles()->isOpen());
    QVERIFY(stage.outlets.btnStopScanning->isEnabled());
    QCOMPARE(stage.vc->currentView(), V::Drop);

    QTRY_COMPARE(stage.vc->currentView(), V::Ready);
    QVERIFY(!stage.vc->isScanningFiles());
    QVERIFY(!stage.window.windowScanningFiles()->isOpen());
    QTRY_VERIFY(!stage.vc->scanningFilesWindowIsOpen());
    QCOMPARE(queued(stage), QByteArrayList({file}));
    QCOMPARE(stage.vc->folderUrlsToDeleteDict().size(), std::size_t(1));
    QCOMPARE(stage.stats().totalFilesRemaining(), 1);
    QCOMPARE(stage.stats().totalBytes(), 100.0);
    QCOMPARE(stage.stats().scanFoundFiles(), 0);
    QCOMPARE(stage.stats().scanFoundBytes(), 0.0);
}

void MainVCRunTest::anEmptyListShowsTheReadyView()
{
    Stage stage;
    stage.vc->showInitialView();
    QVERIFY(stage.scan({}));
    QCOMPARE(stage.vc->currentView(), V::Ready);
    QCOMPARE(stage.outlets.viewPressStart->countText()->text(), text("0 files"));
}

void MainVCRunTest::aScanThatFindsNothingShowsTheReadyView()
{
    Stage stage;
    stage.vc->showInitialView();
    QVERIFY(stage.scan({QByteArray("")}));
    QCOMPARE(stage.vc->currentView(), V::Ready);
    QVERIFY(!stage.window.windowScanningFiles()->isOpen());
    QVERIFY(queued(stage).isEmpty());
}

void MainVCRunTest::theSheetSaysWhatIsFound()
{
    Stage stage;
    stage.stats().setScanFoundFiles(12'480);
    stage.stats().setScanFoundBytes(38.02e9);
    stage.vc->openWindowScanningFiles();
    QStringList texts;
    for (const QLabel *label : stage.window.windowScanningFiles()->findChildren<QLabel *>())
        texts.append(label->text());
    QVERIFY(texts.contains(text("12,480")));
    QVERIFY(texts.contains(text("38.02 GB")));
}

void MainVCRunTest::theOpenPanelIsAskedForFilesAndFolders()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", 1);
    Stage stage;
    stage.vc->btnAddFilesClicked();
    QCOMPARE(stage.panels.size(), std::size_t(1));
    QCOMPARE(stage.panels[0].window, &stage.window);
    QCOMPARE(stage.panels[0].title, text("Choose files and/or folders to secure delete"));
    QCOMPARE(stage.panels[0].prompt, text("OK"));
    stage.panels[0].end(1, {file});
    QTRY_COMPARE(stage.vc->currentView(), V::Ready);
    QCOMPARE(queued(stage), QByteArrayList({file}));
}

void MainVCRunTest::aCancelledPanelDoesNothing()
{
    const Scratch scratch;
    Stage stage;
    stage.vc->showInitialView();
    stage.vc->btnAddFilesClicked();
    stage.panels[0].end(0, {scratch.file("a", 1)});
    QVERIFY(!stage.vc->isScanningFiles());
    QCOMPARE(stage.vc->currentView(), V::Drop);
}

void MainVCRunTest::stoppingAScanQueuesWhatWasFound()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", 1);
    const QByteArray later = scratch.file("later", 1);
    HeldScan scan(file);
    const SystemCalls::Replacement replacement(scan);
    Stage stage;
    Stage::drop({file, later});
    QTRY_VERIFY(scan.isReached());
    stage.vc->btnStopScanningClicked();
    scan.goOn();
    QVERIFY(!stage.outlets.btnStopScanning->isEnabled());
    QVERIFY(!stage.window.windowScanningFiles()->isOpen());
    QTRY_COMPARE(stage.vc->currentView(), V::Ready);
    // The item in work when it was stopped is kept, the next ones are not begun.
    QCOMPARE(queued(stage), QByteArrayList({file}));
    // The button is there again for the next scan.
    QVERIFY(stage.scan({}));
    QVERIFY(stage.outlets.btnStopScanning->isEnabled());
}

void MainVCRunTest::theSameFileTwiceIsQueuedOnce()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", 10);
    Stage stage;
    QVERIFY(stage.scan({file, file}));
    QCOMPARE(queued(stage), QByteArrayList({file}));
    QCOMPARE(stage.stats().totalFilesRemaining(), 1);
    QCOMPARE(stage.stats().totalBytes(), 10.0);
}

void MainVCRunTest::aFileAndItsFolderQueueItOnce()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("top");
    const QByteArray file = scratch.file("top/a", 10);
    Stage stage;
    QVERIFY(stage.scan({file, folder}));
    QCOMPARE(queued(stage), QByteArrayList({file}));
}

void MainVCRunTest::aFileThatIsQueuedAlreadyAddsNothing()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", 10);
    Stage stage;
    QVERIFY(stage.scan({file}));
    QVERIFY(!stage.heard.contains(text("1 file is already in the list")));
    QVERIFY(stage.scan({file}));
    QCOMPARE(queued(stage), QByteArrayList({file}));
    QCOMPARE(stage.stats().totalFilesRemaining(), 1);
    QCOMPARE(stage.stats().totalBytes(), 10.0);
    QVERIFY(stage.heard.contains(text("1 file is already in the list")));
}

void MainVCRunTest::whatIsLeftOutOfADropIsSaid()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 10);
    const QByteArray second = scratch.file("second", 10);
    const QByteArray third = scratch.file("third", 10);
    Stage stage;
    QVERIFY(stage.scan({first, second}));
    stage.heard.clear();
    QVERIFY(stage.scan({first, second, third}));
    QCOMPARE(queued(stage), QByteArrayList({first, second, third}));
    QVERIFY(stage.heard.contains(text("2 files are already in the list")));
}

void MainVCRunTest::aFirstDropThatBringsAFileTwiceSaysNothing()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", 10);
    Stage stage;
    QVERIFY(stage.scan({file, file}));
    QVERIFY(stage.heard.filter(text("already in the list")).isEmpty());
}

void MainVCRunTest::aSecondDropJoinsAScanThatGoesOn()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 10);
    const QByteArray second = scratch.file("second", 20);
    HeldScan scan(first);
    const SystemCalls::Replacement replacement(scan);
    Stage stage;
    stage.vc->showInitialView();
    Stage::drop({first});
    QTRY_VERIFY(scan.isReached());
    Stage::drop({second});
    QVERIFY(stage.vc->isScanningFiles());
    QVERIFY(stage.window.windowScanningFiles()->isOpen());
    QCOMPARE(stage.vc->currentView(), V::Drop);

    scan.goOn();
    QTRY_COMPARE(stage.vc->currentView(), V::Ready);
    QCOMPARE(queued(stage), QByteArrayList({first, second}));
    QVERIFY(!stage.vc->isScanningFiles());
    QTRY_VERIFY(!stage.vc->scanningFilesWindowIsOpen());
    QCOMPARE(stage.outlets.viewPressStart->countText()->text(), text("2 files"));
    QCOMPARE(stage.stats().totalBytes(), 30.0);
}

void MainVCRunTest::filesThatDifferOnlyInCaseAreBothQueued()
{
    const Scratch scratch;
    const QByteArray lower = scratch.file("a", 1);
    const QByteArray upper = scratch.file("A", 1);
    Stage stage;
    QVERIFY(stage.scan({lower, upper}));
    QCOMPARE(queued(stage), QByteArrayList({upper, lower}));
}

void MainVCRunTest::moreFilesJoinTheReadyView()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 10)}));
    QVERIFY(stage.scan({scratch.file("b", 5), scratch.folder("c")}));
    QCOMPARE(stage.vc->currentView(), V::Ready);
    QCOMPARE(stage.outlets.viewPressStart->countText()->text(), text("2 files"));
    QCOMPARE(stage.outlets.viewPressStart->foldersText()->text(),
             text("1 folder, removed once it is empty"));
    QCOMPARE(stage.outlets.viewPressStart->sizeText()->text(), text("15 Bytes"));
    QCOMPARE(stage.outlets.viewPressStart->table()->model()->rowCount(), 2);
}

void MainVCRunTest::filesAddedInTheFinishedViewShowTheReadyViewFromTheLeft()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    QVERIFY(stage.run());
    QVERIFY(stage.scan({scratch.file("b", 1)}));
    QCOMPARE(stage.vc->currentView(), V::Ready);
    QCOMPARE(stage.side(), PushTransition::Subtype::FromLeft);
}

void MainVCRunTest::filesThatComeWhileThePreferencesAreOpenShowTheReadyView()
{
    const Scratch scratch;
    Stage stage;
    stage.vc->showInitialView();
    stage.vc->showViewPreferences();
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    QCOMPARE(stage.vc->currentView(), V::Ready);
    QVERIFY(stage.outlets.btnAddFiles->isEnabled());
}

void MainVCRunTest::theReadyViewSaysWhatWaits()
{
    const Scratch scratch;
    Stage stage(4);
    QVERIFY(stage.scan({scratch.file("a", 1500)}));
    const ReadyView &view = *stage.outlets.viewPressStart;
    QCOMPARE(view.countText()->text(), text("1 file"));
    QCOMPARE(view.foldersText()->text(), text("No folders"));
    QCOMPARE(view.sizeText()->text(), text("1.50 KB"));
    QCOMPARE(view.workText()->text(), text("4.50 KB to write in 3 passes"));
    UserDefaults::standard().setValue(text("WipeMethod"), 1);
    stage.vc->wipeSelectorClicked();
    QCOMPARE(view.workText()->text(), text("1.50 KB to write in 1 pass"));
}

void MainVCRunTest::startIsDisabledOnlyWhereNothingWaits()
{
    const Scratch scratch;
    Stage stage;
    const ReadyView &view = *stage.outlets.viewPressStart;
    QVERIFY(stage.scan({}));
    QVERIFY(!view.startButton()->isEnabled());
    QCOMPARE(view.workText()->text(), text("Nothing to write"));
    QVERIFY(stage.scan({scratch.folder("empty")}));
    QVERIFY(view.startButton()->isEnabled());
}

void MainVCRunTest::cautionsStandInTheReadyView()
{
    const Scratch scratch;
    const QByteArray target = scratch.file("target", 1);
    Stage stage;
    QVERIFY(stage.scan({scratch.link("link", target)}));
    const CautionBand &band = *stage.outlets.viewPressStart->cautionBand();
    QTRY_VERIFY(band.cautions().contains(text("1 symbolic link: the file it points to will be "
                                              "overwritten")));
    QVERIFY(stage.run());
    QVERIFY(band.cautions().isEmpty());
}

void MainVCRunTest::leavingTheTargetsOfLinksChangesTheCaution()
{
    const Scratch scratch;
    const QByteArray target = scratch.file("target", 1);
    Stage stage;
    QVERIFY(stage.scan({scratch.link("link", target)}));
    const CautionBand &band = *stage.outlets.viewPressStart->cautionBand();
    QTRY_VERIFY(!band.cautions().isEmpty());
    UserDefaults::standard().setValue(text("skipLinkTargets"), true);
    QVERIFY(band.cautions().contains(
        text("1 symbolic link will be removed; the file it points to stays")));
}

void MainVCRunTest::whatCannotBeLookedIntoStandsInTheErrorLog()
{
    Stage stage;
    // What is refused is told in the same way.
    QVERIFY(stage.scan({QByteArray("")}));
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 1);
    QVERIFY(errorRows(stage).first().contains(text("names nothing")));
    QVERIFY(!stage.window.header()->btnErrorLog()->isHidden());
    // A run does nothing about it.
    QVERIFY(stage.run());
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 1);
    QVERIFY(!stage.vc->showBtnErrorWindow());
    // The summary and the log call it the same.
    QCOMPARE(stage.outlets.viewFinished->failureBand()->cautions(),
             QStringList(text("1 item was not overwritten or is still there.")));
    QCOMPARE(stage.errorLog.countText()->text(),
             text("1 item was not overwritten or is still there"));
}

// Run

void MainVCRunTest::startTakesFiveStepsInTheirOrder()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    stage.vc->fileFailedToWipe(QueueObject::create());
    QCOMPARE(stage.outlets.errorLogArrayController->count(), 1);

    QStringList steps;
    stage.whenAskedForTime = [&] {
        const bool isLogEmpty = stage.outlets.errorLogArrayController->count() == 0;
        steps.append(text("log %1, view %2, stamp %3, busy %4, timers %5")
                         .arg(isLogEmpty)
                         .arg(int(stage.vc->currentView()))
                         .arg(stage.stats().startTimeStamp())
                         .arg(stage.vc->wipeController()->isBusy())
                         .arg(stage.vc->bpsTimer().isActive()));
    };
    stage.vc->btnStartClicked();
    stage.whenAskedForTime = {};
    QCOMPARE(steps, QStringList({text("log 1, view 3, stamp 0, busy 0, timers 0"),
                                 text("log 1, view 3, stamp 1000000, busy 1, timers 1")}));
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
}

void MainVCRunTest::theTimersTickOnceAndTwiceASecond()
{
    Stage stage;
    stage.vc->startTimers();
    QCOMPARE(stage.vc->bpsTimer().interval(), 1000);
    QCOMPARE(stage.vc->bpsTimer().timerType(), Qt::PreciseTimer);
    QCOMPARE(stage.vc->objectTimer().interval(), 500);
    QVERIFY(stage.vc->bpsTimer().isActive() && stage.vc->objectTimer().isActive());
    stage.vc->stopTimers();
    QVERIFY(!stage.vc->bpsTimer().isActive() && !stage.vc->objectTimer().isActive());
}

void MainVCRunTest::theFirstTickComesAtTheStart()
{
    Stage stage;
    stage.stats().setTotalBytes(100);
    stage.vc->startTimers();
    QCOMPARE(stage.vc->run().throughput().bpsCheckPointValue(), 100.0);
    QVERIFY(stage.vc->run().throughput().bpsHistoryArray().empty());
    QVERIFY(std::isinf(stage.stats().timeRemaining()));
    QCOMPARE(stage.outlets.viewErasingFiles->remaining()->text(), text("--"));
    QCOMPARE(stage.outlets.viewErasingFiles->throughput()->value(), text("0 Bytes/s"));
}

void MainVCRunTest::aWholeRunErasesAndSaysSo()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("top");
    const QByteArray inside = scratch.file("top/a", 1000);
    const QByteArray beside = scratch.file("beside", "untouched");
    const QByteArray single = scratch.file("single", 500);
    Stage stage;
    QVERIFY(stage.scan({folder, single}));
    stage.vc->btnStartClicked();
    stage.now += 185;
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);

    QVERIFY(!Scratch::exists(folder));
    QVERIFY(!Scratch::exists(single));
    QCOMPARE(Scratch::content(beside), QByteArray("untouched"));
    const FinishedView &view = *stage.outlets.viewFinished;
    QCOMPARE(view.result()->text(), text("1.50 KB in 2 files"));
    QCOMPARE(view.method()->value(), text("1-Pass Zero"));
    QCOMPARE(view.elapsed()->value(), text("about 3 minutes"));
    QCOMPARE(view.failed()->value(), text("0"));
    QVERIFY(view.failureBand()->isHidden());
    QVERIFY(stage.heard.contains(text("Finished. 1.50 KB in 2 files. 0 failed.")));
}

void MainVCRunTest::theEndTakesEightStepsInTheirOrder()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("top");
    QVERIFY(!scratch.file("top/a", 10).isEmpty());
    Stage stage;
    QVERIFY(stage.scan({folder}));
    stage.vc->btnStartClicked();
    QStringList steps;
    const auto note = [&](const char *when) {
        steps.append(text("%1: wiped '%2', folder %3, view %4, queue %5, timers %6")
                         .arg(text(when), stage.stats().wipedFilesString())
                         .arg(Scratch::exists(folder))
                         .arg(int(stage.vc->currentView()))
                         .arg(stage.vc->queueArray()->count())
                         .arg(stage.vc->bpsTimer().isActive()));
    };
    // Only the last time that the workflow asks for is that of the end.
    stage.whenAskedForTime = [&] {
        steps.clear();
        note("time");
    };
    stage.whenMessageComes = [&] { note("message"); };
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
    QCOMPARE(steps,
             QStringList({text("time: wiped '', folder 1, view 3, queue 1, timers 1"),
                          text("message: wiped '10 Bytes in 1 files', folder 0, view 4, queue 0, "
                               "timers 0")}));
}

void MainVCRunTest::afterARunEverythingBeginsAtZero()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("top");
    QVERIFY(!scratch.file("top/a", 10).isEmpty());
    Stage stage;
    QVERIFY(stage.scan({folder}));
    QVERIFY(stage.run());
    Stage::settle();

    QVERIFY(stage.vc->queueArray()->isEmpty());
    QVERIFY(stage.vc->folderUrlsToDeleteDict().empty());
    QVERIFY(stage.vc->run().throughput().bpsHistoryArray().empty());
    QCOMPARE(stage.vc->run().throughput().bpsCheckPointValue(), 0.0);
    const QueueStatsObject &stats = stage.stats();
    QCOMPARE(stats.totalBytes() + stats.totalBytesRemaining() + stats.totalBytesWiped() +
                 stats.bytesWritten() + stats.maxValue() + stats.doubleValue(),
             0.0);
    QCOMPARE(stats.totalFilesRemaining() + stats.totalFilesWiped() + stats.filesFailed(), 0);
    QCOMPARE(stats.wipedFilesString(), text("10 Bytes in 1 files"));
    QVERIFY(!stage.vc->isBusyWiping());
    QVERIFY(!stage.vc->objectTimer().isActive());
    QCOMPARE(stage.outlets.viewErasingFiles->table()->model(), nullptr);
    QCOMPARE(stage.outlets.viewPressStart->table()->model()->rowCount(), 0);
}

void MainVCRunTest::aSecondRunStartsFromZero()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 10)}));
    QVERIFY(stage.run());
    stage.vc->showViewDragDrop();
    QVERIFY(stage.scan({scratch.file("b", 7)}));
    QCOMPARE(stage.stats().totalBytes(), 7.0);
    QVERIFY(stage.run());
    QCOMPARE(stage.outlets.viewFinished->result()->text(), text("7 Bytes in 1 files"));
    QVERIFY(!Scratch::exists(scratch.path("b")));
    QCOMPARE(stage.messages.size(), std::size_t(2));
}

void MainVCRunTest::aFailedFileIsCountedAndLogged()
{
    const Scratch scratch;
    const QByteArray gone = scratch.file("gone", 10);
    const QByteArray there = scratch.file("there", 5);
    Stage stage;
    QVERIFY(stage.scan({gone, there}));
    QVERIFY(QFile::remove(QFile::decodeName(gone)));
    QVERIFY(stage.run());

    QVERIFY(!Scratch::exists(there));
    QCOMPARE(errorRows(stage).size(), 1);
    QVERIFY(errorRows(stage).first().startsWith(text("gone|")));
    QVERIFY(errorRows(stage).first().endsWith(text("|No such file or directory")));
    QVERIFY(stage.vc->showBtnErrorWindow());
    const FinishedView &view = *stage.outlets.viewFinished;
    QCOMPARE(view.result()->text(), text("5 Bytes in 1 files"));
    QCOMPARE(view.failed()->value(), text("1"));
    QCOMPARE(view.failureBand()->cautions(), QStringList(text("1 file could not be erased.")));
    QVERIFY(!view.errorLogButton()->isHidden());
    QCOMPARE(stage.stats().filesFailed(), 0);
    QCOMPARE(stage.window.header()->btnErrorLog()->badgeText(), text("1"));
    QVERIFY(stage.heard.contains(text("Finished. 5 Bytes in 1 files. 1 failed.")));
    QCOMPARE(view.failureBand()->accessibleName(), text("1 file could not be erased."));
    QCOMPARE(stage.errorLog.countText()->text(), text("1 file could not be erased"));
}

void MainVCRunTest::theErrorLogIsEmptiedAtTheNextStart()
{
    const Scratch scratch;
    const QByteArray gone = scratch.file("gone", 10);
    Stage stage;
    QVERIFY(stage.scan({gone}));
    QVERIFY(QFile::remove(QFile::decodeName(gone)));
    QVERIFY(stage.run());
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    // Failed items outlive the queue.
    QCOMPARE(errorRows(stage).size(), 1);
    QVERIFY(stage.run());
    QVERIFY(errorRows(stage).isEmpty());
    QVERIFY(!stage.vc->showBtnErrorWindow());
    QVERIFY(stage.outlets.viewFinished->failureBand()->isHidden());
    QVERIFY(stage.window.header()->btnErrorLog()->isHidden());
}

void MainVCRunTest::aHiddenFileThatWentWithItsFolderStandsInTheErrorLog()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("top");
    Stage stage;
    QVERIFY(stage.scan({folder}));
    QVERIFY(!scratch.file("top/.came later", "x").isEmpty());
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(folder));
    QCOMPARE(errorRows(stage).size(), 1);
    QVERIFY(errorRows(stage).first().startsWith(text(".came later|")));
    QVERIFY(errorRows(stage).first().contains(text("removed with its folder, not overwritten")));
    QVERIFY(!stage.window.header()->btnErrorLog()->isHidden());
}

void MainVCRunTest::filesAddedDuringARunAreErasedInIt()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 10);
    const QByteArray second = scratch.file("second", 20);
    Gate gate("first");
    const SystemCalls::Replacement replacement(gate);
    Stage stage;
    QVERIFY(stage.scan({first}));
    stage.vc->btnStartClicked();
    QTRY_VERIFY(gate.isReached());

    QVERIFY(stage.scan({second}));
    QCOMPARE(stage.vc->currentView(), V::Erasing);
    QVERIFY(stage.vc->isBusyWiping());
    QCOMPARE(stage.stats().totalBytes(), 30.0);
    QCOMPARE(stage.stats().totalFilesRemaining(), 2);
    QCOMPARE(stage.outlets.viewErasingFiles->table()->model()->rowCount(), 2);
    stage.vc->btnPreferencesClicked();
    QCOMPARE(stage.vc->currentView(), V::Erasing);

    gate.open();
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
    QVERIFY(!Scratch::exists(second));
    QCOMPARE(stage.outlets.viewFinished->result()->text(), text("30 Bytes in 2 files"));
}

void MainVCRunTest::aReportBetweenTheLastFileAndTheEndIsNotLost()
{
    const Scratch scratch;
    const QByteArray late = scratch.file("late", 20);
    Stage stage;
    QVERIFY(stage.scan({}));
    // With nothing queued the end is on its way at once.
    stage.vc->btnStartClicked();
    ScanReport report;
    report.files = FileUtils().readFilesFromPath(late).files;
    for (const QueueArray::Item &item : report.files)
        item->setQueueStatsObject(stage.vc->queueStatsObject());
    stage.vc->newObjectsForQueue(std::move(report));
    QCOMPARE(stage.vc->currentView(), V::Erasing);
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
    QVERIFY(!Scratch::exists(late));
    QCOMPARE(stage.outlets.viewFinished->result()->text(), text("20 Bytes in 1 files"));
    QCOMPARE(stage.messages.size(), std::size_t(1));
}

void MainVCRunTest::aMethodOutsideTheCatalogueFailsEveryFileUntouched()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("a", "content");
    Stage stage(42);
    QVERIFY(stage.scan({file}));
    QCOMPARE(stage.outlets.viewPressStart->workText()->text(), text("Nothing to write"));
    QVERIFY(stage.run());
    QCOMPARE(Scratch::content(file), QByteArray("content"));
    QCOMPARE(stage.outlets.viewFinished->failed()->value(), text("1"));
}

void MainVCRunTest::anotherMethodCountsForTheNextFile()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 10);
    const QByteArray second = scratch.file("second", 10);
    Gate gate("first");
    const SystemCalls::Replacement replacement(gate);
    Stage stage(4);
    QVERIFY(stage.scan({first, second}));
    const QueueArray::Items items = stage.vc->queueArray()->items();
    stage.vc->btnStartClicked();
    QTRY_VERIFY(gate.isReached());
    UserDefaults::standard().setValue(text("WipeMethod"), 1);
    stage.vc->wipeSelectorClicked();
    gate.open();
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
    QCOMPARE(items[0]->wipe_method(), 4);
    QCOMPARE(items[1]->wipe_method(), 1);
}

void MainVCRunTest::targetsOfLinksAreLeftAloneWhereWanted()
{
    const Scratch scratch;
    const QByteArray target = scratch.file("target", "content");
    const QByteArray link = scratch.link("link", target);
    Stage stage;
    UserDefaults::standard().setValue(text("skipLinkTargets"), true);
    QVERIFY(stage.scan({link}));
    // Nothing will be written for it.
    QCOMPARE(stage.stats().totalBytes(), 0.0);
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(link));
    QCOMPARE(Scratch::content(target), QByteArray("content"));
}

void MainVCRunTest::theErasingViewFollowsTheRun()
{
    const Scratch scratch;
    const QByteArray done = scratch.file("done", 3000);
    const QByteArray inWork = scratch.file("in work", 1000);
    Gate gate("in work");
    const SystemCalls::Replacement replacement(gate);
    Stage stage(4);
    QVERIFY(stage.scan({done, inWork}));
    stage.vc->btnStartClicked();
    QTRY_VERIFY(gate.isReached());
    stage.now += 65;
    stage.vc->updateBPSValue();
    stage.vc->updateObjectProgressBar();

    const ErasingView &view = *stage.outlets.viewErasingFiles;
    QCOMPARE(view.percent()->text(), text("100 %"));
    QCOMPARE(view.amount()->text(), text("4.00 KB of 4.00 KB"));
    QCOMPARE(view.elapsed()->value(), text("about 1 minutes"));
    QCOMPARE(view.wiped()->value(), text("1"));
    QCOMPARE(view.failed()->value(), text("0"));
    QCOMPARE(view.methodText()->text(), text("3-Pass DoD 5220.22-M (E)"));
    QCOMPARE(view.passText()->text(), text("Pass 3 of 3"));
    const auto *rows = qobject_cast<const QueueTableModel *>(view.table()->model());
    QCOMPARE(rows->rowInWork(), 1);
    gate.open();
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
}

void MainVCRunTest::anEmptyRunEndsAtOnce()
{
    Stage stage;
    QVERIFY(stage.scan({}));
    QVERIFY(stage.run());
    QCOMPARE(stage.outlets.viewFinished->result()->text(), text("0 Bytes in 0 files"));
}

void MainVCRunTest::aScanThatOutlivesTheRunReportsIntoTheFinishedView()
{
    const Scratch scratch;
    const QByteArray erased = scratch.file("erased", 10);
    const QByteArray late = scratch.file("late", 20);
    HeldScan scan(late);
    const SystemCalls::Replacement replacement(scan);
    Stage stage;
    QVERIFY(stage.scan({erased}));
    stage.vc->btnStartClicked();
    Stage::drop({late});
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
    QTRY_VERIFY(scan.isReached());
    QVERIFY(stage.vc->isScanningFiles());
    QVERIFY(stage.vc->queueArray()->isEmpty());
    QCOMPARE(stage.outlets.viewFinished->result()->text(), text("10 Bytes in 1 files"));

    scan.goOn();
    QTRY_COMPARE(stage.vc->currentView(), V::Ready);
    QCOMPARE(stage.side(), PushTransition::Subtype::FromLeft);
    QVERIFY(!stage.vc->isBusyWiping());
    QVERIFY(!stage.vc->isScanningFiles());
    // Nothing of the run before is left in what waits now, and none of that has begun.
    QCOMPARE(queued(stage), QByteArrayList({late}));
    QCOMPARE(stage.outlets.viewPressStart->countText()->text(), text("1 file"));
    QCOMPARE(stage.stats().totalFilesRemaining(), 1);
    QCOMPARE(stage.stats().totalBytes(), 20.0);
    QVERIFY(Scratch::exists(late));
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(late));
}

void MainVCRunTest::emptyingTheListTwiceKeepsItsSelection()
{
    Stage stage;
    const QueueTable &table = *stage.outlets.viewPressStart->table();
    const QPointer<QItemSelectionModel> selection = table.selectionModel();
    stage.vc->resetWipeValues();
    QVERIFY(selection);
    QCOMPARE(table.selectionModel(), selection);
}

// Progress

void MainVCRunTest::theItemsBarFollowsItsBytes()
{
    const Scratch scratch;
    Gate gate("a");
    const SystemCalls::Replacement replacement(gate);
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 100)}));
    stage.vc->btnStartClicked();
    QTRY_VERIFY(gate.isReached());
    const QueueArray::Item item = stage.vc->wipeController()->currentObject();
    item->setDoubleValue(0);
    stage.vc->updateObjectProgressBar();
    QCOMPARE(item->doubleValue(), 100.0);
    gate.open();
    QTRY_COMPARE(stage.vc->currentView(), V::Finished);
}

void MainVCRunTest::theThroughputIsMeasuredOnceASecond()
{
    Stage stage;
    QueueStatsObject &stats = stage.stats();
    stats.setTotalBytes(1000);
    stage.vc->updateBPSValue();
    for (const double written : {100.0, 100.0, 500.0}) {
        stats.setBytesWritten(written);
        stage.vc->updateBPSValue();
    }
    QCOMPARE(stage.vc->run().throughput().bpsHistoryArray(), std::vector<double>({100, 0, 400}));
    QCOMPARE(stats.totalBytesRemaining(), 500.0);
    QCOMPARE(stats.timeRemaining(), 500.0 / (500.0 / 3));
    QCOMPARE(stats.doubleValue(), 500.0);
    stage.vc->updateObjectProgressBar();
    QCOMPARE(stage.outlets.viewErasingFiles->throughput()->value(), text("166 Bytes/s"));

    stats.setBytesWritten(1200);
    stage.vc->updateBPSValue();
    QCOMPARE(stats.totalBytesRemaining(), 0.0);
    QCOMPARE(stage.vc->run().throughput().bpsHistoryArray().back(), 700.0);
    stats.setDoubleValue(0);
    stage.vc->updateProgressBar();
    QCOMPARE(stats.doubleValue(), 1200.0);
}

void MainVCRunTest::itemsAddedSilenceOneTick()
{
    Stage stage;
    QueueStatsObject &stats = stage.stats();
    stats.setTotalBytes(1000);
    stage.vc->updateBPSValue();
    stats.setBytesWritten(100);
    stage.vc->updateBPSValue();
    stats.setTotalBytes(5000);
    stage.vc->updateBPSValue();
    stage.vc->updateObjectProgressBar();
    QCOMPARE(stage.outlets.viewErasingFiles->throughput()->value(), text("0 Bytes/s"));
    QCOMPARE(stage.vc->run().throughput().bpsHistoryArray().size(), std::size_t(1));
    stats.setBytesWritten(400);
    stage.vc->updateBPSValue();
    QCOMPARE(stage.vc->run().throughput().bpsHistoryArray().back(), 300.0);
}

// After the run

void MainVCRunTest::theUserIsToldOfTheEnd()
{
    Stage stage;
    QVERIFY(stage.scan({}));
    QVERIFY(stage.run());
    QCOMPARE(stage.messages.size(), std::size_t(1));
    QCOMPARE(stage.messages[0].title, text("Vantorel Finished"));
    QCOMPARE(stage.messages[0].infoText, text("Wiping done."));
}

namespace {

/// Runs over one file with the preference to quit then.
void runAndWantToQuit(Stage &stage, const QByteArray &file)
{
    UserDefaults::standard().setValue(text("AutoExit"), true);
    QVERIFY(stage.scan({file}));
    QVERIFY(stage.run());
    QCOMPARE(stage.messages.size(), std::size_t(1));
}

} // namespace

void MainVCRunTest::quitsAfterARunWhereWanted()
{
    const Scratch scratch;
    Stage stage;
    runAndWantToQuit(stage, scratch.file("a", 1));
    // Not before the notification is out.
    QCOMPARE(stage.terminations, 0);
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 1);
}

void MainVCRunTest::staysWhereItIsNotWanted()
{
    const Scratch scratch;
    Stage stage;
    QVERIFY(stage.scan({scratch.file("a", 1)}));
    QVERIFY(stage.run());
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);
}

void MainVCRunTest::staysWhileAFailureWaits()
{
    const Scratch scratch;
    const QByteArray gone = scratch.file("gone", 10);
    Stage stage;
    UserDefaults::standard().setValue(text("AutoExit"), true);
    QVERIFY(stage.scan({gone}));
    QVERIFY(QFile::remove(QFile::decodeName(gone)));
    QVERIFY(stage.run());
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);
}

void MainVCRunTest::staysWhileADialogIsOpen()
{
    const Scratch scratch;
    Stage stage;
    runAndWantToQuit(stage, scratch.file("a", 1));
    stage.isDialogOpen = true;
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);
}

void MainVCRunTest::staysWhileAScanGoesOn()
{
    const Scratch scratch;
    Stage stage;
    runAndWantToQuit(stage, scratch.file("a", 1));
    Stage::drop({});
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);
    QTRY_VERIFY(!stage.vc->isScanningFiles());
}

/// That it did not quit is no end: what the scan brings waits for Start, and the next run may quit.
void MainVCRunTest::aReportAfterItStayedStartsAnew()
{
    const Scratch scratch;
    const QByteArray late = scratch.file("late", 20);
    HeldScan scan(late);
    const SystemCalls::Replacement replacement(scan);
    Stage stage;
    runAndWantToQuit(stage, scratch.file("a", 1));
    Stage::drop({late});
    QTRY_VERIFY(scan.isReached());
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);

    scan.goOn();
    QTRY_COMPARE(stage.vc->currentView(), V::Ready);
    Stage::settle();
    QCOMPARE(stage.terminations, 0);
    QCOMPARE(queued(stage), QByteArrayList({late}));
    QVERIFY(stage.run());
    QVERIFY(!Scratch::exists(late));
    QCOMPARE(stage.messages.size(), std::size_t(2));
    stage.messages[1].done();
    QCOMPARE(stage.terminations, 1);
}

void MainVCRunTest::staysWhileFilesWait()
{
    const Scratch scratch;
    Stage stage;
    runAndWantToQuit(stage, scratch.file("a", 1));
    QVERIFY(stage.scan({scratch.file("b", 1)}));
    stage.messages[0].done();
    QCOMPARE(stage.terminations, 0);
}

// Error log

void MainVCRunTest::theFileIsShownInItsFolder()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 10);
    const QByteArray second = scratch.file("second", 10);
    Stage stage;
    QVERIFY(stage.scan({first, second}));
    QVERIFY(QFile::remove(QFile::decodeName(first)));
    QVERIFY(QFile::remove(QFile::decodeName(second)));
    QVERIFY(stage.run());
    stage.errorLog.table()->selectAll();
    QCOMPARE(stage.vc->getSelectedObjects().size(), std::size_t(2));
    stage.vc->revealInFinderlicked();
    QCOMPARE(stage.revealed.size(), std::size_t(1));
    QCOMPARE(stage.revealed[0], std::vector<FileUrl>({FileUrl(first)}));

    QTest::ignoreMessage(QtWarningMsg, "-[MainVC revealInFinder:]: no file manager");
    stage.revealFailed(text("no file manager"));
}

void MainVCRunTest::nothingSelectedShowsNothing()
{
    Stage stage;
    stage.vc->revealInFinderlicked();
    stage.vc->revealInFinder(nullptr);
    QVERIFY(stage.revealed.empty());
}

QTEST_MAIN(MainVCRunTest)
#include "MainVCRunTest.moc"
