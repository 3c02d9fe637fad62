#include "engine/QueueArray.h"

#include <QTest>

namespace {

using Item = QueueArray::Item;
using Items = QueueArray::Items;

/// An item that tells nobody of its changes: no statistics are looked at here.
Item quietItem(bool finished = false)
{
    Item item = QueueObject::create();
    item->removeAllObservers();
    item->setFinished(finished);
    return item;
}

Items quietItems(std::size_t count)
{
    Items items(count);
    for (Item &item : items)
        item = quietItem();
    return items;
}

/// A queue of so many unfinished items.
QueueArray queueOf(std::size_t count)
{
    QueueArray queue;
    queue.append(quietItems(count));
    return queue;
}

/// Finishes what comes first, so many times.
void finish(QueueArray &queue, std::size_t count)
{
    for (std::size_t at = 0; at < count; ++at)
        queue.firstUnfinished()->setFinished(true);
}

} // namespace

class QueueArrayTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void anEmptyQueueHasNoNextItem();
    void itemsKeepTheOrderInWhichTheyCame();
    void theNextItemIsTheFirstUnfinishedOne();
    void askingDoesNotTakeAnItemAway();
    void onlyFinishedDecides();
    void aFinishedQueueHasNoNextItem();

    void anItemSetBackIsNextAgain();
    void anItemSetBackInAFinishedQueueIsNextAgain();
    void theEarliestOfSeveralItemsSetBackComesFirst();
    void anItemSetBackAndFinishedAgainIsPassedOver();
    void anItemSetBackIsFoundInEachQueueThatHoldsIt();

    void anEmptiedQueueHasNoNextItem();
    void aRefilledQueueStartsAtItsFirstItem();
    void anItemInsertedBeforeThePlaceIsNext();
    void aFinishedItemInsertedBeforeThePlaceIsPassedOver();
    void anItemInsertedBehindThePlaceWaitsForItsTurn();
    void removingAFinishedItemSkipsNothing();
    void removingTheNextItemMakesItsSuccessorNext();
    void anItemAppendedToAFinishedQueueIsNext();

    void aRunOverAMillionItemsIsLinear();
};

void QueueArrayTest::anEmptyQueueHasNoNextItem()
{
    QueueArray queue;
    QVERIFY(queue.isEmpty());
    QCOMPARE(queue.count(), std::size_t(0));
    QCOMPARE(queue.firstUnfinished(), nullptr);
}

void QueueArrayTest::itemsKeepTheOrderInWhichTheyCame()
{
    const Items items = quietItems(5);
    QueueArray queue;
    queue.append(Items{items.at(0), items.at(1)});
    queue.append(items.at(2));
    queue.append(Items{items.at(3), items.at(4)});
    queue.append(Items{});
    QVERIFY(!queue.isEmpty());
    QCOMPARE(queue.count(), std::size_t(5));
    QVERIFY(queue.items() == items);
}

void QueueArrayTest::theNextItemIsTheFirstUnfinishedOne()
{
    QueueArray queue = queueOf(4);
    queue.items().at(0)->setFinished(true);
    queue.items().at(2)->setFinished(true);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(1));
    queue.items().at(1)->setFinished(true);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(3));
}

void QueueArrayTest::askingDoesNotTakeAnItemAway()
{
    QueueArray queue = queueOf(2);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(0));
    QCOMPARE(queue.firstUnfinished(), queue.items().at(0));
}

void QueueArrayTest::onlyFinishedDecides()
{
    QueueArray queue = queueOf(2);
    const Item first = queue.items().at(0);
    first->setStatus(QueueObject::Wiped);
    first->setIsBusy(true);
    first->setIsFolder(true);
    QCOMPARE(queue.firstUnfinished(), first);
}

void QueueArrayTest::aFinishedQueueHasNoNextItem()
{
    QueueArray queue = queueOf(3);
    finish(queue, 3);
    QCOMPARE(queue.firstUnfinished(), nullptr);
    QCOMPARE(queue.count(), std::size_t(3));
}

void QueueArrayTest::anItemSetBackIsNextAgain()
{
    QueueArray queue = queueOf(4);
    finish(queue, 3);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(3));
    queue.items().at(1)->setFinished(false);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(1));
    queue.items().at(1)->setFinished(true);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(3));
}

void QueueArrayTest::anItemSetBackInAFinishedQueueIsNextAgain()
{
    QueueArray queue = queueOf(3);
    finish(queue, 3);
    QCOMPARE(queue.firstUnfinished(), nullptr);
    queue.items().at(2)->setFinished(false);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(2));
}

void QueueArrayTest::theEarliestOfSeveralItemsSetBackComesFirst()
{
    QueueArray queue = queueOf(5);
    finish(queue, 5);
    queue.items().at(3)->setFinished(false);
    queue.items().at(0)->setFinished(false);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(0));
    finish(queue, 1);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(3));
}

