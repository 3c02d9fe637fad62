#include "app/run/EraseRun.h"

#include "app/run/Gate.h"
#include "app/run/Items.h"
#include "engine/WipeController.h"
#include "kit/Scratch.h"
#include "platform/ScriptedSystemCalls.h"
#include "scan/FolderScannerController.h"

#include <QTest>

#include <atomic>
#include <cmath>
#include <memory>
#include <semaphore>

namespace {

constexpr std::int64_t zeros = 1; ///< the method of one pass

/// The least that joins scanner, run and wipe controller: what a window or a terminal does, without
/// either.
class Conductor final : public FolderScannerControllerDelegate,
                        public WipeControllerDelegate,
                        public std::enable_shared_from_this<Conductor>
{
  public:
    static std::shared_ptr<Conductor> create()
    {
        auto conductor = std::make_shared<Conductor>();
        conductor->scanner->setDelegate(conductor);
        conductor->scanner->setQueueStatsObject(conductor->run.queueStatsObject());
        conductor->wiper->setDelegate(conductor);
        conductor->wiper->setQueueArray(conductor->run.queueArray());
        conductor->wiper->setWipeMethod(zeros);
        return conductor;
    }

    void scan(const std::vector<QByteArray> &paths)
    {
        scanner->scanAndMakeObjects({paths.begin(), paths.end()});
    }
    void start(std::int64_t now)
    {
        run.begin(now);
        wiper->startWiping();
    }

    [[nodiscard]] bool answers(FolderScannerControllerDelegate::Call call) const override
    {
        return call == FolderScannerControllerDelegate::Call::newObjectsForQueue;
    }
    void newObjectsForQueue(ScanReport report) override
    {
        ++reports;
        run.addObjectsFromArray(std::move(report.files));
        run.addFolderObjectsToQueueFromDict(std::move(report.folders));
    }
    [[nodiscard]] bool answers(WipeControllerDelegate::Call) const override { return true; }
    void fileFailedToWipe(const std::shared_ptr<QueueObject> &object) override
    {
        run.addFailure(object);
    }
    void finishedWiping() override
    {
        ++runs;
        if (whenFinished)
            whenFinished();
    }

    EraseRun run;
    std::shared_ptr<FolderScannerController> scanner = FolderScannerController::create();
    std::shared_ptr<WipeController> wiper = WipeController::create();
    std::function<void()> whenFinished;
    int reports = 0;
    int runs = 0;
};

QStringList strings(const EraseRun &run)
{
    const QueueStatsObject &stats = *run.queueStatsObject();
    return {stats.wipedFilesString(), stats.failedFilesString(), stats.timeElapsedString()};
}

} // namespace

class EraseRunTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void addedItemsAreQueuedInOrderAndCounted();
    void sizesThatCouldNotBeReadLowerTheTotal();
    void theSameFileTwiceIsQueuedOnce();
    void aFileAndItsFolderQueueItOnce();
    void aFileThatIsQueuedAlreadyLeavesTheTotals();
    void twoFilesWhosePathsDifferOnlyInCaseAreBothQueued();
    void aScanThatFindsNothingChangesNothing();
    void stoppingAScanQueuesWhatWasFoundSoFar();
    void foldersOfSeveralScansAreMerged();

    void theFirstTickHasNoThroughputAndInfiniteTimeRemaining();
    void laterTicksDeriveBytesAndTimeRemaining();
    void aTickWithoutProgressMakesTheTimeLonger();
    void itemsAddedDuringTheRunSilenceOneTick();
    void writtenBeyondTheTotalRemainsZeroAndIsStillMeasured();
    void whenNothingRemainsAtTheFirstTickTheTimeIsUndefined();
    void theOverallBarFollowsTheBytesWritten();

    void theStartIsStampedAndOldFailuresAreForgotten();
    void theResultStringsTellOfTheRun();

    void emptiedFoldersGoDeepestFirstAndAreCounted();
    void aFolderThatStillHoldsAVisibleFileStays();
    void aFailedHiddenFileThatGoesWithItsFolderIsNoted();
    void aHiddenFileThatWasNotQueuedIsNotedToo();
    void aFailedFileThatStaysIsNotNoted();
    void ofADroppedLinkToAFolderOnlyTheLinkGoes();

    void afterARunQueueCountersAndFoldersAreEmptyAndTheStringsStay();
    void theItemsOfAFinishedRunAreDestroyed();
    void whatWentWithAFolderIsKnownOfTheRun();
    void aWholeRunErasesCountsAndRemoves();
    void itemsAddedDuringARunGrowItsTotalsAndAreErased();
    void aSecondRunStartsFromZero();
};

