#include "engine/WipeController.h"

#include "engine/QueueStatsObject.h"
#include "engine/WipeOneFile.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"
#include "platform/MainThread.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace {

using Call = WipeControllerDelegate::Call;
using Item = std::shared_ptr<QueueObject>;

/// Writes down what it is told ("failed NAME", "finished"), and lets something happen then.
class RecordingDelegate final : public WipeControllerDelegate
{
  public:
    [[nodiscard]] bool answers(Call call) const override { return answered.contains(call); }
    void fileFailedToWipe(const Item &object) override
    {
        note("failed " + object->filename());
        failures.push_back(object);
        if (onFailure)
            onFailure();
    }
    void finishedWiping() override
    {
        note("finished");
        if (onFinish)
            onFinish();
        waiting.quit();
    }

    [[nodiscard]] qsizetype finishes() const { return told.count("finished"); }

    std::set<Call> answered = {Call::fileFailedToWipe, Call::finishedWiping};
    QByteArrayList told;
    std::vector<Item> failures;
    std::function<void()> onFailure;
    std::function<void()> onFinish;
    bool wasToldElsewhere = false;
    QEventLoop waiting;

  private:
    void note(const QByteArray &what)
    {
        told.append(what);
        wasToldElsewhere |= !MainThread::isCurrent();
    }
};

/// Notes which files are opened for writing and how often each is synced, without syncing the disk;
/// lets something happen on the main thread, once, before the first write into a file.
class ScriptedSystemCalls final : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        const int fd = ForwardingSystemCalls::open(folder, path, access, lastLink);
        if (access == Access::ReadWrite) {
            opened.append(path);
            syncs.append(0);
            openFiles += fd >= 0 ? 1 : 0;
            mostOpenFiles = std::max(mostOpenFiles, openFiles);
            file_ = fd;
        }
        return fd;
    }
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        if (onWriteInto == opened.last() && onWrite)
            MainThread::callAndWait(std::exchange(onWrite, {}));
        return ForwardingSystemCalls::write(fd, bytes, count);
    }
    int sync(int /*fd*/) override
    {
        ++syncs.last();
        return 0;
    }
    int close(int fd) override
    {
        if (fd == file_) {
            --openFiles;
            file_ = -1;
        }
        return ForwardingSystemCalls::close(fd);
    }

    QByteArrayList opened;
    QList<int> syncs; ///< one number for each of `opened`
    int openFiles = 0;
    int mostOpenFiles = 0;
    QByteArray onWriteInto;
    std::function<void()> onWrite;

  private:
    int file_ = -1;
};

} // namespace

class WipeControllerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void aNewControllerIsIdle();
    void anEmptyQueueEndsAtOnceAndTheDelegateHearsItLater();
    void withoutAQueueTheRunEndsAtOnce();
    void aFinishedQueueEndsAtOnceAndTouchesNothing();
    void filesAreErasedOneAfterTheOtherInTheirOrder();
    void threeFilesWhoseSecondCannotBeOpenedTellOneFailureAndOneEnd();
    void everyFileMayFail();
    void aFailureDoesNotInterruptTheRun();
    void theCountersStandWhenTheDelegateHearsOfAFailure();
    void theDelegateIsToldOnTheMainThread();

    void stoppingFinishesTheFileInWorkAndLeavesTheOthers();
    void stoppingInTheLastFileEndsTheRunOnce();
    void stoppingThenStartingGoesOn();
    void startingAfterAStopTakesTheRest();
    void stoppingAnIdleControllerDoesNotKeepTheNextRunFromStarting();

    void startingTwiceRunsOnce();
    void startingDuringARunDoesNotStartAnother();
    void startingTwiceOverAnEmptyQueueIsToldOnce();
    void startingAgainSkipsWhatIsFinished();
    void anItemSetBackIsTakenByTheNextRun();
    void onlyFinishedDecidesWhatIsNext();

    void anItemQueuedDuringARunIsErasedInIt();
    void anItemThatJoinsBetweenTheLastFileAndTheEndIsNotLost();
    void anItemThatJoinsAfterAStopWaits();
    void startingBetweenTheLastFileAndItsEndIsToldOnce();
    void theEndIsNotToldWhileAnotherRunIsBusy();
    void theDelegateMayStartTheNextRunFromTheEndOfTheLast();

    void theMethodIsStampedIntoEachFileAsItStarts();
    void aMethodChangedDuringARunGoesForTheFilesNotYetStarted();
    void aNumberThatIsNoMethodLeavesTheFileUntouchedAndFailsIt_data();
    void aNumberThatIsNoMethodLeavesTheFileUntouchedAndFailsIt();
    void aFolderInTheQueueFails();
    void linksMayBeRemovedWithoutTheirTargets();

    void aDelegateThatAnswersOneCallGetsThatCallOnly_data();
    void aDelegateThatAnswersOneCallGetsThatCallOnly();
    void withoutADelegateTheQueueIsErasedAllTheSame();
    void aDelegateThatGoesDuringARunIsNotMissed();
    void aQueueThatGoesDuringARunEndsIt();
    void aControllerThatGoesDuringARunLetsTheFileInWorkBeFinished();

    void theDelegateMayLetTheControllerGoFromInsideItsCalls_data();
    void theDelegateMayLetTheControllerGoFromInsideItsCalls();

    void theItemInWorkIsKnown();
    void eachFileHasAWiperOfItsOwnAndIdleMeansNone();
    void aWiperIsReleasedWhileItsThreadWaitsAndEndsWhole();

  private:
    /// Makes the file and queues it.
    Item queueFile(const QByteArray &name, qsizetype size = 100);
    Item queuePath(const QByteArray &path);
    [[nodiscard]] bool run();
    [[nodiscard]] Item item(std::size_t at) const { return queue_->items().at(at); }

    std::unique_ptr<Scratch> scratch_;
    std::unique_ptr<ScriptedSystemCalls> calls_;
    std::unique_ptr<SystemCalls::Replacement> replacement_;
    std::shared_ptr<QueueArray> queue_;
    std::shared_ptr<QueueStatsObject> stats_;
    std::shared_ptr<RecordingDelegate> delegate_;
    std::shared_ptr<WipeController> controller_;
};

void WipeControllerTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    calls_ = std::make_unique<ScriptedSystemCalls>();
    replacement_ = std::make_unique<SystemCalls::Replacement>(*calls_);
    queue_ = std::make_shared<QueueArray>();
    stats_ = QueueStatsObject::create();
    delegate_ = std::make_shared<RecordingDelegate>();
    controller_ = WipeController::create();
    controller_->setQueueArray(queue_);
    controller_->setDelegate(delegate_);
    controller_->setWipeMethod(1);
}

void WipeControllerTest::cleanup()
{
    // What a failed check left running ends with the file in work.
    if (controller_) {
        controller_->stopWiping();
        QTRY_VERIFY(!controller_->isBusy());
    }
    delegate_.reset();
    controller_.reset();
    queue_.reset();
    replacement_.reset();
    scratch_.reset();
}

Item WipeControllerTest::queueFile(const QByteArray &name, qsizetype size)
{
    return queuePath(scratch_->file(name, size));
}

Item WipeControllerTest::queuePath(const QByteArray &path)
{
    Item item = queueItem(path, 0);
    item->setQueueStatsObject(stats_);
    stats_->setTotalFilesRemaining(stats_->totalFilesRemaining() + 1);
    queue_->append(item);
    return item;
}

