#include "scan/FolderScannerController.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "platform/BackgroundQueue.h"
#include "platform/MainThread.h"
#include "platform/ScriptedSystemCalls.h"
#include "scan/Reports.h"

#include <QTest>
#include <QThread>

#include <atomic>
#include <cerrno>
#include <functional>
#include <memory>
#include <semaphore>
#include <set>

namespace {

using Controller = FolderScannerController;

/// Keeps what it is told.
class RecordingDelegate final : public FolderScannerControllerDelegate
{
  public:
    [[nodiscard]] bool answers(Call call) const override
    {
        if (call == Call::newObjectsForQueue)
            ++timesAsked;
        return answered.contains(call);
    }
    void newObjectsForQueue(ScanReport report) override
    {
        told.append(QStringLiteral("report"));
        wasOnMainThread = wasOnMainThread && MainThread::isCurrent();
        reports.push_back(std::move(report));
        if (onReport)
            onReport();
    }
    void scanFailed(const ScanFailures &newFailures) override
    {
        told.append(QStringLiteral("failures"));
        wasOnMainThread = wasOnMainThread && MainThread::isCurrent();
        failures.insert(failures.end(), newFailures.begin(), newFailures.end());
    }

    std::set<Call> answered = {Call::newObjectsForQueue, Call::scanFailed};
    mutable int timesAsked = 0;
    std::function<void()> onReport;
    QStringList told;
    std::vector<ScanReport> reports;
    ScanFailures failures;
    bool wasOnMainThread = true;
};

/// Takes many turns, each on a worker and then on the main thread: what else was waiting there has
/// had its turn then.
void letOtherTasksRun()
{
    int turns = 0;
    std::function<void()> takeTurn = [&] {
        if (++turns < 50)
            BackgroundQueue::submit([&takeTurn] { MainThread::post(takeTurn); });
    };
    takeTurn();
    QTRY_COMPARE(turns, 50);
}

/// Holds the scan when it first looks at a path, until it may go on.
class Pause
{
  public:
    Pause(ScriptedSystemCalls &calls, const QByteArray &path)
    {
        calls.beforeStatusAt = [state = state_, path](const QByteArray &looked) {
            if (looked != path || state->isReached.exchange(true))
                return;
            state->mayGoOn.acquire();
        };
    }
    ~Pause() { goOn(); }
    Pause(const Pause &) = delete;
    Pause &operator=(const Pause &) = delete;

    [[nodiscard]] bool isReached() const { return state_->isReached; }
    void goOn()
    {
        if (!std::exchange(hasGoneOn_, true))
            state_->mayGoOn.release();
    }

  private:
    struct State
    {
        std::atomic<bool> isReached = false;
        std::binary_semaphore mayGoOn{0};
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
    bool hasGoneOn_ = false;
};

} // namespace

class FolderScannerControllerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void aFolderIsReportedWithItsOwnPathAlsoWhenItIsEmpty();
    void aPathWithAnySignsIsReportedAsItWasGiven();
    void pathsAndLocationsAreScannedAndAnythingElseIsIgnored();
    void allItemsAreReportedAtOnceInTheirOrder();
    void noItemsAreReportedAsNothing();
    void aMissingItemIsQueuedWithSizeMinusOne();
    void itemsReportIntoTheStatisticsOfTheController();

    void theWalkRunsOnAnotherThreadAndTheReportOnTheMainThread();
    void itIsBusyFromTheFirstItemToTheReport();
    void itemsGivenWhileAScanRunsAreReportedInTheSameSingleReport();
    void severalBatchesAreReportedInTheSameSingleReport();
    void theCountsAreDeliveredBeforeTheReport();
    void aSecondScanReportsOnlyItsOwn();

    void stoppingAfterTheFirstOfSeveralItemsReportsItAndDropsTheRest();
    void stoppingAfterTheFirstOfSeveralFoldersReportsItsFilesAndFolder();
    void stoppingInsideAWideFolderReportsWhatWasFound();
    void aWaitingBatchAfterAStopStillTakesItsFirstItem();
    void itemsGivenAfterAStopAreScannedWhole();
    void aStopOfNothingChangesNothing();

    void aDelegateThatDoesNotAnswerLeavesItBusyAndLaterItemsOnlyAccumulate();
    void withoutDelegateItStaysBusy();
    void aDelegateThatScansAgainFromInsideTheReportLosesNothing();
    void itMayBeGivenUpWhileItScans();