void EraseRunTest::addedItemsAreQueuedInOrderAndCounted()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/b", 10), Items::at("/a", 20)});
    run.addObjectsFromArray({Items::at("/c", 5)});
    QCOMPARE(Items::paths(run.queueArray()->items()), QByteArrayList({"/b", "/a", "/c"}));
    QCOMPARE(run.queueStatsObject()->totalFilesRemaining(), std::int64_t(3));
    QCOMPARE(run.queueStatsObject()->totalBytes(), 35.0);
    QTRY_COMPARE(run.queueStatsObject()->maxValue(), 35.0);
}

void EraseRunTest::sizesThatCouldNotBeReadLowerTheTotal()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 10), Items::at("/b", -1)});
    QCOMPARE(run.queueStatsObject()->totalBytes(), 9.0);
    QCOMPARE(run.queueStatsObject()->totalFilesRemaining(), std::int64_t(2));
}

void EraseRunTest::theSameFileTwiceIsQueuedOnce()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("file", 100);
    const auto conductor = Conductor::create();
    conductor->scan({file, file});
    QTRY_COMPARE(conductor->reports, 1);
    QCOMPARE(Items::paths(conductor->run.queueArray()->items()), QByteArrayList({file}));
    QCOMPARE(conductor->run.queueStatsObject()->totalFilesRemaining(), std::int64_t(1));
    QCOMPARE(conductor->run.queueStatsObject()->totalBytes(), 100.0);
}

void EraseRunTest::aFileAndItsFolderQueueItOnce()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("folder");
    const QByteArray file = scratch.file("folder/file", 100);
    const auto conductor = Conductor::create();
    conductor->scan({file, folder});
    QTRY_COMPARE(conductor->reports, 1);
    QCOMPARE(Items::paths(conductor->run.queueArray()->items()), QByteArrayList({file}));
    QCOMPARE(conductor->run.queueStatsObject()->totalBytes(), 100.0);
    QVERIFY(conductor->run.folderUrlsToDeleteDict().contains(folder));
}

void EraseRunTest::aFileThatIsQueuedAlreadyLeavesTheTotals()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("file", 100);
    const auto conductor = Conductor::create();
    conductor->scan({file});
    QTRY_COMPARE(conductor->reports, 1);
    const QueueArray::Items before = conductor->run.queueArray()->items();
    QVERIFY(!scratch.file("file", 5000).isEmpty());
    conductor->scan({file});
    QTRY_COMPARE(conductor->reports, 2);
    QCOMPARE(conductor->run.queueArray()->items(), before);
    QCOMPARE(conductor->run.queueStatsObject()->totalFilesRemaining(), std::int64_t(1));
    QCOMPARE(conductor->run.queueStatsObject()->totalBytes(), 100.0);
}

void EraseRunTest::twoFilesWhosePathsDifferOnlyInCaseAreBothQueued()
{
    const Scratch scratch;
    const QByteArray lower = scratch.file("file", 1);
    const QByteArray upper = scratch.file("FILE", 2);
    const auto conductor = Conductor::create();
    conductor->scan({lower, upper});
    QTRY_COMPARE(conductor->reports, 1);
    QCOMPARE(Items::paths(conductor->run.queueArray()->items()), QByteArrayList({lower, upper}));
}

void EraseRunTest::aScanThatFindsNothingChangesNothing()
{
    const auto conductor = Conductor::create();
    conductor->scan({});
    QTRY_COMPARE(conductor->reports, 1);
    QVERIFY(conductor->run.queueArray()->isEmpty());
    QVERIFY(conductor->run.folderUrlsToDeleteDict().empty());
    QCOMPARE(conductor->run.queueStatsObject()->totalFilesRemaining(), std::int64_t(0));
}

void EraseRunTest::stoppingAScanQueuesWhatWasFoundSoFar()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 100);
    const QByteArray second = scratch.file("second", 100);
    std::atomic<bool> isReached = false;
    std::binary_semaphore mayGoOn(0);
    ScriptedSystemCalls calls;
    calls.beforeStatusAt = [&](const QByteArray &path) {
        if (path == first && !isReached.exchange(true))
            mayGoOn.acquire();
    };
    const SystemCalls::Replacement replacement(calls);
    const auto conductor = Conductor::create();
    conductor->scan({first, second});
    QTRY_VERIFY(isReached);
    conductor->scanner->cancelScan();
    mayGoOn.release();
    QTRY_COMPARE(conductor->reports, 1);
    QCOMPARE(Items::paths(conductor->run.queueArray()->items()), QByteArrayList({first}));
    QCOMPARE(conductor->run.queueStatsObject()->totalBytes(), 100.0);
}

