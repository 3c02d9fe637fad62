#include "engine/WipeController.h"

#include "engine/WipeOneFile.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"

#include <QCoreApplication>
#include <QTest>

#include <cerrno>
#include <cstring>

#include <sys/resource.h>

namespace {

/// Takes from the process, for as long as it lives, the right to any further thread. Root is not
/// held to that limit.
class NoMoreThreads
{
  public:
    NoMoreThreads()
    {
        ::getrlimit(RLIMIT_NPROC, &before_);
        rlimit none = before_;
        none.rlim_cur = 0;
        isInForce_ = ::setrlimit(RLIMIT_NPROC, &none) == 0;
    }
    ~NoMoreThreads() { ::setrlimit(RLIMIT_NPROC, &before_); }
    NoMoreThreads(const NoMoreThreads &) = delete;
    NoMoreThreads &operator=(const NoMoreThreads &) = delete;

    [[nodiscard]] bool isInForce() const { return isInForce_; }

  private:
    rlimit before_ = {};
    bool isInForce_ = false;
};

class RecordingDelegate final : public WipeControllerDelegate
{
  public:
    [[nodiscard]] bool answers(Call) const override { return true; }
    void fileFailedToWipe(const std::shared_ptr<QueueObject> &object) override
    {
        told.append("failed " + object->filename());
        const auto stats = object->queueStatsObject().lock();
        failuresCounted.append(stats ? int(stats->filesFailed()) : -1);
    }
    void finishedWiping() override { told.append("finished"); }

    QByteArrayList told;
    QList<int> failuresCounted;
};

} // namespace

/// What becomes of a run when the system has no thread to give.
class WipeControllerThreadLimitTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyFileFailsWithTheSystemsTextAndIsErasedLaterWhenSetBack();
};

void WipeControllerThreadLimitTest::everyFileFailsWithTheSystemsTextAndIsErasedLaterWhenSetBack()
{
    const Scratch scratch;
    const auto queue = std::make_shared<QueueArray>();
    const auto stats = QueueStatsObject::create();
    stats->setTotalFilesRemaining(3);
    for (const char *name : {"a", "b", "c"}) {
        queue->append(queueItem(scratch.file(name, QByteArray("kept")), 0));
        queue->items().back()->setQueueStatsObject(stats);
    }
    const auto delegate = std::make_shared<RecordingDelegate>();
    const auto controller = WipeController::create();
    controller->setQueueArray(queue);
    controller->setDelegate(delegate);
    controller->setWipeMethod(1);

    std::weak_ptr<FileWiper> wiper;
    {
        const NoMoreThreads limit;
        QVERIFY(limit.isInForce());
        controller->startWiping();
        wiper = controller->fileWiper();
        QTRY_VERIFY(delegate->told.contains("finished"));
    }
    QCOMPARE(delegate->told, (QByteArrayList{"failed a", "failed b", "failed c", "finished"}));
    QCOMPARE(delegate->failuresCounted, (QList<int>{1, 2, 3}));
    QCOMPARE(stats->totalFilesRemaining(), std::int64_t(0));
    QVERIFY(!controller->isBusy());
    QTRY_VERIFY(wiper.expired());
    for (const auto &item : queue->items()) {
        QCOMPARE(item->status(), std::int64_t(QueueObject::Failed));
        QCOMPARE(item->errornr(), std::int64_t(EAGAIN));
        QCOMPARE(item->errormsg(), QString::fromLocal8Bit(std::strerror(EAGAIN)));
        QCOMPARE(Scratch::content(item->fullpath()), QByteArray("kept"));
        item->setFinished(false);
    }

    controller->startWiping();
    QTRY_COMPARE(delegate->told.count("finished"), 2);
    for (const auto &item : queue->items()) {
        QCOMPARE(item->status(), std::int64_t(QueueObject::Wiped));
        QVERIFY(!Scratch::exists(item->fullpath()));
    }
}

UNPRIVILEGED_TEST_MAIN(WipeControllerThreadLimitTest)
#include "WipeControllerThreadLimitTest.moc"
