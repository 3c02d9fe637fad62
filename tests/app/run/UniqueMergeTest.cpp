#include "app/run/UniqueMerge.h"

#include "app/run/Items.h"

#include <QTest>

namespace {

using Paths = QByteArrayList;

QueueArray::Items itemsAt(const Paths &paths)
{
    QueueArray::Items items;
    for (const QByteArray &path : paths)
        items.push_back(Items::at(path));
    return items;
}

/// The paths that are new beside a queue of those.
Paths merged(const Paths &queued, const Paths &added)
{
    QueueArray queue;
    queue.append(itemsAt(queued));
    return Items::paths(UniqueMerge::makeUniqueArray(queue, itemsAt(added)));
}

} // namespace

class UniqueMergeTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void nothingIsNewInNothing();
    void whatIsNotQueuedIsNewAndKeepsItsOrder();
    void theSameFileTwiceIsQueuedOnce();
    void theFirstOfTwoStays();
    void aFileThatIsQueuedAlreadyAddsNothing();
    void aQueuedItemIsNotNewItself();
    void theSameItemTwiceIsNewOnce();
    void pathsThatDifferOnlyInCaseAreTwo();
    void pathsAreComparedByteByByte_data();
    void pathsAreComparedByteByByte();
    void noPathIsNormalised();
    void itemsAreComparedByTheirPlaceAlone();
    void theQueueStaysAsItIs();
    void duplicatesInTheQueueAreLeftAlone();
    void finishedItemsCountAsQueued();
    void manyItemsAreMergedQuickly();
};

void UniqueMergeTest::nothingIsNewInNothing()
{
    QCOMPARE(merged({}, {}), Paths());
    QCOMPARE(merged({"/a"}, {}), Paths());
}

void UniqueMergeTest::whatIsNotQueuedIsNewAndKeepsItsOrder()
{
    QCOMPARE(merged({}, {"/z", "/b/c", "/a"}), Paths({"/z", "/b/c", "/a"}));
    QCOMPARE(merged({"/m"}, {"/z", "/m", "/a"}), Paths({"/z", "/a"}));
}

void UniqueMergeTest::theSameFileTwiceIsQueuedOnce()
{
    QCOMPARE(merged({}, {"/a/b", "/c", "/a/b", "/c", "/a/b"}), Paths({"/a/b", "/c"}));
}

void UniqueMergeTest::theFirstOfTwoStays()
{
    const QueueArray::Item first = Items::at("/a", 1);
    const QueueArray::Item second = Items::at("/a", 2);
    const QueueArray::Items merged = UniqueMerge::makeUniqueArray(QueueArray(), {first, second});
    QCOMPARE(merged, QueueArray::Items({first}));
}

void UniqueMergeTest::aFileThatIsQueuedAlreadyAddsNothing()
{
    QCOMPARE(merged({"/a", "/b"}, {"/b", "/a"}), Paths());
}

void UniqueMergeTest::aQueuedItemIsNotNewItself()
{
    const QueueArray::Item item = Items::at("/a");
    const QueueArray::Item other = Items::at("/b");
    QueueArray queue;
    queue.append(item);
    QCOMPARE(UniqueMerge::makeUniqueArray(queue, {item, other}), QueueArray::Items({other}));
}

void UniqueMergeTest::theSameItemTwiceIsNewOnce()
{
    const QueueArray::Item item = Items::at("/a");
    QCOMPARE(UniqueMerge::makeUniqueArray(QueueArray(), {item, item}), QueueArray::Items({item}));
}

void UniqueMergeTest::pathsThatDifferOnlyInCaseAreTwo()
{
    QCOMPARE(merged({"/a/File"}, {"/a/file", "/A/File", "/a/FILE"}),
             Paths({"/a/file", "/A/File", "/a/FILE"}));
}

void UniqueMergeTest::pathsAreComparedByteByByte_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("one byte that is not UTF-8") << QByteArray("/\xff") << QByteArray("/\xfe");
    QTest::newRow("composed and decomposed letters")
        << QByteArray("/\xc3\xb6") << QByteArray("/o\xcc\x88");
    QTest::newRow("a blank at the end") << QByteArray("/a") << QByteArray("/a ");
    QTest::newRow("percent escapes") << QByteArray("/a b") << QByteArray("/a%20b");
    QTest::newRow("the same name elsewhere") << QByteArray("/a/x") << QByteArray("/b/x");
    QTest::newRow("the same folder") << QByteArray("/a/x") << QByteArray("/a/y");
    QTest::newRow("in the root folder and below") << QByteArray("/x") << QByteArray("/x/x");
}

void UniqueMergeTest::pathsAreComparedByteByByte()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QCOMPARE(merged({first}, {second}), Paths({second}));
    QCOMPARE(merged({first}, {first}), Paths());
}

void UniqueMergeTest::noPathIsNormalised()
{
    QCOMPARE(merged({"/a/b"}, {"/a/./b", "//a/b", "/a/c/../b"}),
             Paths({"/a/./b", "//a/b", "/a/c/../b"}));
}

void UniqueMergeTest::itemsAreComparedByTheirPlaceAlone()
{
    const QueueArray::Item queued = Items::at("/a", 1);
    const QueueArray::Item other = Items::at("/a", 2);
    other->setFullpath("/somewhere else");
    QueueArray queue;
    queue.append(queued);
    QVERIFY(UniqueMerge::makeUniqueArray(queue, {other}).empty());
}

void UniqueMergeTest::theQueueStaysAsItIs()
{
    QueueArray queue;
    queue.append(itemsAt({"/a", "/b"}));
    const QueueArray::Items before = queue.items();
    QCOMPARE(UniqueMerge::makeUniqueArray(queue, itemsAt({"/c"})).size(), std::size_t(1));
    QCOMPARE(queue.items(), before);
}

void UniqueMergeTest::duplicatesInTheQueueAreLeftAlone()
{
    QCOMPARE(merged({"/a", "/a"}, {"/a", "/b"}), Paths({"/b"}));
}

void UniqueMergeTest::finishedItemsCountAsQueued()
{
    QueueArray queue;
    const QueueArray::Item done = Items::at("/a");
    done->setFinished(true);
    queue.append(done);
    QVERIFY(UniqueMerge::makeUniqueArray(queue, itemsAt({"/a"})).empty());
}

/// Quadratic work over so many would take minutes.
void UniqueMergeTest::manyItemsAreMergedQuickly()
{
    constexpr int count = 100'000;
    QueueArray::Items queued;
    QueueArray::Items added;
    for (int number = 0; number < count; ++number) {
        queued.push_back(Items::at("/folder/" + QByteArray::number(number)));
        added.push_back(Items::at("/folder/" + QByteArray::number(number + count / 2)));
    }
    QueueArray queue;
    queue.append(std::move(queued));
    const QueueArray::Items merged = UniqueMerge::makeUniqueArray(queue, std::move(added));
    QCOMPARE(merged.size(), std::size_t(count / 2));
    QCOMPARE(merged.front()->filename(), QByteArray::number(count));
}

QTEST_GUILESS_MAIN(UniqueMergeTest)
#include "UniqueMergeTest.moc"
