#include "engine/QueueObject.h"

#include "engine/HandedOverCalls.h"
#include "engine/QueueStatsObject.h"

#include <QTest>

#include <thread>

namespace {

/// What one item counts into.
struct Scene
{
    Scene()
    {
        stats->setTotalFilesRemaining(5);
        item->setQueueStatsObject(stats);
        item->setFilesize(1000);
    }

    std::shared_ptr<QueueStatsObject> stats = QueueStatsObject::create();
    std::shared_ptr<QueueObject> item = QueueObject::create();
};

} // namespace

class QueueObjectTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aNewItemIsPendingAndEmpty();
    void propertiesKeepWhatTheyAreGiven();

    void settingTheStatusItHasChangesNoCounter();
    void onlyTheStatusFailedCountsAsAFailure_data();
    void onlyTheStatusFailedCountsAsAFailure();
    void failingTwiceWithAnotherStatusBetweenCountsTwoFailures();
    void aFailureIsCountedFromTheRecordNotFromThePresentStatus();

    void finishingCountsByTheStatus_data();
    void finishingCountsByTheStatus();
    void finishingCountsByTheStatusThatStandsWhenItIsCounted();
    void finishingTwiceCountsOnce();
    void settingFinishedBackChangesNoCounter();
    void anItemSetBackAndFinishedAgainCountsAgain();
    void aSizeThatCouldNotBeReadLowersTheBytes();

    void countersChangeLaterNeverAtOnce();
    void theItemLivesUntilItsChangesAreCounted();
    void anItemWithoutStatisticsCountsNothing();
    void anItemWhoseStatisticsAreGoneCountsNothing();
    void theStatisticsAreHeldWeakly();

    void anItemThatIsNotObservedCountsNothing();
    void aRecordWithoutAChangeIsIgnored();
    void settingAnItemBackIsCountedForReadersThatRememberAPlace();
    void progressAddedByTwoThreadsIsNotLost();
};

void QueueObjectTest::aNewItemIsPendingAndEmpty()
{
    const auto item = QueueObject::create();
    QVERIFY(!item->finished());
    QVERIFY(!item->isBusy());
    QVERIFY(!item->isFolder());
    QCOMPARE(item->status(), std::int64_t(0));
    QCOMPARE(item->wipe_method(), std::int64_t(0));
    QCOMPARE(item->errornr(), std::int64_t(0));
    QVERIFY(item->errormsg().isEmpty());
    QVERIFY(item->filename().isEmpty());
    QVERIFY(item->filepath().isEmpty());
    QVERIFY(item->fullpath().isEmpty());
    QCOMPARE(item->doubleValue(), 0.0);
    QCOMPARE(item->filesize(), 0.0);
    QCOMPARE(item->bytesWritten(), 0.0);
    QCOMPARE(item->maxValue(), 0.0);
    QVERIFY(item->queueStatsObject().expired());
}

void QueueObjectTest::propertiesKeepWhatTheyAreGiven()
{
    const auto item = QueueObject::create();
    item->setIsBusy(true);
    item->setIsFolder(true);
    item->setStatus(7);
    item->setFinished(true);
    item->setWipe_method(10);
    item->setErrornr(13);
    item->setErrormsg(QStringLiteral("Permission denied"));
    item->setFilename("na\xFFme");
    item->setFilepath("/folder");
    item->setFullpath("/folder/na\xFFme");
    item->setDoubleValue(1.5);
    item->setFilesize(2.5);
    item->setBytesWritten(3.5);
    item->setMaxValue(4.5);
    QVERIFY(item->isBusy());
    QVERIFY(item->isFolder());
    QCOMPARE(item->status(), std::int64_t(7));
    QVERIFY(item->finished());
    QCOMPARE(item->wipe_method(), std::int64_t(10));
    QCOMPARE(item->errornr(), std::int64_t(13));
    QCOMPARE(item->errormsg(), QStringLiteral("Permission denied"));
    QCOMPARE(item->filename(), QByteArray("na\xFFme"));
    QCOMPARE(item->filepath(), QByteArray("/folder"));
    QCOMPARE(item->fullpath(), QByteArray("/folder/na\xFFme"));
    QCOMPARE(item->doubleValue(), 1.5);
    QCOMPARE(item->filesize(), 2.5);
    QCOMPARE(item->bytesWritten(), 3.5);
    QCOMPARE(item->maxValue(), 4.5);
}

