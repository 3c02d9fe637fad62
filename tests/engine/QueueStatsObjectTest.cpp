#include "engine/QueueStatsObject.h"

#include "app/run/EraseRun.h"
#include "engine/HandedOverCalls.h"
#include "engine/QueueObject.h"

#include <QTest>

#include <limits>
#include <thread>
#include <vector>

namespace {

using Told = std::vector<std::int64_t>;

class RecordingStatsDelegate final : public QueueStatsObjectDelegate
{
  public:
    [[nodiscard]] bool answers(Call) const override { return answersCalls; }
    void statusChangedTo(std::int64_t status) override { told.push_back(status); }

    bool answersCalls = true;
    Told told;
};

struct Scene
{
    Scene() { stats->setDelegate(delegate); }

    std::shared_ptr<RecordingStatsDelegate> delegate = std::make_shared<RecordingStatsDelegate>();
    std::shared_ptr<QueueStatsObject> stats = QueueStatsObject::create();
};

} // namespace

class QueueStatsObjectTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aNewRecordIsEmpty();
    void propertiesKeepWhatTheyAreGiven();

    void theBarsMaximumIsTheTotalWithoutItsFraction_data();
    void theBarsMaximumIsTheTotalWithoutItsFraction();
    void theBarsMaximumFollowsLaterNeverAtOnce();
    void settingTheTotalItHasLeavesTheBarsMaximum();

    void withNoFileRemainingAnyNewStatusTurnsIntoDoneAndTheDelegateIsTold_data();
    void withNoFileRemainingAnyNewStatusTurnsIntoDoneAndTheDelegateIsTold();
    void withFilesRemainingTheStatusStaysAndTheDelegateIsTold();
    void settingTheStatusItHasTellsNobody();
    void theDelegateIsToldLaterNeverAtOnce();
    void aDelegateThatDoesNotAnswerIsNotCalled();
    void withoutADelegateTheStatusIsKeptAllTheSame();
    void aDelegateThatIsGoneIsNotCalled();

    void theKeyPathFilesFinishedLooksAtTheRemainingFiles_data();
    void theKeyPathFilesFinishedLooksAtTheRemainingFiles();
    void aRecordThatIsNotObservedFollowsNothing();
    void aRecordWithoutAChangeIsIgnored();
    void theObjectLivesUntilItsChangesAreFollowed();

    void threeFilesOneOfThemFailingCountTwoWipedOneFailedNoneRemaining();
    void progressAddedByTwoThreadsIsNotLost();
};

void QueueStatsObjectTest::aNewRecordIsEmpty()
{
    const auto stats = QueueStatsObject::create();
    for (const std::int64_t value :
         {stats->totalFilesWiped(), stats->totalFilesRemaining(), stats->filesFailed(),
          stats->percentageComplete(), stats->status(), stats->startTimeStamp(),
          stats->scanFoundFiles()})
        QCOMPARE(value, std::int64_t(0));
    for (const double value :
         {stats->doubleValue(), stats->maxValue(), stats->totalBytes(), stats->totalBytesWiped(),
          stats->totalBytesRemaining(), stats->timeRemaining(), stats->bytesWritten(),
          stats->scanFoundBytes()})
        QCOMPARE(value, 0.0);
    QVERIFY(stats->wipedFilesString().isEmpty());
    QVERIFY(stats->failedFilesString().isEmpty());
    QVERIFY(stats->timeElapsedString().isEmpty());
}