    void refusedItemsAreToldAndTheOthersGoOn();
    void unreadableFoldersAreToldBeforeTheReport();
    void failuresOfAllBatchesAreToldTogether();
    void aDelegateThatWantsNoFailuresGetsTheReport();
    void linksToLeaveAloneHaveSizeZero();
    void manyScansOneAfterTheOtherLoseNothing();

  private:
    /// A folder of so many files, each one byte.
    QByteArray makeFolder(const QByteArray &name, int files = 1);
    /// Gives the items to the controller.
    void scan(const std::vector<QByteArray> &paths);

    std::unique_ptr<Scratch> scratch_;
    std::unique_ptr<ScriptedSystemCalls> calls_;
    std::unique_ptr<SystemCalls::Replacement> replacement_;
    std::shared_ptr<QueueStatsObject> stats_;
    std::shared_ptr<RecordingDelegate> delegate_;
    std::shared_ptr<Controller> controller_;
};

void FolderScannerControllerTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    calls_ = std::make_unique<ScriptedSystemCalls>();
    replacement_ = std::make_unique<SystemCalls::Replacement>(*calls_);
    stats_ = QueueStatsObject::create();
    delegate_ = std::make_shared<RecordingDelegate>();
    controller_ = Controller::create();
    controller_->setDelegate(delegate_);
    controller_->setQueueStatsObject(stats_);
}

void FolderScannerControllerTest::cleanup()
{
    controller_.reset();
    replacement_.reset();
    calls_.reset();
    scratch_.reset();
}

QByteArray FolderScannerControllerTest::makeFolder(const QByteArray &name, int files)
{
    const QByteArray folder = scratch_->folder(name);
    for (int number = 0; number < files; ++number)
        scratch_->file(name + '/' + QByteArray::number(number), "x");
    return folder;
}

void FolderScannerControllerTest::scan(const std::vector<QByteArray> &paths)
{
    controller_->scanAndMakeObjects({paths.begin(), paths.end()});
}

void FolderScannerControllerTest::aFolderIsReportedWithItsOwnPathAlsoWhenItIsEmpty()
{
    const QByteArray folder = makeFolder("empty", 0);
    scan({folder});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({folder}));
    QVERIFY(delegate_->reports[0].files.empty());
}

void FolderScannerControllerTest::aPathWithAnySignsIsReportedAsItWasGiven()
{
    const QByteArray file = scratch_->file("a;b c \xc3\xa4\n%3B", "x");
    controller_->scanAndMakeObjects({ScanItem(file), ScanItem(FileUrl(file))});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({file, file}));
}

void FolderScannerControllerTest::pathsAndLocationsAreScannedAndAnythingElseIsIgnored()
{
    const QByteArray first = scratch_->file("first", "x");
    const QByteArray second = scratch_->file("second", "x");
    controller_->scanAndMakeObjects({ScanItem(), ScanItem(first), ScanItem(FileUrl()),
                                     ScanItem(FileUrl(second)), ScanItem(std::monostate())});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first, second}));
    QVERIFY(delegate_->failures.empty());
}

void FolderScannerControllerTest::allItemsAreReportedAtOnceInTheirOrder()
{
    const QByteArray z = scratch_->file("z", "x");
    const QByteArray folder = makeFolder("folder");
    const QByteArray a = scratch_->file("a", "x");
    scan({z, folder, a});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QByteArrayList paths;
    for (const QueueArray::Item &item : delegate_->reports[0].files)
        paths.append(item->fullpath());
    QCOMPARE(paths, QByteArrayList({z, folder + "/0", a}));
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({folder}));
}

void FolderScannerControllerTest::noItemsAreReportedAsNothing()
{
    scan({});
    QVERIFY(controller_->isBusy());
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QVERIFY(delegate_->reports[0].files.empty());
    QVERIFY(delegate_->reports[0].folders.empty());
    QCOMPARE(delegate_->told, QStringList({QStringLiteral("report")}));
    QVERIFY(!controller_->isBusy());
}

void FolderScannerControllerTest::aMissingItemIsQueuedWithSizeMinusOne()
{
    scan({scratch_->path("missing")});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(delegate_->reports[0].files.size(), std::size_t(1));
    QCOMPARE(delegate_->reports[0].files.front()->filesize(), -1.0);
    QVERIFY(delegate_->failures.empty());
}

void FolderScannerControllerTest::itemsReportIntoTheStatisticsOfTheController()
{
    scan({makeFolder("folder", 3)});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(delegate_->reports[0].files.size(), std::size_t(3));
    for (const QueueArray::Item &item : delegate_->reports[0].files)
        QCOMPARE(item->queueStatsObject().lock(), stats_);
}

