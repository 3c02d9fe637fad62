#include "ui/QueueTableModel.h"

#include "ui/TableRole.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace {

using Item = QueueArray::Item;

Item itemOf(const QByteArray &name, const QByteArray &folder = "/home/ada/Documents",
            double size = 4100)
{
    Item item = QueueObject::create();
    item->removeAllObservers();
    item->setFilename(name);
    item->setFilepath(folder);
    item->setFilesize(size);
    item->setMaxValue(size);
    return item;
}

void finish(const Item &item, std::int64_t status, const QString &error = {})
{
    item->setStatus(status);
    item->setErrormsg(error);
    item->setFinished(true);
}

/// A queue of so many items, its model, and what the model tells.
struct Scene
{
    explicit Scene(int count = 3)
    {
        addItems(count);
        model.setQueueArray(queue);
    }

    void addItems(int count)
    {
        for (int number = 0; number < count; ++number)
            queue->append(itemOf("file " + QByteArray::number(number)));
    }
    [[nodiscard]] QueueObject *item(int row) const
    {
        return queue->items().at(std::size_t(row)).get();
    }
    [[nodiscard]] QVariant data(int row, int column, int role = Qt::DisplayRole) const
    {
        return model.index(row, column).data(role);
    }
    [[nodiscard]] QString spoken(int row) const
    {
        return data(row, QueueTableModel::Name, Qt::AccessibleTextRole).toString();
    }

    std::shared_ptr<QueueArray> queue = std::make_shared<QueueArray>();
    QueueTableModel model{QByteArray("/home/ada"), nullptr};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
    QSignalSpy changed{&model, &QAbstractItemModel::dataChanged};
};

/// The rows that were told of, in order.
QList<int> rowsOf(const QSignalSpy &changed)
{
    QList<int> rows;
    for (const QList<QVariant> &arguments : changed)
        rows.append(arguments.at(0).toModelIndex().row());
    return rows;
}

} // namespace

class QueueTableModelTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void withoutAQueueThereAreNoRows();
    void aRowShowsItsItem();
    void theHeadNamesTheColumns();
    void aQueueThatIsGoneLeavesEmptyRows();

    void appendedItemsAreInserted();
    void itemsThatAreNotToldOfAreNotThereYet();
    void nothingNewTellsNothing();
    void aClearedQueueIsReset();
    void aQueueFilledAnewIsReset();
    void aRemovedItemIsReset();
    void aReplacedItemIsReset();
    void theModelKeepsTheRulesOfModels();

    void aChangedRowIsToldOfWithoutReset();
    void aRowThatIsNoneIsNotToldOf();
    void theRowInWorkChangesWithTheOneBefore();
    void anotherPassChangesTheRowInWork();
    void theSamePassChangesNothing();
    void aResetForgetsTheRowInWork();
    void progressIsAPartOfTheWhole_data();
    void progressIsAPartOfTheWhole();

    void aRowSpeaksInWholeSentences();
    void theErrorIsReadOnceTheItemIsFinished();

    void anItemsRowIsFound();
    void anUnknownItemHasNoRow();
    void anItemThatIsNotShownYetHasNoRow();
    void aMillionRowsAreFoundInTheirOrder();
};

void QueueTableModelTest::withoutAQueueThereAreNoRows()
{
    QueueTableModel model;
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 4);
    model.queueChanged();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.rowOf(nullptr), -1);
}

void QueueTableModelTest::aRowShowsItsItem()
{
    Scene scene(0);
    scene.queue->append(itemOf("a\nb.TXT", "/home/ada/Documents/Taxes", 2.41e6));
    scene.queue->append(itemOf("c\xFF", "/media/stick", -1));
    scene.model.queueChanged();
    QCOMPARE(scene.data(0, QueueTableModel::Name).toString(), QStringLiteral(u"a\uFFFDb.TXT"));
    QCOMPARE(scene.data(0, QueueTableModel::Folder).toString(),
             QStringLiteral("~/Documents/Taxes"));
    QCOMPARE(scene.data(0, QueueTableModel::Size).toString(), QStringLiteral("2.41 MB"));
    QCOMPARE(scene.data(0, QueueTableModel::Status).toString(), QString());
    QCOMPARE(scene.data(0, 0, TableRole::FileName).toString(), QStringLiteral(u"a\uFFFDb.TXT"));
    QCOMPARE(scene.data(1, QueueTableModel::Name).toString(), QStringLiteral(u"c\uFFFD"));
    QCOMPARE(scene.data(1, QueueTableModel::Folder).toString(), QStringLiteral("/media/stick"));
    QCOMPARE(scene.data(1, QueueTableModel::Size).toString(), QStringLiteral("--"));
    scene.item(1)->setStatus(2);
    QCOMPARE(scene.data(1, 0, TableRole::Status).toLongLong(), 2);
}