void QueueStatsObjectTest::propertiesKeepWhatTheyAreGiven()
{
    const auto stats = QueueStatsObject::create();
    stats->setTotalFilesWiped(1);
    stats->setTotalFilesRemaining(2);
    stats->setFilesFailed(3);
    stats->setPercentageComplete(4);
    stats->setStartTimeStamp(5);
    stats->setDoubleValue(6);
    stats->setMaxValue(7);
    stats->setTotalBytesWiped(8);
    stats->setTotalBytesRemaining(9);
    stats->setTimeRemaining(10);
    stats->setBytesWritten(11);
    stats->setScanFoundFiles(12);
    stats->setScanFoundBytes(13);
    stats->setWipedFilesString(QStringLiteral("2.00 KB in 2 files"));
    stats->setFailedFilesString(QStringLiteral("1"));
    stats->setTimeElapsedString(QStringLiteral("a while"));
    runHandedOverCalls();
    QCOMPARE(stats->totalFilesWiped(), std::int64_t(1));
    QCOMPARE(stats->totalFilesRemaining(), std::int64_t(2));
    QCOMPARE(stats->filesFailed(), std::int64_t(3));
    QCOMPARE(stats->percentageComplete(), std::int64_t(4));
    QCOMPARE(stats->startTimeStamp(), std::int64_t(5));
    QCOMPARE(stats->doubleValue(), 6.0);
    QCOMPARE(stats->maxValue(), 7.0);
    QCOMPARE(stats->totalBytesWiped(), 8.0);
    QCOMPARE(stats->totalBytesRemaining(), 9.0);
    QCOMPARE(stats->timeRemaining(), 10.0);
    QCOMPARE(stats->bytesWritten(), 11.0);
    QCOMPARE(stats->scanFoundFiles(), std::int64_t(12));
    QCOMPARE(stats->scanFoundBytes(), 13.0);
    QCOMPARE(stats->wipedFilesString(), QStringLiteral("2.00 KB in 2 files"));
    QCOMPARE(stats->failedFilesString(), QStringLiteral("1"));
    QCOMPARE(stats->timeElapsedString(), QStringLiteral("a while"));
}

void QueueStatsObjectTest::theBarsMaximumIsTheTotalWithoutItsFraction_data()
{
    QTest::addColumn<double>("total");
    QTest::addColumn<double>("maximum");
    QTest::newRow("a fraction above a half") << 1536.7 << 1536.0;
    QTest::newRow("a fraction below a half") << 1536.2 << 1536.0;
    QTest::newRow("a whole number") << 1536.0 << 1536.0;
    QTest::newRow("less than one") << 0.9 << 0.0;
    QTest::newRow("a size that could not be read") << -1.0 << -1.0;
    QTest::newRow("towards zero from below") << -1.9 << -1.0;
    QTest::newRow("more than 32 bits hold") << 5e12 + 0.5 << 5e12;
    QTest::newRow("more than 64 bits hold") << 1e300 << 9223372036854775808.0;
    QTest::newRow("less than 64 bits hold") << -1e300 << -9223372036854775808.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 9223372036854775808.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0.0;
}

void QueueStatsObjectTest::theBarsMaximumIsTheTotalWithoutItsFraction()
{
    QFETCH(double, total);
    QFETCH(double, maximum);
    const auto stats = QueueStatsObject::create();
    stats->setTotalBytes(total);
    runHandedOverCalls();
    QCOMPARE(stats->totalBytes(), total);
    QCOMPARE(stats->maxValue(), maximum);
}

void QueueStatsObjectTest::theBarsMaximumFollowsLaterNeverAtOnce()
{
    const auto stats = QueueStatsObject::create();
    stats->setTotalBytes(100);
    QCOMPARE(stats->maxValue(), 0.0);
    runHandedOverCalls();
    QCOMPARE(stats->maxValue(), 100.0);
}

void QueueStatsObjectTest::settingTheTotalItHasLeavesTheBarsMaximum()
{
    const auto stats = QueueStatsObject::create();
    stats->setTotalBytes(100);
    runHandedOverCalls();
    stats->setMaxValue(7);

    stats->setTotalBytes(100);
    runHandedOverCalls();
    QCOMPARE(stats->maxValue(), 7.0);
}