void QueueObjectTest::settingTheStatusItHasChangesNoCounter()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Failed);
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(1));

    scene.item->setStatus(QueueObject::Failed);
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(1));
}

void QueueObjectTest::onlyTheStatusFailedCountsAsAFailure_data()
{
    QTest::addColumn<qint64>("status");
    QTest::addColumn<qint64>("failed");
    QTest::newRow("wiped") << qint64(1) << qint64(0);
    QTest::newRow("failed") << qint64(2) << qint64(1);
    QTest::newRow("unknown") << qint64(3) << qint64(0);
    QTest::newRow("negative") << qint64(-2) << qint64(0);
}

void QueueObjectTest::onlyTheStatusFailedCountsAsAFailure()
{
    QFETCH(qint64, status);
    QFETCH(qint64, failed);
    Scene scene;
    scene.item->setStatus(status);
    runHandedOverCalls();
    QCOMPARE(qint64(scene.stats->filesFailed()), failed);
    QCOMPARE(scene.stats->totalFilesWiped(), std::int64_t(0));
    QCOMPARE(scene.stats->totalBytesWiped(), 0.0);
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(5));
}

void QueueObjectTest::failingTwiceWithAnotherStatusBetweenCountsTwoFailures()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Failed);
    runHandedOverCalls();
    scene.item->setStatus(QueueObject::Pending);
    runHandedOverCalls();
    scene.item->setStatus(QueueObject::Failed);
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(2));
}

void QueueObjectTest::aFailureIsCountedFromTheRecordNotFromThePresentStatus()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Failed);
    scene.item->setStatus(QueueObject::Wiped);
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(1));
}

void QueueObjectTest::finishingCountsByTheStatus_data()
{
    QTest::addColumn<qint64>("status");
    QTest::addColumn<qint64>("wiped");
    QTest::addColumn<double>("bytes");
    QTest::newRow("wiped") << qint64(1) << qint64(1) << 1000.0;
    QTest::newRow("failed") << qint64(2) << qint64(0) << 0.0;
    QTest::newRow("still pending") << qint64(0) << qint64(1) << 1000.0;
    QTest::newRow("unknown") << qint64(3) << qint64(1) << 1000.0;
}

void QueueObjectTest::finishingCountsByTheStatus()
{
    QFETCH(qint64, status);
    QFETCH(qint64, wiped);
    QFETCH(double, bytes);
    Scene scene;
    scene.item->setStatus(status);
    scene.item->setFinished(true);
    runHandedOverCalls();
    QCOMPARE(qint64(scene.stats->totalFilesWiped()), wiped);
    QCOMPARE(scene.stats->totalBytesWiped(), bytes);
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(4));
}

void QueueObjectTest::finishingCountsByTheStatusThatStandsWhenItIsCounted()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Wiped);
    scene.item->setFinished(true);
    scene.item->setStatus(QueueObject::Failed);
    runHandedOverCalls();
    QCOMPARE(scene.stats->totalFilesWiped(), std::int64_t(0));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(4));
}

void QueueObjectTest::finishingTwiceCountsOnce()
{
    Scene scene;
    scene.item->setFinished(true);
    scene.item->setFinished(true);
    runHandedOverCalls();
    QCOMPARE(scene.stats->totalFilesWiped(), std::int64_t(1));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(4));
}

void QueueObjectTest::settingFinishedBackChangesNoCounter()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Wiped);
    scene.item->setFinished(true);
    runHandedOverCalls();

    scene.item->setFinished(false);
    runHandedOverCalls();
    QCOMPARE(scene.stats->totalFilesWiped(), std::int64_t(1));
    QCOMPARE(scene.stats->totalBytesWiped(), 1000.0);
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(4));
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(0));
}

void QueueObjectTest::anItemSetBackAndFinishedAgainCountsAgain()
{
    Scene scene;
    scene.item->setFinished(true);
    scene.item->setFinished(false);
    scene.item->setFinished(true);
    runHandedOverCalls();
    QCOMPARE(scene.stats->totalFilesWiped(), std::int64_t(2));
    QCOMPARE(scene.stats->totalBytesWiped(), 2000.0);
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(3));
}