void EraseRunTest::foldersOfSeveralScansAreMerged()
{
    EraseRun run;
    FolderMap first;
    first["/a"].givenLength = 1;
    first["/b"].givenLength = 1;
    FolderMap second;
    second["/b"].givenLength = 2;
    second["/c"].givenLength = 2;
    run.addFolderObjectsToQueueFromDict(first);
    run.addFolderObjectsToQueueFromDict(second);
    QCOMPARE(run.folderUrlsToDeleteDict().size(), std::size_t(3));
    QCOMPARE(run.folderUrlsToDeleteDict().at("/a").givenLength, 1);
    QCOMPARE(run.folderUrlsToDeleteDict().at("/b").givenLength, 2);
}

void EraseRunTest::theFirstTickHasNoThroughputAndInfiniteTimeRemaining()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 1000)});
    QCOMPARE(run.updateBPSValue(), 0.0);
    QCOMPARE(run.queueStatsObject()->totalBytesRemaining(), 1000.0);
    QVERIFY(std::isinf(run.queueStatsObject()->timeRemaining()));
    QVERIFY(run.queueStatsObject()->timeRemaining() > 0);
}

void EraseRunTest::laterTicksDeriveBytesAndTimeRemaining()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 1000)});
    run.updateBPSValue();
    run.queueStatsObject()->setBytesWritten(100);
    QCOMPARE(run.updateBPSValue(), 100.0);
    QCOMPARE(run.queueStatsObject()->totalBytesRemaining(), 900.0);
    QCOMPARE(run.queueStatsObject()->timeRemaining(), 9.0);
    run.queueStatsObject()->setBytesWritten(400);
    QCOMPARE(run.updateBPSValue(), 200.0);
    QCOMPARE(run.queueStatsObject()->timeRemaining(), 3.0);
}

void EraseRunTest::aTickWithoutProgressMakesTheTimeLonger()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 1000)});
    run.updateBPSValue();
    run.queueStatsObject()->setBytesWritten(100);
    run.updateBPSValue();
    QCOMPARE(run.updateBPSValue(), 50.0);
    QCOMPARE(run.queueStatsObject()->timeRemaining(), 18.0);
}

void EraseRunTest::itemsAddedDuringTheRunSilenceOneTick()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 1000)});
    run.updateBPSValue();
    run.queueStatsObject()->setBytesWritten(100);
    run.updateBPSValue();
    run.addObjectsFromArray({Items::at("/b", 5000)});
    run.queueStatsObject()->setBytesWritten(200);
    QCOMPARE(run.updateBPSValue(), 0.0);
    QCOMPARE(run.queueStatsObject()->totalBytesRemaining(), 5800.0);
    QVERIFY(std::isinf(run.queueStatsObject()->timeRemaining()));
    QCOMPARE(run.throughput().bpsHistoryArray(), std::vector<double>({100}));
    run.queueStatsObject()->setBytesWritten(500);
    QCOMPARE(run.updateBPSValue(), (100.0 + 300.0) / 2);
}

void EraseRunTest::writtenBeyondTheTotalRemainsZeroAndIsStillMeasured()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 1000)});
    run.updateBPSValue();
    run.queueStatsObject()->setBytesWritten(1200);
    QCOMPARE(run.updateBPSValue(), 1200.0);
    QCOMPARE(run.queueStatsObject()->totalBytesRemaining(), 0.0);
    QCOMPARE(run.queueStatsObject()->timeRemaining(), 0.0);
    run.queueStatsObject()->setBytesWritten(1400);
    QCOMPARE(run.updateBPSValue(), 700.0);
    QCOMPARE(run.queueStatsObject()->totalBytesRemaining(), 0.0);
}

void EraseRunTest::whenNothingRemainsAtTheFirstTickTheTimeIsUndefined()
{
    EraseRun run;
    QCOMPARE(run.updateBPSValue(), 0.0);
    QVERIFY(std::isnan(run.queueStatsObject()->timeRemaining()));
}