void QueueStatsObjectTest::withNoFileRemainingAnyNewStatusTurnsIntoDoneAndTheDelegateIsTold_data()
{
    QTest::addColumn<qint64>("status");
    QTest::addColumn<qint64>("remaining");
    QTest::addColumn<qsizetype>("calls");
    // That the status becomes done is a change of its own, and told as such.
    QTest::newRow("busy") << qint64(6) << qint64(0) << qsizetype(2);
    QTest::newRow("inactive") << qint64(1) << qint64(0) << qsizetype(2);
    QTest::newRow("busy with fewer than none remaining") << qint64(6) << qint64(-1) << qsizetype(2);
    QTest::newRow("done") << qint64(4) << qint64(0) << qsizetype(1);
}

void QueueStatsObjectTest::withNoFileRemainingAnyNewStatusTurnsIntoDoneAndTheDelegateIsTold()
{
    QFETCH(qint64, status);
    QFETCH(qint64, remaining);
    QFETCH(qsizetype, calls);
    Scene scene;
    scene.stats->setTotalFilesRemaining(remaining);
    scene.stats->setStatus(status);
    runHandedOverCalls();
    QCOMPARE(scene.stats->status(), std::int64_t(4));
    QCOMPARE(scene.delegate->told, Told(std::size_t(calls), 4));
}

void QueueStatsObjectTest::withFilesRemainingTheStatusStaysAndTheDelegateIsTold()
{
    Scene scene;
    scene.stats->setTotalFilesRemaining(1);
    scene.stats->setStatus(6);
    runHandedOverCalls();
    QCOMPARE(scene.stats->status(), std::int64_t(6));
    QCOMPARE(scene.delegate->told, Told{6});
}

void QueueStatsObjectTest::settingTheStatusItHasTellsNobody()
{
    Scene scene;
    scene.stats->setTotalFilesRemaining(1);
    scene.stats->setStatus(6);
    runHandedOverCalls();
    scene.stats->setStatus(6);
    runHandedOverCalls();
    QCOMPARE(scene.delegate->told, Told{6});
}

void QueueStatsObjectTest::theDelegateIsToldLaterNeverAtOnce()
{
    Scene scene;
    scene.stats->setStatus(6);
    QCOMPARE(scene.stats->status(), std::int64_t(6));
    QCOMPARE(scene.delegate->told, Told{});
    runHandedOverCalls();
    QVERIFY(!scene.delegate->told.empty());
}

void QueueStatsObjectTest::aDelegateThatDoesNotAnswerIsNotCalled()
{
    Scene scene;
    scene.delegate->answersCalls = false;
    scene.stats->setStatus(6);
    runHandedOverCalls();
    QCOMPARE(scene.stats->status(), std::int64_t(4));
    QCOMPARE(scene.delegate->told, Told{});
}

void QueueStatsObjectTest::withoutADelegateTheStatusIsKeptAllTheSame()
{
    const auto stats = QueueStatsObject::create();
    stats->setTotalFilesRemaining(1);
    stats->setStatus(6);
    runHandedOverCalls();
    QCOMPARE(stats->status(), std::int64_t(6));
}

void QueueStatsObjectTest::aDelegateThatIsGoneIsNotCalled()
{
    Scene scene;
    const std::weak_ptr<RecordingStatsDelegate> delegate = scene.delegate;
    scene.delegate.reset();
    QVERIFY(delegate.expired());
    scene.stats->setStatus(6);
    runHandedOverCalls();
    QCOMPARE(scene.stats->status(), std::int64_t(4));
}

void QueueStatsObjectTest::theKeyPathFilesFinishedLooksAtTheRemainingFiles_data()
{
    QTest::addColumn<qint64>("remaining");
    QTest::addColumn<qint64>("status");
    QTest::addColumn<qsizetype>("calls");
    QTest::newRow("none remaining") << qint64(0) << qint64(4) << qsizetype(1);
    QTest::newRow("one remaining") << qint64(1) << qint64(0) << qsizetype(0);
}

