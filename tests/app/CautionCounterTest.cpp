#include "app/CautionCounter.h"

#include "app/run/Items.h"

#include <QTest>

namespace {

QueueArray::Items links(int count)
{
    QueueArray::Items items;
    ScanFacts facts;
    facts.isLink = true;
    for (int at = 0; at < count; ++at) {
        items.push_back(QueueObject::create());
        items.back()->setScanFacts(facts);
    }
    return items;
}

} // namespace

class CautionCounterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void countsWhatIsInTheQueue();
    void countsOnlyWhatCameNew();
    void plainFilesAreNotReported();
    void manyItemsAreCountedBetweenOtherEvents();
    void aLongCountIsReportedTwiceASecond();
    void anEmptiedQueueIsReportedAtOnceAgain();
    void anEmptiedQueueBeginsAnew();
    void countsNothingOnceItIsGone();
    void aQueueThatIsGoneIsNotCounted();

  private:
    std::shared_ptr<QueueArray> queue_;
    std::vector<std::int64_t> reports_;
    std::unique_ptr<CautionCounter> counter_;

  private Q_SLOTS:
    void init()
    {
        reports_.clear();
        queue_ = std::make_shared<QueueArray>();
        counter_ = std::make_unique<CautionCounter>(
            [this](const CautionCount &count) { reports_.push_back(count.links); });
        counter_->setQueueArray(queue_);
    }
    void cleanup() { counter_.reset(); }
};

void CautionCounterTest::countsWhatIsInTheQueue()
{
    queue_->append(links(3));
    counter_->countAppended();
    QVERIFY(counter_->isCounting());
    QCOMPARE(counter_->count().links, 0);
    QTRY_VERIFY(!counter_->isCounting());
    QCOMPARE(counter_->count().links, 3);
    QCOMPARE(reports_, std::vector<std::int64_t>({3}));
}

void CautionCounterTest::countsOnlyWhatCameNew()
{
    queue_->append(links(3));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    queue_->append(links(2));
    counter_->countAppended();
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    QCOMPARE(reports_, std::vector<std::int64_t>({3, 5}));
}

void CautionCounterTest::plainFilesAreNotReported()
{
    queue_->append(Items::at("/a"));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    QVERIFY(reports_.empty());
}

void CautionCounterTest::manyItemsAreCountedBetweenOtherEvents()
{
    constexpr int many = 400'000;
    queue_->append(links(many));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    QCOMPARE(counter_->count().links, many);
    QVERIFY2(reports_.size() > 1, "all of them in one go");
    QCOMPARE(reports_.back(), many);
}

/// With a clock that goes 2 on at each look a slice takes 512 items and 8 milliseconds.
void CautionCounterTest::aLongCountIsReportedTwiceASecond()
{
    std::int64_t now = 0;
    counter_->setClock([&now] { return now += 2; });
    constexpr int slices = 200;
    queue_->append(links(512 * slices));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());

    QVERIFY2(now > 1500 && now < 2000, qPrintable(QString::number(now)));
    // The first, three on the way and the last.
    QCOMPARE(reports_.size(), std::size_t(5));
    QCOMPARE(reports_.front(), 512);
    QCOMPARE(reports_.back(), 512 * slices);
}

void CautionCounterTest::anEmptiedQueueIsReportedAtOnceAgain()
{
    std::int64_t now = 0;
    counter_->setClock([&now] { return now += 2; });
    queue_->append(links(1));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    queue_->clear();
    counter_->reset();
    queue_->append(links(5000));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    QCOMPARE(reports_, std::vector<std::int64_t>({1, 512, 5000}));
}

void CautionCounterTest::anEmptiedQueueBeginsAnew()
{
    queue_->append(links(3));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    queue_->clear();
    counter_->reset();
    queue_->append(links(1));
    counter_->countAppended();
    QTRY_VERIFY(!counter_->isCounting());
    QCOMPARE(counter_->count().links, 1);
    QCOMPARE(reports_, std::vector<std::int64_t>({3, 1}));
}

void CautionCounterTest::countsNothingOnceItIsGone()
{
    queue_->append(links(3));
    counter_->countAppended();
    counter_.reset();
    QCoreApplication::processEvents();
    QVERIFY(reports_.empty());
}

void CautionCounterTest::aQueueThatIsGoneIsNotCounted()
{
    queue_->append(links(3));
    counter_->countAppended();
    queue_.reset();
    QTRY_VERIFY(!counter_->isCounting());
    QVERIFY(reports_.empty());
}

QTEST_GUILESS_MAIN(CautionCounterTest)
#include "CautionCounterTest.moc"
