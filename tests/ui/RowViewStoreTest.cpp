#include "ui/RowViewStore.h"

#include <QTest>

namespace {

const QString hoverRow = QStringLiteral("RowViewWithMouseHover");
const QString borderRow = QStringLiteral("RowViewWithBorder");

RowViewStore::View viewOf(const QString &identifier)
{
    auto view = std::make_unique<DefaultTableRowView>();
    view->setIdentifier(identifier);
    return view;
}

} // namespace

class RowViewStoreTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aShownViewIsFoundByItsRow();
    void whatIsOutOfSightWaits();
    void aWaitingViewIsTakenByItsIdentifier();
    void anotherViewForARowTakesItsPlace();
    void aWaitingViewHasForgottenItsRow();
};

void RowViewStoreTest::aShownViewIsFoundByItsRow()
{
    RowViewStore store;
    DefaultTableRowView &view = store.show(7, viewOf(hoverRow));
    QCOMPARE(store.shown(7), &view);
    QCOMPARE(store.shown(6), nullptr);
}

void RowViewStoreTest::whatIsOutOfSightWaits()
{
    RowViewStore store;
    for (int row = 0; row < 10; ++row)
        store.show(row, viewOf(hoverRow));
    store.keepShown(3, 5);
    QCOMPARE(store.shownCount(), 3U);
    QCOMPARE(store.waitingCount(), 7U);
    QVERIFY(!store.shown(2) && store.shown(3) && store.shown(5) && !store.shown(6));
    store.hideAll();
    QCOMPARE(store.shownCount(), 0U);
    QCOMPARE(store.waitingCount(), 10U);
}

void RowViewStoreTest::aWaitingViewIsTakenByItsIdentifier()
{
    RowViewStore store;
    const DefaultTableRowView *view = &store.show(0, viewOf(hoverRow));
    QVERIFY(!store.reuse(hoverRow));
    store.hideAll();
    QVERIFY(!store.reuse(borderRow));
    QCOMPARE(store.reuse(hoverRow).get(), view);
    QVERIFY(!store.reuse(hoverRow));
}

void RowViewStoreTest::anotherViewForARowTakesItsPlace()
{
    RowViewStore store;
    store.show(0, viewOf(hoverRow));
    const DefaultTableRowView *other = &store.show(0, viewOf(borderRow));
    QCOMPARE(store.shown(0), other);
    QCOMPARE(store.waitingCount(), 1U);
}

void RowViewStoreTest::aWaitingViewHasForgottenItsRow()
{
    RowViewStore store;
    DefaultTableRowView &view = store.show(0, viewOf(hoverRow));
    int redisplays = 0;
    view.setRedisplay([&redisplays] { ++redisplays; });
    view.mouseEntered();
    view.overWriteSelectionColorWithColor(QColor(Qt::green));
    redisplays = 0;
    store.hideAll();
    QVERIFY(!view.mouseInside());
    QVERIFY(!view.tempSelectionColor());
    view.mouseExited();
    QCOMPARE(redisplays, 0);
}

QTEST_GUILESS_MAIN(RowViewStoreTest)
#include "RowViewStoreTest.moc"