void QueueStatsObjectTest::theKeyPathFilesFinishedLooksAtTheRemainingFiles()
{
    QFETCH(qint64, remaining);
    QFETCH(qint64, status);
    QFETCH(qsizetype, calls);
    Scene scene;
    scene.stats->setTotalFilesRemaining(remaining);
    scene.stats->observeValueForKeyPath(QueueStatsObject::KeyPath::filesFinished, {0, 1});
    runHandedOverCalls();
    QCOMPARE(qint64(scene.stats->status()), status);
    QCOMPARE(scene.delegate->told, Told(std::size_t(calls), 4));
}

void QueueStatsObjectTest::aRecordThatIsNotObservedFollowsNothing()
{
    Scene scene;
    scene.stats->removeAllObservers();
    scene.stats->setTotalBytes(100);
    scene.stats->setStatus(6);
    runHandedOverCalls();
    QCOMPARE(scene.stats->maxValue(), 0.0);
    QCOMPARE(scene.stats->status(), std::int64_t(6));
    QCOMPARE(scene.delegate->told, Told{});

    scene.stats->startAllObservers();
    scene.stats->setTotalBytes(101);
    runHandedOverCalls();
    QCOMPARE(scene.stats->maxValue(), 101.0);
}

void QueueStatsObjectTest::aRecordWithoutAChangeIsIgnored()
{
    using KeyPath = QueueStatsObject::KeyPath;
    Scene scene;
    for (const KeyPath keyPath : {KeyPath::totalBytes, KeyPath::filesFinished, KeyPath::status})
        scene.stats->observeValueForKeyPath(keyPath, {8, 8});
    runHandedOverCalls();
    QCOMPARE(scene.stats->maxValue(), 0.0);
    QCOMPARE(scene.stats->status(), std::int64_t(0));
    QCOMPARE(scene.delegate->told, Told{});
}

void QueueStatsObjectTest::theObjectLivesUntilItsChangesAreFollowed()
{
    Scene scene;
    const std::weak_ptr<QueueStatsObject> stats = scene.stats;
    scene.stats->setStatus(4);
    scene.stats.reset();
    QVERIFY(!stats.expired());
    runHandedOverCalls();
    QVERIFY(stats.expired());
    QCOMPARE(scene.delegate->told, Told{4});
}

void QueueStatsObjectTest::threeFilesOneOfThemFailingCountTwoWipedOneFailedNoneRemaining()
{
    EraseRun run;
    const QueueStatsObject &stats = *run.queueStatsObject();
    QueueArray::Items items;
    for (const double size : {1000.0, 20'000.0, 310.0}) {
        items.push_back(QueueObject::create());
        items.back()->setQueueStatsObject(run.queueStatsObject());
        items.back()->setFilename(QByteArray::number(size));
        items.back()->setFilesize(size);
    }
    run.addObjectsFromArray(items);
    QCOMPARE(stats.totalFilesRemaining(), std::int64_t(3));

    for (const auto &item : items) {
        item->setStatus(item == items.at(1) ? QueueObject::Failed : QueueObject::Wiped);
        item->setFinished(true);
    }
    runHandedOverCalls();
    run.makeResultStrings(0);

    QCOMPARE(stats.totalFilesWiped(), std::int64_t(2));
    QCOMPARE(stats.filesFailed(), std::int64_t(1));
    QCOMPARE(stats.totalFilesRemaining(), std::int64_t(0));
    QCOMPARE(stats.totalBytesWiped(), 1310.0);
    QCOMPARE(stats.wipedFilesString(), QStringLiteral("1.31 KB in 2 files"));
    QCOMPARE(stats.failedFilesString(), QStringLiteral("1"));
}

void QueueStatsObjectTest::progressAddedByTwoThreadsIsNotLost()
{
    constexpr int additions = 100'000;
    const auto stats = QueueStatsObject::create();
    const auto add = [&stats] {
        for (int count = 0; count < additions; ++count)
            stats->addBytesWritten(1);
    };
    std::thread other(add);
    add();
    other.join();
    QCOMPARE(stats->bytesWritten(), 2.0 * additions);
}

QTEST_GUILESS_MAIN(QueueStatsObjectTest)
#include "QueueStatsObjectTest.moc"