/// Starts, and waits until the delegate hears of one more end.
bool WipeControllerTest::run()
{
    const qsizetype finishes = delegate_->finishes();
    QTimer::singleShot(10'000, &delegate_->waiting, &QEventLoop::quit);
    controller_->startWiping();
    delegate_->waiting.exec();
    return delegate_->finishes() > finishes;
}

void WipeControllerTest::aNewControllerIsIdle()
{
    const auto controller = WipeController::create();
    QVERIFY(!controller->isBusy());
    QVERIFY(!controller->shouldCancel());
    QCOMPARE(controller->currentObject(), nullptr);
    QCOMPARE(controller->fileWiper(), nullptr);
    QCOMPARE(controller->getNextObject(), nullptr);
    QCOMPARE(controller->wipeMethode(), std::int64_t(0));
    controller->setWipeMethod(7);
    QCOMPARE(controller->wipeMethode(), std::int64_t(7));
}

void WipeControllerTest::anEmptyQueueEndsAtOnceAndTheDelegateHearsItLater()
{
    controller_->startWiping();
    QVERIFY(!controller_->isBusy());
    QVERIFY(delegate_->told.isEmpty());
    QTRY_COMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(!controller_->isBusy());
    QCOMPARE(controller_->fileWiper(), nullptr);
}

void WipeControllerTest::withoutAQueueTheRunEndsAtOnce()
{
    queueFile("file");
    queue_.reset();
    QVERIFY(run());
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(Scratch::exists(scratch_->path("file")));
}

void WipeControllerTest::aFinishedQueueEndsAtOnceAndTouchesNothing()
{
    queueFile("file")->setFinished(true);
    controller_->startWiping();
    QVERIFY(!controller_->isBusy());
    QTRY_COMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(Scratch::exists(scratch_->path("file")));
    QCOMPARE(calls_->opened, QByteArrayList());
}

void WipeControllerTest::filesAreErasedOneAfterTheOtherInTheirOrder()
{
    for (const char *name : {"c", "a", "b"})
        queueFile(name, 10'000);
    QVERIFY(run());
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QCOMPARE(calls_->opened, (QByteArrayList{"c", "a", "b"}));
    QCOMPARE(calls_->mostOpenFiles, 1);
    for (const Item &each : queue_->items()) {
        QVERIFY(!Scratch::exists(each->fullpath()));
        QVERIFY(each->finished());
        QVERIFY(each->isBusy());
        QCOMPARE(each->status(), std::int64_t(QueueObject::Wiped));
        QCOMPARE(each->bytesWritten(), 10'000.0);
    }
    QCOMPARE(stats_->totalFilesWiped(), std::int64_t(3));
    QCOMPARE(stats_->totalFilesRemaining(), std::int64_t(0));
    QCOMPARE(stats_->bytesWritten(), 30'000.0);
}

void WipeControllerTest::threeFilesWhoseSecondCannotBeOpenedTellOneFailureAndOneEnd()
{
    queueFile("first");
    queuePath(scratch_->path("second"));
    queueFile("third");
    std::vector<std::shared_ptr<FileWiper>> wipers;
    const auto noteWiper = [this, &wipers] { wipers.push_back(controller_->fileWiper()); };
    calls_->onWriteInto = "first";
    calls_->onWrite = noteWiper;
    delegate_->onFailure = [this, noteWiper] {
        noteWiper();
        calls_->onWriteInto = "third";
        calls_->onWrite = noteWiper;
    };

    QVERIFY(run());

    QCOMPARE(delegate_->told, (QByteArrayList{"failed second", "finished"}));
    QCOMPARE(delegate_->failures.at(0), item(1));
    QCOMPARE(wipers.size(), std::size_t(3));
    QVERIFY(wipers.at(0) != wipers.at(1) && wipers.at(1) != wipers.at(2));
    QCOMPARE(wipers.at(0)->currentObject(), item(0));
    QCOMPARE(wipers.at(1)->currentObject(), item(1));
    QCOMPARE(wipers.at(2)->currentObject(), item(2));
    QCOMPARE(item(0)->status(), std::int64_t(1));
    QCOMPARE(item(1)->status(), std::int64_t(2));
    QCOMPARE(item(1)->errornr(), std::int64_t(ENOENT));
    QCOMPARE(item(2)->status(), std::int64_t(1));
    QVERIFY(!Scratch::exists(scratch_->path("first")));
    QVERIFY(!Scratch::exists(scratch_->path("third")));
    QCOMPARE(stats_->totalFilesWiped(), std::int64_t(2));
    QCOMPARE(stats_->filesFailed(), std::int64_t(1));
    QCOMPARE(stats_->totalFilesRemaining(), std::int64_t(0));
}

void WipeControllerTest::everyFileMayFail()
{
    for (const char *name : {"a", "b", "c"})
        queuePath(scratch_->path(name));
    QVERIFY(run());
    QCOMPARE(delegate_->told, (QByteArrayList{"failed a", "failed b", "failed c", "finished"}));
    QCOMPARE(stats_->filesFailed(), std::int64_t(3));
    QCOMPARE(stats_->totalFilesRemaining(), std::int64_t(0));
}

void WipeControllerTest::aFailureDoesNotInterruptTheRun()
{
    queuePath(scratch_->path("missing"));
    queueFile("file");
    bool isBusyAfterwards = false;
    delegate_->onFailure = [this, &isBusyAfterwards] {
        MainThread::post([this, &isBusyAfterwards] { isBusyAfterwards = controller_->isBusy(); });
    };
    QVERIFY(run());
    QVERIFY(isBusyAfterwards);
}

void WipeControllerTest::theCountersStandWhenTheDelegateHearsOfAFailure()
{
    queueFile("first");
    queuePath(scratch_->path("second"));
    queueFile("third");
    std::int64_t failed = 0;
    std::int64_t wiped = 0;
    std::int64_t remaining = 0;
    delegate_->onFailure = [&] {
        failed = stats_->filesFailed();
        wiped = stats_->totalFilesWiped();
        remaining = stats_->totalFilesRemaining();
    };
    QVERIFY(run());
    QCOMPARE(failed, std::int64_t(1));
    QCOMPARE(wiped, std::int64_t(1));
    QCOMPARE(remaining, std::int64_t(1));
}

void WipeControllerTest::theDelegateIsToldOnTheMainThread()
{
    queuePath(scratch_->path("missing"));
    queueFile("file");
    QVERIFY(run());
    QCOMPARE(delegate_->told.size(), 2);
    QVERIFY(!delegate_->wasToldElsewhere);
}

void WipeControllerTest::stoppingFinishesTheFileInWorkAndLeavesTheOthers()
{
    for (const char *name : {"first", "second", "third"})
        queueFile(name, 10'000);
    controller_->setWipeMethod(4);
    calls_->onWriteInto = "first";
    calls_->onWrite = [this] { controller_->stopWiping(); };

    QVERIFY(run());

    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(controller_->shouldCancel());
    QVERIFY(!controller_->isBusy());
    QCOMPARE(calls_->opened, QByteArrayList{"first"});
    QCOMPARE(calls_->syncs, QList<int>{3});
    QVERIFY(!Scratch::exists(scratch_->path("first")));
    QCOMPARE(item(0)->status(), std::int64_t(1));
    for (const std::size_t at : {1U, 2U}) {
        QVERIFY(!item(at)->finished());
        QVERIFY(!item(at)->isBusy());
        QCOMPARE(item(at)->status(), std::int64_t(0));
        QCOMPARE(Scratch::content(item(at)->fullpath()), QByteArray(10'000, 'x'));
    }
    QCOMPARE(stats_->totalFilesRemaining(), std::int64_t(2));
}

void WipeControllerTest::stoppingInTheLastFileEndsTheRunOnce()
{
    queueFile("file");
    calls_->onWriteInto = "file";
    calls_->onWrite = [this] { controller_->stopWiping(); };
    QVERIFY(run());
    QTest::qWait(0);
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(!Scratch::exists(scratch_->path("file")));
}

void WipeControllerTest::stoppingThenStartingGoesOn()
{
    queueFile("first");
    queueFile("second");
    calls_->onWriteInto = "first";
    calls_->onWrite = [this] {
        controller_->stopWiping();
        controller_->startWiping();
    };
    QVERIFY(run());
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(!controller_->shouldCancel());
    QCOMPARE(calls_->opened, (QByteArrayList{"first", "second"}));
}

void WipeControllerTest::startingAfterAStopTakesTheRest()
{
    for (const char *name : {"first", "second", "third"})
        queueFile(name);
    calls_->onWriteInto = "second";
    calls_->onWrite = [this] { controller_->stopWiping(); };
    QVERIFY(run());
    QCOMPARE(calls_->opened, (QByteArrayList{"first", "second"}));

    QVERIFY(run());
    QCOMPARE(calls_->opened, (QByteArrayList{"first", "second", "third"}));
    QCOMPARE(delegate_->told, (QByteArrayList{"finished", "finished"}));
    QCOMPARE(stats_->totalFilesWiped(), std::int64_t(3));
}

void WipeControllerTest::stoppingAnIdleControllerDoesNotKeepTheNextRunFromStarting()
{
    queueFile("file");
    controller_->stopWiping();
    QVERIFY(controller_->shouldCancel());
    QVERIFY(run());
    QVERIFY(!Scratch::exists(scratch_->path("file")));
}

void WipeControllerTest::startingTwiceRunsOnce()
{
    queueFile("first");
    queueFile("second");
    controller_->startWiping();
    const std::shared_ptr<FileWiper> wiper = controller_->fileWiper();
    controller_->startWiping();
    QCOMPARE(controller_->fileWiper(), wiper);
    QTRY_COMPARE(delegate_->finishes(), 1);
    QTest::qWait(0);
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QCOMPARE(calls_->opened, (QByteArrayList{"first", "second"}));
    QCOMPARE(stats_->totalFilesWiped(), std::int64_t(2));
}

void WipeControllerTest::startingDuringARunDoesNotStartAnother()
{
    queueFile("first");
    queueFile("second");
    calls_->onWriteInto = "first";
    calls_->onWrite = [this] { controller_->startWiping(); };
    QVERIFY(run());
    QCOMPARE(calls_->mostOpenFiles, 1);
    QCOMPARE(calls_->opened, (QByteArrayList{"first", "second"}));
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
}

void WipeControllerTest::startingTwiceOverAnEmptyQueueIsToldOnce()
{
    controller_->startWiping();
    QVERIFY(run());
    QTest::qWait(0);
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
}

void WipeControllerTest::startingAgainSkipsWhatIsFinished()
{
    queueFile("first");
    queuePath(scratch_->path("missing"));
    QVERIFY(run());
    // Names that are taken again by other files are none of the run's business.
    scratch_->file("first", QByteArray("kept"));
    scratch_->file("missing", QByteArray("kept"));
    queueFile("third");

    QVERIFY(run());
    QCOMPARE(delegate_->told, (QByteArrayList{"failed missing", "finished", "finished"}));
    QCOMPARE(Scratch::content(scratch_->path("first")), QByteArray("kept"));
    QCOMPARE(Scratch::content(scratch_->path("missing")), QByteArray("kept"));
    QVERIFY(!Scratch::exists(scratch_->path("third")));
}

void WipeControllerTest::anItemSetBackIsTakenByTheNextRun()
{
    queuePath(scratch_->path("late"));
    queueFile("other");
    QVERIFY(run());
    scratch_->file("late", 100);
    item(0)->setFinished(false);
    QCOMPARE(controller_->getNextObject(), item(0));
    QVERIFY(run());
    QVERIFY(!Scratch::exists(scratch_->path("late")));
    QCOMPARE(item(0)->status(), std::int64_t(1));
    QCOMPARE(delegate_->told, (QByteArrayList{"failed late", "finished", "finished"}));
}

void WipeControllerTest::onlyFinishedDecidesWhatIsNext()
{
    queueFile("first");
    queueFile("second");
    item(0)->setStatus(QueueObject::Wiped);
    item(0)->setIsBusy(true);
    item(0)->setIsFolder(true);
    QCOMPARE(controller_->getNextObject(), item(0));
    QVERIFY(run());
    QVERIFY(!Scratch::exists(scratch_->path("first")));
}

void WipeControllerTest::anItemQueuedDuringARunIsErasedInIt()
{
    queueFile("first");
    calls_->onWriteInto = "first";
    calls_->onWrite = [this] { queueFile("second"); };
    QVERIFY(run());
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(!Scratch::exists(scratch_->path("second")));
}

void WipeControllerTest::anItemThatJoinsBetweenTheLastFileAndTheEndIsNotLost()
{
    queuePath(scratch_->path("missing"));
    bool wasBusy = true;
    // Handed over while the last file is told, this comes before the end of the run is.
    delegate_->onFailure = [this, &wasBusy] {
        MainThread::post([this, &wasBusy] {
            wasBusy = controller_->isBusy();
            queueFile("late");
        });
    };
    QVERIFY(run());
    QVERIFY(!wasBusy);
    QVERIFY(!Scratch::exists(scratch_->path("late")));
    QTest::qWait(0);
    QCOMPARE(delegate_->told, (QByteArrayList{"failed missing", "finished"}));
    QVERIFY(!controller_->isBusy());
}

void WipeControllerTest::anItemThatJoinsAfterAStopWaits()
{
    queuePath(scratch_->path("missing"));
    delegate_->onFailure = [this] {
        controller_->stopWiping();
        MainThread::post([this] { queueFile("late"); });
    };
    QVERIFY(run());
    QCOMPARE(delegate_->told, (QByteArrayList{"failed missing", "finished"}));
    QVERIFY(!controller_->isBusy());
    QVERIFY(!item(1)->finished());
    QVERIFY(Scratch::exists(scratch_->path("late")));
}

void WipeControllerTest::startingBetweenTheLastFileAndItsEndIsToldOnce()
{
    queuePath(scratch_->path("missing"));
    bool wasBusy = true;
    delegate_->onFailure = [this, &wasBusy] {
        MainThread::post([this, &wasBusy] {
            wasBusy = controller_->isBusy();
            queueFile("late");
            controller_->startWiping();
        });
    };
    QVERIFY(run());
    QVERIFY(!wasBusy);
    QTest::qWait(0);
    QCOMPARE(delegate_->told, (QByteArrayList{"failed missing", "finished"}));
    QVERIFY(!Scratch::exists(scratch_->path("late")));
    QCOMPARE(calls_->opened.count("late"), 1);
}

void WipeControllerTest::theEndIsNotToldWhileAnotherRunIsBusy()
{
    queuePath(scratch_->path("missing"));
    delegate_->onFailure = [this] {
        MainThread::post([this] {
            queueFile("late");
            controller_->startWiping();
            controller_->stopWiping();
        });
    };
    bool isBusyAtTheEnd = false;
    delegate_->onFinish = [this, &isBusyAtTheEnd] { isBusyAtTheEnd |= controller_->isBusy(); };
    QVERIFY(run());
    QTRY_VERIFY(!controller_->isBusy());
    QTest::qWait(0);
    QVERIFY(!isBusyAtTheEnd);
    QCOMPARE(delegate_->told, (QByteArrayList{"failed missing", "finished"}));
    QVERIFY(!Scratch::exists(scratch_->path("late")));
}

void WipeControllerTest::theDelegateMayStartTheNextRunFromTheEndOfTheLast()
{
    queueFile("first");
    delegate_->onFinish = [this] {
        if (delegate_->finishes() > 2)
            return;
        queue_->clear();
        queueFile(delegate_->finishes() == 1 ? "second" : "third");
        controller_->startWiping();
    };
    controller_->startWiping();
    QTRY_COMPARE(delegate_->told, (QByteArrayList{"finished", "finished", "finished"}));
    QCOMPARE(calls_->opened, (QByteArrayList{"first", "second", "third"}));
    QVERIFY(!controller_->isBusy());
}

void WipeControllerTest::theMethodIsStampedIntoEachFileAsItStarts()
{
    queueFile("first");
    queueFile("second");
    item(0)->setWipe_method(9);
    controller_->setWipeMethod(3);
    std::int64_t stampedIntoSecond = -1;
    calls_->onWriteInto = "first";
    calls_->onWrite = [&] { stampedIntoSecond = item(1)->wipe_method(); };
    QVERIFY(run());
    QCOMPARE(item(0)->wipe_method(), std::int64_t(3));
    QCOMPARE(item(1)->wipe_method(), std::int64_t(3));
    QCOMPARE(stampedIntoSecond, std::int64_t(0));
    QCOMPARE(calls_->syncs, (QList<int>{2, 2}));
}

void WipeControllerTest::aMethodChangedDuringARunGoesForTheFilesNotYetStarted()
{
    for (const char *name : {"first", "second", "third"})
        queueFile(name);
    controller_->setWipeMethod(4);
    calls_->onWriteInto = "second";
    calls_->onWrite = [this] { controller_->setWipeMethod(6); };
    QVERIFY(run());
    QCOMPARE(item(0)->wipe_method(), std::int64_t(4));
    QCOMPARE(item(1)->wipe_method(), std::int64_t(4));
    QCOMPARE(item(2)->wipe_method(), std::int64_t(6));
    QCOMPARE(calls_->syncs, (QList<int>{3, 3, 7}));
}

void WipeControllerTest::aNumberThatIsNoMethodLeavesTheFileUntouchedAndFailsIt_data()
{
    QTest::addColumn<qint64>("method");
    QTest::newRow("zero") << qint64(0);
    QTest::newRow("eleven") << qint64(11);
    QTest::newRow("negative") << qint64(-1);
}

void WipeControllerTest::aNumberThatIsNoMethodLeavesTheFileUntouchedAndFailsIt()
{
    QFETCH(qint64, method);
    queueFile("file", 5000);
    controller_->setWipeMethod(method);
    QVERIFY(run());
    QCOMPARE(delegate_->told, (QByteArrayList{"failed file", "finished"}));
    QCOMPARE(item(0)->status(), std::int64_t(2));
    QCOMPARE(item(0)->bytesWritten(), 0.0);
    QCOMPARE(Scratch::content(scratch_->path("file")), QByteArray(5000, 'x'));
    QCOMPARE(calls_->openFiles, 0);
}

void WipeControllerTest::aFolderInTheQueueFails()
{
    queuePath(scratch_->folder("folder"));
    item(0)->setIsFolder(true);
    queueFile("file");
    QVERIFY(run());
    QCOMPARE(delegate_->told, (QByteArrayList{"failed folder", "finished"}));
    QCOMPARE(item(0)->errornr(), std::int64_t(EISDIR));
    QVERIFY(Scratch::exists(scratch_->path("folder")));
    QVERIFY(!Scratch::exists(scratch_->path("file")));
}

void WipeControllerTest::linksMayBeRemovedWithoutTheirTargets()
{
    const QByteArray target = scratch_->file("target", QByteArray("kept"));
    ScanFacts facts;
    facts.isLink = true;
    queuePath(scratch_->link("link", "target"))->setScanFacts(facts);
    controller_->setSkipLinkTargets(true);
    QVERIFY(run());
    QCOMPARE(item(0)->status(), std::int64_t(1));
    QVERIFY(!Scratch::exists(scratch_->path("link")));
    QCOMPARE(Scratch::content(target), QByteArray("kept"));
}

void WipeControllerTest::aDelegateThatAnswersOneCallGetsThatCallOnly_data()
{
    QTest::addColumn<int>("answered");
    QTest::addColumn<QByteArrayList>("told");
    QTest::newRow("failures") << int(Call::fileFailedToWipe) << QByteArrayList{"failed missing"};
    QTest::newRow("the end") << int(Call::finishedWiping) << QByteArrayList{"finished"};
    QTest::newRow("nothing") << -1 << QByteArrayList{};
}

void WipeControllerTest::aDelegateThatAnswersOneCallGetsThatCallOnly()
{
    QFETCH(int, answered);
    QFETCH(QByteArrayList, told);
    delegate_->answered.clear();
    if (answered >= 0)
        delegate_->answered.insert(static_cast<Call>(answered));
    queuePath(scratch_->path("missing"));
    queueFile("file");
    controller_->startWiping();
    QTRY_VERIFY(!controller_->isBusy());
    QTest::qWait(0);
    QCOMPARE(delegate_->told, told);
    QVERIFY(!Scratch::exists(scratch_->path("file")));
}

void WipeControllerTest::withoutADelegateTheQueueIsErasedAllTheSame()
{
    controller_->setDelegate({});
    queuePath(scratch_->path("missing"));
    queueFile("file");
    controller_->startWiping();
    QTRY_VERIFY(!controller_->isBusy());
    QVERIFY(!Scratch::exists(scratch_->path("file")));
    QVERIFY(delegate_->told.isEmpty());
}

void WipeControllerTest::aDelegateThatGoesDuringARunIsNotMissed()
{
    queueFile("first");
    queuePath(scratch_->path("missing"));
    queueFile("third");
    calls_->onWriteInto = "first";
    calls_->onWrite = [this] { delegate_.reset(); };
    controller_->startWiping();
    QTRY_VERIFY(!controller_->isBusy());
    QVERIFY(!Scratch::exists(scratch_->path("third")));
    QCOMPARE(stats_->filesFailed(), std::int64_t(1));
}

void WipeControllerTest::aQueueThatGoesDuringARunEndsIt()
{
    const Item first = queueFile("first");
    const Item second = queueFile("second");
    calls_->onWriteInto = "first";
    calls_->onWrite = [this] { queue_.reset(); };
    QVERIFY(run());
    QCOMPARE(delegate_->told, QByteArrayList{"finished"});
    QVERIFY(!Scratch::exists(scratch_->path("first")));
    QCOMPARE(first->status(), std::int64_t(1));
    QVERIFY(!second->finished());
    QVERIFY(Scratch::exists(scratch_->path("second")));
}

void WipeControllerTest::aControllerThatGoesDuringARunLetsTheFileInWorkBeFinished()
{
    const Item first = queueFile("first");
    const Item second = queueFile("second");
    std::weak_ptr<FileWiper> wiper;
    calls_->onWriteInto = "first";
    calls_->onWrite = [this, &wiper] {
        wiper = controller_->fileWiper();
        controller_.reset();
    };
    controller_->startWiping();
    QTRY_VERIFY(first->finished() && wiper.expired());
    QCOMPARE(first->status(), std::int64_t(1));
    QVERIFY(!Scratch::exists(scratch_->path("first")));
    QVERIFY(!second->finished());
    QVERIFY(delegate_->told.isEmpty());
}

void WipeControllerTest::theDelegateMayLetTheControllerGoFromInsideItsCalls_data()
{
    QTest::addColumn<bool>("isFailure");
    QTest::newRow("failure") << true;
    QTest::newRow("end") << false;
}

void WipeControllerTest::theDelegateMayLetTheControllerGoFromInsideItsCalls()
{
    QFETCH(bool, isFailure);
    queuePath(scratch_->path("missing"));
    const std::weak_ptr<WipeController> controller = controller_;
    (isFailure ? delegate_->onFailure : delegate_->onFinish) = [this] { controller_.reset(); };
    controller_->startWiping();
    QTRY_VERIFY(controller.expired());
    QCOMPARE(delegate_->told, (QByteArrayList{"failed missing", "finished"}));
}

void WipeControllerTest::theItemInWorkIsKnown()
{
    queueFile("first");
    queueFile("second");
    Item inWork;
    calls_->onWriteInto = "second";
    calls_->onWrite = [this, &inWork] { inWork = controller_->currentObject(); };
    controller_->startWiping();
    QCOMPARE(controller_->currentObject(), item(0));
    QVERIFY(controller_->isBusy());
    QTRY_COMPARE(delegate_->finishes(), 1);
    QCOMPARE(inWork, item(1));
    QCOMPARE(controller_->currentObject(), item(1));
}

void WipeControllerTest::eachFileHasAWiperOfItsOwnAndIdleMeansNone()
{
    queueFile("first");
    queueFile("second");
    const FileWiper *second = nullptr;
    calls_->onWriteInto = "second";
    calls_->onWrite = [this, &second] { second = controller_->fileWiper().get(); };
    controller_->startWiping();
    const std::shared_ptr<FileWiper> first = controller_->fileWiper();
    QVERIFY(first);
    QTRY_COMPARE(delegate_->finishes(), 1);
    QVERIFY(second != nullptr);
    QVERIFY(second != first.get());
    QCOMPARE(controller_->fileWiper(), nullptr);
}

void WipeControllerTest::aWiperIsReleasedWhileItsThreadWaitsAndEndsWhole()
{
    constexpr int count = 50;
    std::vector<std::weak_ptr<FileWiper>> wipers;
    // Each call comes from a wiper that is then let go before the call is over.
    delegate_->onFailure = [this, &wipers] { wipers.emplace_back(controller_->fileWiper()); };
    for (int number = 0; number < count; ++number)
        queuePath(scratch_->path(QByteArray::number(number)));
    QVERIFY(run());
    QCOMPARE(wipers.size(), std::size_t(count));
    QCOMPARE(stats_->filesFailed(), std::int64_t(count));
    QTRY_VERIFY(std::all_of(wipers.begin(), wipers.end(),
                            [](const auto &wiper) { return wiper.expired(); }));
}

QTEST_GUILESS_MAIN(WipeControllerTest)
#include "WipeControllerTest.moc"