void EraseRunTest::theOverallBarFollowsTheBytesWritten()
{
    EraseRun run;
    run.addObjectsFromArray({Items::at("/a", 1000)});
    run.queueStatsObject()->setBytesWritten(250);
    run.updateProgressBar();
    QCOMPARE(run.queueStatsObject()->doubleValue(), 250.0);
    run.queueStatsObject()->setBytesWritten(500);
    run.updateBPSValue();
    QCOMPARE(run.queueStatsObject()->doubleValue(), 500.0);
}

void EraseRunTest::theStartIsStampedAndOldFailuresAreForgotten()
{
    EraseRun run;
    run.addFailure(Items::at("/a"));
    QCOMPARE(run.failedFiles().size(), std::size_t(1));
    QCOMPARE(run.failedFiles().front().path, "/a");
    QVERIFY(!run.failedFiles().front().removedWithFolder);
    run.begin(1234);
    QVERIFY(run.failedFiles().empty());
    QCOMPARE(run.queueStatsObject()->startTimeStamp(), std::int64_t(1234));
}

void EraseRunTest::theResultStringsTellOfTheRun()
{
    EraseRun run;
    run.begin(1000);
    run.queueStatsObject()->setTotalBytesWiped(1'540'000);
    run.queueStatsObject()->setTotalFilesWiped(12);
    run.queueStatsObject()->setFilesFailed(3);
    run.makeResultStrings(1042);
    QCOMPARE(strings(run), QStringList({QStringLiteral("1.54 MB in 12 files"), QStringLiteral("3"),
                                        QStringLiteral("42 seconds")}));
}

void EraseRunTest::emptiedFoldersGoDeepestFirstAndAreCounted()
{
    const Scratch scratch;
    FolderMap folders;
    for (const char *name : {"Top", "Top/b", "Top/B", "Top/b/c", "Top/B/d"})
        folders[scratch.folder(name)].givenLength = std::int32_t(scratch.path().size());
    EraseRun run;
    run.addFolderObjectsToQueueFromDict(folders);
    QCOMPARE(run.deleteFolders().removedFolders.size(), std::size_t(5));
    QVERIFY(!Scratch::exists(scratch.path("Top")));
    QVERIFY(run.folderUrlsToDeleteDict().empty());
    QVERIFY(run.failedFiles().empty());
    QCOMPARE(run.deleteFolders().removedFolders.size(), std::size_t(0));
}

void EraseRunTest::aFolderThatStillHoldsAVisibleFileStays()
{
    const Scratch scratch;
    FolderMap folders;
    for (const char *name : {"top", "top/kept", "top/empty"})
        folders[scratch.folder(name)].givenLength = std::int32_t(scratch.path().size());
    const QByteArray file = scratch.file("top/kept/file", "x");
    EraseRun run;
    run.addFolderObjectsToQueueFromDict(folders);
    const FolderSweep sweep = run.deleteFolders();
    QCOMPARE(sweep.removedFolders, std::vector<QByteArray>({scratch.path("top/empty")}));
    QCOMPARE(sweep.kept.size(), std::size_t(2));
    QCOMPARE(sweep.kept[0].path, scratch.path("top/kept"));
    QCOMPARE(sweep.kept[1].path, scratch.path("top"));
    QVERIFY(Scratch::exists(file));
    QVERIFY(!Scratch::exists(scratch.path("top/empty")));
    QVERIFY(run.folderUrlsToDeleteDict().empty());
}

void EraseRunTest::aFailedHiddenFileThatGoesWithItsFolderIsNoted()
{
    const Scratch scratch;
    FolderMap folders;
    folders[scratch.folder("top")].givenLength = std::int32_t(scratch.path().size());
    const QByteArray hidden = scratch.file("top/.hidden", "x");
    EraseRun run;
    run.begin(0);
    run.addFailure(Items::at("/somewhere/else"));
    run.addFailure(Items::at(hidden));
    run.addFolderObjectsToQueueFromDict(folders);
    QCOMPARE(run.deleteFolders().removedFolders.size(), std::size_t(1));
    QVERIFY(!Scratch::exists(hidden));
    QCOMPARE(run.failedFiles().size(), std::size_t(2));
    QVERIFY(!run.failedFiles()[0].removedWithFolder);
    QVERIFY(run.failedFiles()[1].removedWithFolder);
}