void FolderScannerControllerTest::theWalkRunsOnAnotherThreadAndTheReportOnTheMainThread()
{
    std::atomic<bool> wasOnMainThread = false;
    calls_->beforeStatusAt = [&wasOnMainThread](const QByteArray &) {
        if (MainThread::isCurrent())
            wasOnMainThread = true;
    };
    const RecordedLog log;
    scan({makeFolder("folder", 3), "/"});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QVERIFY(!wasOnMainThread);
    QCOMPARE(delegate_->told.size(), 2);
    QVERIFY(delegate_->wasOnMainThread);
}

void FolderScannerControllerTest::itIsBusyFromTheFirstItemToTheReport()
{
    bool wasBusyInReport = true;
    delegate_->onReport = [&] { wasBusyInReport = controller_->isBusy(); };
    QVERIFY(!controller_->isBusy());
    scan({makeFolder("folder")});
    QVERIFY(controller_->isBusy());
    QVERIFY(delegate_->reports.empty());
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QVERIFY(!wasBusyInReport);
    QVERIFY(!controller_->isBusy());
}

void FolderScannerControllerTest::itemsGivenWhileAScanRunsAreReportedInTheSameSingleReport()
{
    const QByteArray first = makeFolder("first");
    const QByteArray second = makeFolder("second");
    Pause pause(*calls_, first);
    scan({first});
    QTRY_VERIFY(pause.isReached());
    scan({second});
    QVERIFY(controller_->isBusy());
    pause.goOn();
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first + "/0", second + "/0"}));
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({first, second}));
}

/// Each scan of an item has the main thread hand over the next one, and waits until it is there.
void FolderScannerControllerTest::severalBatchesAreReportedInTheSameSingleReport()
{
    QByteArrayList folders;
    for (const char *name : {"a", "b", "c", "d"})
        folders.append(makeFolder(name));
    int next = 1;
    calls_->beforeStatusAt = [&](const QByteArray &path) {
        MainThread::callAndWait([&] {
            if (next < folders.size() && path == folders.at(next - 1))
                scan({folders.at(next++)});
        });
    };
    scan({folders.at(0)});
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::folders(delegate_->reports[0]), folders);
}

void FolderScannerControllerTest::theCountsAreDeliveredBeforeTheReport()
{
    std::int64_t filesAtReport = -1;
    double bytesAtReport = -1;
    delegate_->onReport = [&] {
        filesAtReport = stats_->scanFoundFiles();
        bytesAtReport = stats_->scanFoundBytes();
    };
    const QByteArray wide = makeFolder("wide", 600);
    scan({wide, scratch_->file("file", 1000), makeFolder("small", 3)});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(filesAtReport, std::int64_t(604));
    QCOMPARE(bytesAtReport, 1603.0);
    QCOMPARE(delegate_->reports[0].files.size(), std::size_t(604));
}

void FolderScannerControllerTest::aSecondScanReportsOnlyItsOwn()
{
    const QByteArray first = makeFolder("first");
    const QByteArray second = makeFolder("second");
    scan({first});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    scan({second});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(2));
    QCOMPARE(Reports::files(delegate_->reports[1]), QByteArrayList({second + "/0"}));
    QCOMPARE(Reports::folders(delegate_->reports[1]), QByteArrayList({second}));
}

void FolderScannerControllerTest::stoppingAfterTheFirstOfSeveralItemsReportsItAndDropsTheRest()
{
    const QByteArray first = scratch_->file("first", "x");
    Pause pause(*calls_, first);
    scan({first, scratch_->file("second", "x"), makeFolder("third")});
    QTRY_VERIFY(pause.isReached());
    controller_->cancelScan();
    QVERIFY(controller_->shouldCancel());
    pause.goOn();
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first}));
    QVERIFY(delegate_->reports[0].folders.empty());
    QVERIFY(controller_->shouldCancel());
}

void FolderScannerControllerTest::stoppingAfterTheFirstOfSeveralFoldersReportsItsFilesAndFolder()
{
    const QByteArray first = makeFolder("first");
    // The only file is being looked at, so the folder is found whole.
    Pause pause(*calls_, "0");
    scan({first, makeFolder("second"), scratch_->file("third", "x")});
    QTRY_VERIFY(pause.isReached());
    controller_->cancelScan();
    pause.goOn();
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first + "/0"}));
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({first}));
}