void QueueObjectTest::aSizeThatCouldNotBeReadLowersTheBytes()
{
    Scene scene;
    scene.stats->setTotalBytesWiped(10);
    scene.item->setFilesize(-1);
    scene.item->setStatus(QueueObject::Wiped);
    scene.item->setFinished(true);
    runHandedOverCalls();
    QCOMPARE(scene.stats->totalBytesWiped(), 9.0);
}

void QueueObjectTest::countersChangeLaterNeverAtOnce()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Failed);
    scene.item->setFinished(true);
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(0));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(5));

    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(1));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(4));
}

void QueueObjectTest::theItemLivesUntilItsChangesAreCounted()
{
    Scene scene;
    scene.item->setFinished(true);
    const std::weak_ptr<QueueObject> item = scene.item;
    scene.item.reset();
    QVERIFY(!item.expired());

    runHandedOverCalls();
    QVERIFY(item.expired());
    QCOMPARE(scene.stats->totalFilesWiped(), std::int64_t(1));
}

void QueueObjectTest::anItemWithoutStatisticsCountsNothing()
{
    const auto item = QueueObject::create();
    item->setStatus(QueueObject::Failed);
    item->setFinished(true);
    runHandedOverCalls();
    QCOMPARE(item->status(), std::int64_t(QueueObject::Failed));
    QVERIFY(item->finished());
}

void QueueObjectTest::anItemWhoseStatisticsAreGoneCountsNothing()
{
    Scene scene;
    scene.item->setStatus(QueueObject::Failed);
    scene.item->setFinished(true);
    scene.stats.reset();
    runHandedOverCalls();
    QCOMPARE(scene.item->status(), std::int64_t(QueueObject::Failed));
    QVERIFY(scene.item->finished());
}

void QueueObjectTest::theStatisticsAreHeldWeakly()
{
    Scene scene;
    QCOMPARE(scene.item->queueStatsObject().lock(), scene.stats);
    scene.stats.reset();
    QVERIFY(scene.item->queueStatsObject().expired());
}

void QueueObjectTest::anItemThatIsNotObservedCountsNothing()
{
    Scene scene;
    scene.item->removeAllObservers();
    scene.item->setStatus(QueueObject::Failed);
    scene.item->setFinished(true);
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(0));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(5));

    scene.item->startAllObservers();
    scene.item->setStatus(QueueObject::Pending);
    scene.item->setStatus(QueueObject::Failed);
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(1));
}

void QueueObjectTest::aRecordWithoutAChangeIsIgnored()
{
    Scene scene;
    scene.item->observeValueForKeyPath(QueueObject::KeyPath::status, {2, 2});
    scene.item->observeValueForKeyPath(QueueObject::KeyPath::finished, {1, 1});
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(0));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(5));

    scene.item->observeValueForKeyPath(QueueObject::KeyPath::status, {0, 2});
    scene.item->observeValueForKeyPath(QueueObject::KeyPath::finished, {0, 1});
    runHandedOverCalls();
    QCOMPARE(scene.stats->filesFailed(), std::int64_t(1));
    QCOMPARE(scene.stats->totalFilesRemaining(), std::int64_t(4));
}

void QueueObjectTest::settingAnItemBackIsCountedForReadersThatRememberAPlace()
{
    const auto item = QueueObject::create();
    const std::uint64_t before = QueueObject::reopenedCount();
    item->setFinished(false);
    item->setFinished(true);
    item->setFinished(true);
    QCOMPARE(QueueObject::reopenedCount(), before);
    item->setFinished(false);
    QCOMPARE(QueueObject::reopenedCount(), before + 1);
    item->setFinished(false);
    QCOMPARE(QueueObject::reopenedCount(), before + 1);
}

void QueueObjectTest::progressAddedByTwoThreadsIsNotLost()
{
    constexpr int additions = 100'000;
    const auto item = QueueObject::create();
    const auto add = [&item] {
        for (int count = 0; count < additions; ++count)
            item->addBytesWritten(1);
    };
    std::thread other(add);
    add();
    other.join();
    QCOMPARE(item->bytesWritten(), 2.0 * additions);
}

QTEST_GUILESS_MAIN(QueueObjectTest)
#include "QueueObjectTest.moc"