void EraseRunTest::aHiddenFileThatWasNotQueuedIsNotedToo()
{
    const Scratch scratch;
    FolderMap folders;
    folders[scratch.folder("top")].givenLength = std::int32_t(scratch.path().size());
    const QByteArray hidden = scratch.file("top/.came later", "x");
    EraseRun run;
    run.addFolderObjectsToQueueFromDict(folders);
    run.deleteFolders();
    QCOMPARE(run.failedFiles().size(), std::size_t(1));
    QVERIFY(!run.failedFiles().front().item);
    QCOMPARE(run.failedFiles().front().path, hidden);
    QVERIFY(run.failedFiles().front().removedWithFolder);
}

void EraseRunTest::aFailedFileThatStaysIsNotNoted()
{
    const Scratch scratch;
    FolderMap folders;
    folders[scratch.folder("top")].givenLength = std::int32_t(scratch.path().size());
    const QByteArray visible = scratch.file("top/visible", "x");
    EraseRun run;
    run.addFailure(Items::at(visible));
    run.addFolderObjectsToQueueFromDict(folders);
    QCOMPARE(run.deleteFolders().removedFolders.size(), std::size_t(0));
    QVERIFY(Scratch::exists(visible));
    QCOMPARE(run.failedFiles().size(), std::size_t(1));
    QVERIFY(!run.failedFiles().front().removedWithFolder);
}

void EraseRunTest::ofADroppedLinkToAFolderOnlyTheLinkGoes()
{
    const Scratch scratch;
    const QByteArray target = scratch.folder("target");
    const QByteArray link = scratch.link("link", target);
    const auto conductor = Conductor::create();
    conductor->scan({link});
    QTRY_COMPARE(conductor->reports, 1);
    QCOMPARE(conductor->run.deleteFolders().removedFolders.size(), std::size_t(1));
    QVERIFY(!Scratch::exists(link));
    QVERIFY(Scratch::exists(target));
}

void EraseRunTest::afterARunQueueCountersAndFoldersAreEmptyAndTheStringsStay()
{
    EraseRun run;
    QueueStatsObject &stats = *run.queueStatsObject();
    run.addObjectsFromArray({Items::at("/a", 1000)});
    run.begin(5);
    run.addFailure(Items::at("/a"));
    run.updateBPSValue();
    stats.setBytesWritten(600);
    run.updateBPSValue();
    stats.setTotalBytesWiped(500);
    stats.setTotalFilesWiped(7);
    stats.setFilesFailed(8);
    run.makeResultStrings(10);
    QTRY_COMPARE(stats.maxValue(), 1000.0);
    const QStringList before = strings(run);
    run.addObjectsFromArray({Items::at("/b", 500)});
    run.resetWipeValues();

    QVERIFY(run.queueArray()->isEmpty());
    QVERIFY(run.throughput().bpsHistoryArray().empty());
    QCOMPARE(run.throughput().bpsCheckPointValue(), 0.0);
    for (const double value :
         {stats.totalBytes(), stats.totalBytesRemaining(), stats.totalBytesWiped(),
          stats.bytesWritten(), stats.maxValue(), stats.doubleValue()})
        QCOMPARE(value, 0.0);
    for (const std::int64_t count :
         {stats.totalFilesRemaining(), stats.totalFilesWiped(), stats.filesFailed()})
        QCOMPARE(count, std::int64_t(0));
    QCOMPARE(strings(run), before);
    QCOMPARE(before.size(), 3);
    QCOMPARE(before.at(1), QStringLiteral("8"));
    QCOMPARE(run.failedFiles().size(), std::size_t(1));

    // Changes of the total that were still on their way change nothing any more.
    QCoreApplication::processEvents();
    QCOMPARE(stats.maxValue(), 0.0);
}

void EraseRunTest::theItemsOfAFinishedRunAreDestroyed()
{
    EraseRun run;
    QueueArray::Item item = Items::at("/a");
    const std::weak_ptr<QueueObject> weak = item;
    QueueArray::Items items;
    items.push_back(std::move(item));
    run.addObjectsFromArray(std::move(items));
    run.resetWipeValues();
    QVERIFY(run.queueArray()->isEmpty());
    QTRY_VERIFY(weak.expired());
}

void EraseRunTest::whatWentWithAFolderIsKnownOfTheRun()
{
    const Scratch scratch;
    FolderMap folders;
    folders[scratch.folder("top")].givenLength = std::int32_t(scratch.path().size());
    QVERIFY(!scratch.file("top/.hidden", "x").isEmpty());
    EraseRun run;
    run.addFailure(Items::at("/a"));
    QVERIFY(!run.hasFilesRemovedWithFolder());
    run.addFolderObjectsToQueueFromDict(folders);
    run.deleteFolders();
    QVERIFY(run.hasFilesRemovedWithFolder());
    run.forgetFailures();
    QVERIFY(!run.hasFilesRemovedWithFolder());
}