void QueueTableModelTest::theHeadNamesTheColumns()
{
    const Scene scene;
    const auto title = [&scene](int column, int role = Qt::DisplayRole) {
        return scene.model.headerData(column, Qt::Horizontal, role).toString();
    };
    QCOMPARE(title(QueueTableModel::Status), QString());
    QCOMPARE(title(QueueTableModel::Status, Qt::AccessibleTextRole), QStringLiteral("Status"));
    QCOMPARE(title(QueueTableModel::Name), QStringLiteral("Name"));
    QCOMPARE(title(QueueTableModel::Folder), QStringLiteral("Folder"));
    QCOMPARE(title(QueueTableModel::Size), QStringLiteral("Size"));
    QVERIFY(!scene.model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

void QueueTableModelTest::aQueueThatIsGoneLeavesEmptyRows()
{
    Scene scene;
    scene.queue.reset();
    QCOMPARE(scene.model.rowCount(), 3);
    QVERIFY(!scene.data(0, QueueTableModel::Name).isValid());
    scene.model.queueChanged();
    QCOMPARE(scene.model.rowCount(), 0);
}

void QueueTableModelTest::appendedItemsAreInserted()
{
    Scene scene;
    scene.reset.clear();
    scene.addItems(2);
    scene.model.queueChanged();
    QCOMPARE(scene.model.rowCount(), 5);
    QCOMPARE(scene.inserted.size(), 1);
    QCOMPARE(scene.inserted.at(0).at(1).toInt(), 3);
    QCOMPARE(scene.inserted.at(0).at(2).toInt(), 4);
    QCOMPARE(scene.reset.size(), 0);
}

void QueueTableModelTest::itemsThatAreNotToldOfAreNotThereYet()
{
    Scene scene;
    scene.addItems(2);
    QCOMPARE(scene.model.rowCount(), 3);
    QVERIFY(!scene.model.item(3));
}

void QueueTableModelTest::nothingNewTellsNothing()
{
    Scene scene;
    scene.reset.clear();
    scene.model.queueChanged();
    QCOMPARE(scene.inserted.size() + scene.reset.size(), 0);
}

void QueueTableModelTest::aClearedQueueIsReset()
{
    Scene scene;
    scene.reset.clear();
    scene.queue->clear();
    scene.model.queueChanged();
    QCOMPARE(scene.reset.size(), 1);
    QCOMPARE(scene.model.rowCount(), 0);
}

void QueueTableModelTest::aQueueFilledAnewIsReset()
{
    Scene scene;
    scene.reset.clear();
    scene.queue->clear();
    scene.addItems(5);
    scene.model.queueChanged();
    QCOMPARE(scene.reset.size(), 1);
    QCOMPARE(scene.inserted.size(), 0);
    QCOMPARE(scene.model.rowCount(), 5);
}

void QueueTableModelTest::aRemovedItemIsReset()
{
    Scene scene;
    scene.reset.clear();
    scene.queue->remove(1);
    scene.addItems(1);
    scene.model.queueChanged();
    QCOMPARE(scene.reset.size(), 1);
    QCOMPARE(scene.model.rowCount(), 3);
}

void QueueTableModelTest::aReplacedItemIsReset()
{
    Scene scene;
    scene.reset.clear();
    scene.queue->remove(0);
    scene.queue->insert(0, itemOf("another"));
    scene.model.queueChanged();
    QCOMPARE(scene.reset.size(), 1);
}

void QueueTableModelTest::theModelKeepsTheRulesOfModels()
{
    Scene scene;
    const QAbstractItemModelTester tester(&scene.model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    scene.addItems(3);
    scene.model.queueChanged();
    scene.model.setRowInWork(2, 1, 3);
    scene.queue->clear();
    scene.model.queueChanged();
    scene.addItems(1);
    scene.model.queueChanged();
}

void QueueTableModelTest::aChangedRowIsToldOfWithoutReset()
{
    Scene scene;
    scene.reset.clear();
    scene.model.rowChanged(1);
    QCOMPARE(rowsOf(scene.changed), (QList<int>{1}));
    QCOMPARE(scene.changed.at(0).at(1).toModelIndex().column(), 3);
    QCOMPARE(scene.reset.size(), 0);
}

void QueueTableModelTest::aRowThatIsNoneIsNotToldOf()
{
    Scene scene;
    scene.model.rowChanged(-1);
    scene.model.rowChanged(3);
    QCOMPARE(scene.changed.size(), 0);
}

void QueueTableModelTest::theRowInWorkChangesWithTheOneBefore()
{
    Scene scene;
    scene.model.setRowInWork(0, 1, 3);
    scene.model.setRowInWork(1, 1, 3);
    scene.model.setRowInWork(-1, 0, 0);
    QCOMPARE(rowsOf(scene.changed), (QList<int>{0, 0, 1, 1}));
    QVERIFY(!scene.data(1, 0, TableRole::IsInWork).toBool());
    scene.model.setRowInWork(1, 1, 3);
    QVERIFY(scene.data(1, 0, TableRole::IsInWork).toBool());
    QVERIFY(!scene.data(0, 0, TableRole::IsInWork).toBool());
}

void QueueTableModelTest::anotherPassChangesTheRowInWork()
{
    Scene scene;
    scene.model.setRowInWork(1, 1, 3);
    scene.changed.clear();
    scene.model.setRowInWork(1, 2, 3);
    QCOMPARE(rowsOf(scene.changed), (QList<int>{1}));
}

void QueueTableModelTest::theSamePassChangesNothing()
{
    Scene scene;
    scene.model.setRowInWork(1, 1, 3);
    scene.changed.clear();
    scene.model.setRowInWork(1, 1, 3);
    QCOMPARE(scene.changed.size(), 0);
}

void QueueTableModelTest::aResetForgetsTheRowInWork()
{
    Scene scene;
    scene.model.setRowInWork(1, 1, 3);
    scene.queue->clear();
    scene.addItems(3);
    scene.model.queueChanged();
    QCOMPARE(scene.model.rowInWork(), -1);
    QVERIFY(!scene.data(1, 0, TableRole::IsInWork).toBool());
}

void QueueTableModelTest::progressIsAPartOfTheWhole_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<double>("progress");
    QTest::newRow("none yet") << 0.0 << 100.0 << 0.0;
    QTest::newRow("a part") << 30.0 << 100.0 << 0.3;
    QTest::newRow("all") << 100.0 << 100.0 << 1.0;
    QTest::newRow("more than all") << 120.0 << 100.0 << 1.0;
    QTest::newRow("of an empty file") << 0.0 << 0.0 << 0.0;
    QTest::newRow("of an unknown size") << 10.0 << -1.0 << 0.0;
}

void QueueTableModelTest::progressIsAPartOfTheWhole()
{
    QFETCH(double, value);
    QFETCH(double, maximum);
    Scene scene;
    scene.item(0)->setDoubleValue(value);
    scene.item(0)->setMaxValue(maximum);
    QTEST(scene.data(0, 0, TableRole::Progress).toDouble(), "progress");
}

void QueueTableModelTest::aRowSpeaksInWholeSentences()
{
    Scene scene(1);
    const QString start = QStringLiteral(u"\u2068file 0\u2069, \u2068~/Documents\u2069, 4.10 KB, ");
    QCOMPARE(scene.spoken(0), start + QStringLiteral("waiting"));
    scene.model.setRowInWork(0, 2, 3);
    QCOMPARE(scene.spoken(0), start + QStringLiteral("in work, pass 2 of 3"));
    QCOMPARE(scene.data(0, QueueTableModel::Status, Qt::AccessibleTextRole).toString(),
             QStringLiteral("in work, pass 2 of 3"));
    finish(scene.queue->items().front(), QueueObject::Wiped);
    QCOMPARE(scene.spoken(0), start + QStringLiteral("wiped"));
    finish(scene.queue->items().front(), QueueObject::Failed, QStringLiteral("Permission denied"));
    QCOMPARE(scene.spoken(0), start + QStringLiteral("failed: Permission denied"));
    QCOMPARE(scene.data(0, QueueTableModel::Size, Qt::AccessibleTextRole).toString(),
             QStringLiteral("4.10 KB"));
}

void QueueTableModelTest::theErrorIsReadOnceTheItemIsFinished()
{
    Scene scene(1);
    scene.item(0)->setStatus(QueueObject::Failed);
    scene.item(0)->setErrormsg(QStringLiteral("Permission denied"));
    QVERIFY(scene.spoken(0).endsWith(QStringLiteral("failed")));
    scene.item(0)->setFinished(true);
    QVERIFY(scene.spoken(0).endsWith(QStringLiteral("failed: Permission denied")));
}

void QueueTableModelTest::anItemsRowIsFound()
{
    const Scene scene(5);
    for (const int row : {2, 4, 0, 3, 3, 1})
        QCOMPARE(scene.model.rowOf(scene.item(row)), row);
}

void QueueTableModelTest::anUnknownItemHasNoRow()
{
    const Scene scene;
    const Item other = itemOf("other");
    QCOMPARE(scene.model.rowOf(other.get()), -1);
    QCOMPARE(scene.model.rowOf(scene.item(2)), 2);
    QCOMPARE(scene.model.rowOf(other.get()), -1);
    QCOMPARE(scene.model.rowOf(nullptr), -1);
}

void QueueTableModelTest::anItemThatIsNotShownYetHasNoRow()
{
    Scene scene;
    scene.addItems(1);
    QCOMPARE(scene.model.rowOf(scene.item(3)), -1);
    scene.model.queueChanged();
    QCOMPARE(scene.model.rowOf(scene.item(3)), 3);
}

/// A search from the start each time would look 5 * 10^11 times here, which no time limit of a test
/// allows; so it is enough that this ends.
void QueueTableModelTest::aMillionRowsAreFoundInTheirOrder()
{
    constexpr int count = 1'000'000;
    Scene scene(0);
    QueueArray::Items items(count);
    for (Item &item : items)
        item = QueueObject::create();
    scene.queue->append(std::move(items));
    scene.model.queueChanged();
    for (int row = 0; row < count; ++row) {
        if (scene.model.rowOf(scene.item(row)) != row)
            QFAIL("An item was not found in its row");
    }
}

QTEST_GUILESS_MAIN(QueueTableModelTest)
#include "QueueTableModelTest.moc"