void QueueArrayTest::anItemSetBackAndFinishedAgainIsPassedOver()
{
    QueueArray queue = queueOf(3);
    finish(queue, 2);
    queue.items().at(0)->setFinished(false);
    queue.items().at(0)->setFinished(true);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(2));
}

void QueueArrayTest::anItemSetBackIsFoundInEachQueueThatHoldsIt()
{
    QueueArray queue = queueOf(2);
    QueueArray other;
    other.append(queue.items());
    finish(queue, 2);
    QCOMPARE(other.firstUnfinished(), nullptr);
    queue.items().at(0)->setFinished(false);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(0));
    QCOMPARE(other.firstUnfinished(), queue.items().at(0));
}

void QueueArrayTest::anEmptiedQueueHasNoNextItem()
{
    QueueArray queue = queueOf(3);
    finish(queue, 2);
    queue.clear();
    QVERIFY(queue.isEmpty());
    QCOMPARE(queue.firstUnfinished(), nullptr);
}

void QueueArrayTest::aRefilledQueueStartsAtItsFirstItem()
{
    QueueArray queue = queueOf(3);
    finish(queue, 3);
    queue.clear();
    queue.append(quietItems(2));
    QCOMPARE(queue.firstUnfinished(), queue.items().at(0));
    queue.clear();
    const Item item = quietItem();
    queue.append(item);
    QCOMPARE(queue.firstUnfinished(), item);
}

void QueueArrayTest::anItemInsertedBeforeThePlaceIsNext()
{
    QueueArray queue = queueOf(3);
    finish(queue, 2);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(2));
    const Item item = quietItem();
    queue.insert(0, item);
    QCOMPARE(queue.count(), std::size_t(4));
    QCOMPARE(queue.items().at(0), item);
    QCOMPARE(queue.firstUnfinished(), item);
    finish(queue, 1);
    QCOMPARE(queue.firstUnfinished(), queue.items().at(3));
}

void QueueArrayTest::aFinishedItemInsertedBeforeThePlaceIsPassedOver()
{
    QueueArray queue = queueOf(3);
    finish(queue, 2);
    const Item next = queue.firstUnfinished();
    queue.insert(1, quietItem(true));
    QCOMPARE(queue.firstUnfinished(), next);
}

void QueueArrayTest::anItemInsertedBehindThePlaceWaitsForItsTurn()
{
    QueueArray queue = queueOf(2);
    finish(queue, 1);
    const Item next = queue.firstUnfinished();
    const Item item = quietItem();
    queue.insert(2, item);
    QCOMPARE(queue.firstUnfinished(), next);
    finish(queue, 1);
    QCOMPARE(queue.firstUnfinished(), item);
}

void QueueArrayTest::removingAFinishedItemSkipsNothing()
{
    QueueArray queue = queueOf(4);
    finish(queue, 2);
    const Item next = queue.firstUnfinished();
    queue.remove(0);
    QCOMPARE(queue.count(), std::size_t(3));
    QCOMPARE(queue.firstUnfinished(), next);
    queue.remove(0);
    QCOMPARE(queue.firstUnfinished(), next);
}

void QueueArrayTest::removingTheNextItemMakesItsSuccessorNext()
{
    QueueArray queue = queueOf(3);
    finish(queue, 1);
    const Item successor = queue.items().at(2);
    queue.remove(1);
    QCOMPARE(queue.firstUnfinished(), successor);
    queue.remove(1);
    QCOMPARE(queue.firstUnfinished(), nullptr);
}

void QueueArrayTest::anItemAppendedToAFinishedQueueIsNext()
{
    QueueArray queue = queueOf(2);
    finish(queue, 2);
    QCOMPARE(queue.firstUnfinished(), nullptr);
    const Item item = quietItem();
    queue.append(item);
    QCOMPARE(queue.firstUnfinished(), item);
    finish(queue, 1);
    queue.append(quietItems(2));
    QCOMPARE(queue.firstUnfinished(), queue.items().at(3));
}

/// A queue that looked at its finished items anew each time would look 5 * 10^11 times here, which
/// no time limit of a test allows; so it is enough that this ends.
void QueueArrayTest::aRunOverAMillionItemsIsLinear()
{
    constexpr std::size_t count = 1'000'000;
    QueueArray queue = queueOf(count);
    std::size_t visited = 0;
    for (Item item = queue.firstUnfinished(); item; item = queue.firstUnfinished()) {
        if (item != queue.items().at(visited))
            QFAIL("An item came out of turn");
        item->setFinished(true);
        ++visited;
    }
    QCOMPARE(visited, count);
}

QTEST_GUILESS_MAIN(QueueArrayTest)
#include "QueueArrayTest.moc"