void EraseRunTest::aWholeRunErasesCountsAndRemoves()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/inner"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"top/a", "top/inner/b", "top/inner/.c"})
        QVERIFY(!scratch.file(file, 5000).isEmpty());
    const auto conductor = Conductor::create();
    conductor->scan({scratch.path("top"), scratch.path("missing")});
    QTRY_COMPARE(conductor->reports, 1);
    QueueStatsObject &stats = *conductor->run.queueStatsObject();
    QCOMPARE(stats.totalFilesRemaining(), std::int64_t(4));
    QCOMPARE(stats.totalBytes(), 14999.0);

    conductor->start(100);
    QTRY_COMPARE(conductor->runs, 1);
    QCOMPARE(stats.totalFilesWiped(), std::int64_t(3));
    QCOMPARE(stats.totalBytesWiped(), 15000.0);
    QCOMPARE(stats.filesFailed(), std::int64_t(1));
    QCOMPARE(stats.totalFilesRemaining(), std::int64_t(0));
    QCOMPARE(conductor->run.failedFiles().size(), std::size_t(1));
    QCOMPARE(conductor->run.failedFiles().front().path, scratch.path("missing"));
    conductor->run.makeResultStrings(107);
    QCOMPARE(strings(conductor->run),
             QStringList({QStringLiteral("15.00 KB in 3 files"), QStringLiteral("1"),
                          QStringLiteral("7 seconds")}));
    QCOMPARE(conductor->run.deleteFolders().removedFolders.size(), std::size_t(2));
    QVERIFY(!Scratch::exists(scratch.path("top")));
}

void EraseRunTest::itemsAddedDuringARunGrowItsTotalsAndAreErased()
{
    const Scratch scratch;
    const QByteArray first = scratch.file("first", 1000);
    const QByteArray second = scratch.file("second", 3000);
    Gate gate("first");
    const SystemCalls::Replacement replacement(gate);
    const auto conductor = Conductor::create();
    conductor->scan({first});
    QTRY_COMPARE(conductor->reports, 1);
    conductor->start(0);
    QTRY_VERIFY(gate.isReached());
    conductor->scan({second, first});
    QTRY_COMPARE(conductor->reports, 2);
    QueueStatsObject &stats = *conductor->run.queueStatsObject();
    QCOMPARE(stats.totalFilesRemaining(), std::int64_t(2));
    QCOMPARE(stats.totalBytes(), 4000.0);
    QVERIFY(conductor->wiper->isBusy());
    gate.open();
    QTRY_COMPARE(conductor->runs, 1);
    QCOMPARE(stats.totalFilesWiped(), std::int64_t(2));
    QVERIFY(!Scratch::exists(first) && !Scratch::exists(second));
}

void EraseRunTest::aSecondRunStartsFromZero()
{
    const Scratch scratch;
    const auto conductor = Conductor::create();
    QueueStatsObject &stats = *conductor->run.queueStatsObject();
    conductor->whenFinished = [&conductor] {
        conductor->run.makeResultStrings(0);
        conductor->run.deleteFolders();
        conductor->run.resetWipeValues();
    };
    for (int number = 1; number <= 2; ++number) {
        const QByteArray folder = scratch.folder("folder");
        const QByteArray file = scratch.file("folder/file", 1000);
        conductor->scan({folder});
        QTRY_COMPARE(conductor->reports, number);
        QCOMPARE(stats.totalFilesRemaining(), std::int64_t(1));
        QCOMPARE(stats.totalBytes(), 1000.0);
        conductor->start(0);
        QTRY_COMPARE(conductor->runs, number);
        QVERIFY(!Scratch::exists(folder));
        QCOMPARE(stats.wipedFilesString(), QStringLiteral("1000 Bytes in 1 files"));
        QCOMPARE(stats.totalFilesWiped(), std::int64_t(0));
        QVERIFY(conductor->run.queueArray()->isEmpty());
        QVERIFY(conductor->run.folderUrlsToDeleteDict().empty());
        QVERIFY(!conductor->wiper->isBusy());
    }
}

QTEST_GUILESS_MAIN(EraseRunTest)
#include "EraseRunTest.moc"