void FolderScannerControllerTest::stoppingInsideAWideFolderReportsWhatWasFound()
{
    constexpr int files = 600;
    const QByteArray wide = makeFolder("wide", files);
    Pause pause(*calls_, "300");
    scan({wide, makeFolder("second")});
    QTRY_VERIFY(pause.isReached());
    controller_->cancelScan();
    pause.goOn();
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->reports.size(), std::size_t(1));
    // The file that was being looked at is the last one.
    const QueueArray::Items &found = delegate_->reports[0].files;
    QVERIFY(!found.empty() && found.size() <= files);
    QCOMPARE(found.back()->fullpath(), wide + "/300");
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({wide}));
    QCOMPARE(stats_->scanFoundFiles(), std::int64_t(found.size()));
}

void FolderScannerControllerTest::aWaitingBatchAfterAStopStillTakesItsFirstItem()
{
    const QByteArray first = scratch_->file("first", "x");
    const QByteArray waiting = scratch_->file("waiting", "x");
    Pause pause(*calls_, first);
    scan({first, scratch_->file("dropped", "x")});
    QTRY_VERIFY(pause.isReached());
    scan({waiting, scratch_->file("dropped, too", "x")});
    controller_->cancelScan();
    pause.goOn();
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first, waiting}));
}

void FolderScannerControllerTest::itemsGivenAfterAStopAreScannedWhole()
{
    controller_->cancelScan();
    const QByteArray folder = makeFolder("folder", 20);
    const QByteArray file = scratch_->file("file", "x");
    scan({folder, file});
    QVERIFY(!controller_->shouldCancel());
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(delegate_->reports[0].files.size(), std::size_t(21));
}

void FolderScannerControllerTest::aStopOfNothingChangesNothing()
{
    controller_->cancelScan();
    QVERIFY(!controller_->isBusy());
    QCoreApplication::processEvents();
    QVERIFY(delegate_->reports.empty());
}

void FolderScannerControllerTest::
    aDelegateThatDoesNotAnswerLeavesItBusyAndLaterItemsOnlyAccumulate()
{
    delegate_->answered = {FolderScannerControllerDelegate::Call::scanFailed};
    const RecordedLog log;
    const QByteArray first = makeFolder("first");
    scan({first, "/"});
    QTRY_COMPARE(delegate_->timesAsked, 1);
    QVERIFY(controller_->isBusy());
    QVERIFY(delegate_->told.isEmpty());

    // Not even a delegate that would answer hears of what is given now.
    delegate_->answered.insert(FolderScannerControllerDelegate::Call::newObjectsForQueue);
    std::atomic<bool> wasScanned = false;
    calls_->beforeStatusAt = [&wasScanned](const QByteArray &) { wasScanned = true; };
    const QByteArray second = makeFolder("second");
    scan({second});
    letOtherTasksRun();
    QVERIFY(!wasScanned);
    QVERIFY(controller_->isBusy());
    QVERIFY(delegate_->told.isEmpty());

    // They are there still: a batch that is started by hand takes them and ends in the report.
    controller_->startScan();
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first + "/0", second + "/0"}));
    QCOMPARE(Reports::paths(delegate_->failures), QByteArrayList({"/"}));
    QVERIFY(!controller_->isBusy());
}

void FolderScannerControllerTest::withoutDelegateItStaysBusy()
{
    const QByteArray first = makeFolder("first");
    Pause pause(*calls_, first);
    scan({first});
    QTRY_VERIFY(pause.isReached());
    delegate_.reset();
    pause.goOn();
    QTRY_COMPARE(stats_->scanFoundFiles(), std::int64_t(1));
    letOtherTasksRun();
    QVERIFY(controller_->isBusy());
}

void FolderScannerControllerTest::aDelegateThatScansAgainFromInsideTheReportLosesNothing()
{
    const QByteArray first = makeFolder("first", 3);
    const QByteArray second = makeFolder("second", 3);
    delegate_->onReport = [&] {
        if (delegate_->reports.size() == 1)
            scan({second});
    };
    scan({first});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(2));
    QCOMPARE(Reports::files(delegate_->reports[0]),
             QByteArrayList({first + "/0", first + "/1", first + "/2"}));
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({first}));
    QCOMPARE(Reports::files(delegate_->reports[1]),
             QByteArrayList({second + "/0", second + "/1", second + "/2"}));
    QCOMPARE(Reports::folders(delegate_->reports[1]), QByteArrayList({second}));
    QVERIFY(!controller_->isBusy());
}

/// Its owner lets go; what it had accepted is reported all the same.
void FolderScannerControllerTest::itMayBeGivenUpWhileItScans()
{
    const QByteArray first = makeFolder("first");
    const std::weak_ptr<Controller> watched = controller_;
    Pause pause(*calls_, first);
    scan({first});
    QTRY_VERIFY(pause.isReached());
    controller_.reset();
    pause.goOn();
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({first + "/0"}));
    QTRY_VERIFY(watched.expired());
}

void FolderScannerControllerTest::refusedItemsAreToldAndTheOthersGoOn()
{
    // Should one not be refused, it cannot be listed either.
    calls_->openErrors = {{"/", EACCES}, {"/proc", EACCES}, {"", EACCES}};
    const RecordedLog log;
    const QByteArray before = makeFolder("before");
    const QByteArray after = scratch_->file("after", "x");
    scan({before, "/", QByteArray(), "/proc", after});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(Reports::files(delegate_->reports[0]), QByteArrayList({after, before + "/0"}));
    QCOMPARE(Reports::folders(delegate_->reports[0]), QByteArrayList({before}));
    QCOMPARE(Reports::paths(delegate_->failures), QByteArrayList({"", "/", "/proc"}));
    for (const ScanFailure &failure : delegate_->failures) {
        QCOMPARE(failure.errornr, 0);
        QVERIFY(failure.errormsg.startsWith(QStringLiteral("Refused: ")));
    }
    QCOMPARE(log.lines().size(), 3);
}

void FolderScannerControllerTest::unreadableFoldersAreToldBeforeTheReport()
{
    QVERIFY(!makeFolder("top").isEmpty() && !makeFolder("top/closed").isEmpty());
    calls_->openErrors = {{"closed", EACCES}};
    const RecordedLog log;
    scan({scratch_->path("top")});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(delegate_->told, QStringList({QStringLiteral("failures"), QStringLiteral("report")}));
    QCOMPARE(Reports::paths(delegate_->failures), QByteArrayList({scratch_->path("top/closed")}));
    QCOMPARE(delegate_->failures.front().errornr, EACCES);
}

void FolderScannerControllerTest::failuresOfAllBatchesAreToldTogether()
{
    calls_->openErrors = {{"closed", EACCES}, {"shut", EACCES}};
    for (const char *folder : {"one", "one/closed", "two", "two/shut"})
        QVERIFY(!makeFolder(folder).isEmpty());
    const RecordedLog log;
    Pause pause(*calls_, scratch_->path("one"));
    scan({scratch_->path("one")});
    QTRY_VERIFY(pause.isReached());
    scan({scratch_->path("two")});
    pause.goOn();
    QTRY_VERIFY(!controller_->isBusy());
    QCOMPARE(delegate_->told, QStringList({QStringLiteral("failures"), QStringLiteral("report")}));
    QCOMPARE(Reports::paths(delegate_->failures),
             QByteArrayList({scratch_->path("one/closed"), scratch_->path("two/shut")}));

    // And not again with the next report.
    scan({scratch_->file("file", "x")});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(2));
    QCOMPARE(delegate_->failures.size(), std::size_t(2));
}

void FolderScannerControllerTest::aDelegateThatWantsNoFailuresGetsTheReport()
{
    delegate_->answered = {FolderScannerControllerDelegate::Call::newObjectsForQueue};
    const RecordedLog log;
    scan({"", makeFolder("folder")});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(delegate_->told, QStringList({QStringLiteral("report")}));
    QCOMPARE(delegate_->reports[0].files.size(), std::size_t(1));
}

void FolderScannerControllerTest::linksToLeaveAloneHaveSizeZero()
{
    QVERIFY(!makeFolder("folder", 0).isEmpty());
    const QByteArray link = scratch_->link("folder/link", scratch_->file("target", 500));
    scan({scratch_->path("folder")});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(1));
    QCOMPARE(delegate_->reports[0].files.front()->filesize(), 500.0);
    controller_->setSkipLinkTargets(true);
    scan({scratch_->path("folder")});
    QTRY_COMPARE(delegate_->reports.size(), std::size_t(2));
    QCOMPARE(delegate_->reports[1].files.front()->filesize(), 0.0);
}

void FolderScannerControllerTest::manyScansOneAfterTheOtherLoseNothing()
{
    constexpr std::size_t scans = 100;
    const QByteArray folder = makeFolder("folder", 20);
    delegate_->onReport = [&] {
        if (delegate_->reports.size() < scans)
            scan({folder});
    };
    scan({folder});
    QTRY_COMPARE(delegate_->reports.size(), scans);
    for (const ScanReport &report : delegate_->reports) {
        QCOMPARE(report.files.size(), std::size_t(20));
        QCOMPARE(report.folders.size(), std::size_t(1));
    }
    QCOMPARE(stats_->scanFoundFiles(), std::int64_t(scans * 20));
}

QTEST_GUILESS_MAIN(FolderScannerControllerTest)
#include "FolderScannerControllerTest.moc"
