#include "support/view/TableViewErrorLog.h"

#include "support/view/ErrorLogModel.h"
#include "ui/ThemedPreferences.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int rowHeight = 28;

/// Notes which part of a widget is painted anew.
class PaintedRegion : public QObject
{
  public:
    explicit PaintedRegion(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }

    QRegion region;
};

/// Counts the row views that it is asked for.
class CountingTable : public TableViewErrorLog
{
  public:
    RowViewStore::View rowViewForRow(int row) override
    {
        ++asked;
        const std::size_t waiting = rowViews().waitingCount();
        RowViewStore::View view = TableViewErrorLog::rowViewForRow(row);
        if (rowViews().waitingCount() == waiting)
            ++made;
        return view;
    }

    int asked = 0;
    int made = 0;
};

struct Scene
{
    explicit Scene(int rows)
    {
        for (int row = 0; row < rows; ++row)
            model.add({"file " + QByteArray::number(row), "/tmp", QStringLiteral("error")});
        table.setModel(&model);
        table.resize(688, 240);
        table.show();
    }
    void settle()
    {
        QVERIFY(QTest::qWaitForWindowExposed(&table));
        table.grab();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QPoint pointIn(int row) const { return {100, row * rowHeight + rowHeight / 2}; }
    [[nodiscard]] QMenu *openMenu(QContextMenuEvent::Reason reason, const QPoint &at)
    {
        QContextMenuEvent event(reason, at, table.viewport()->mapToGlobal(at));
        QApplication::sendEvent(table.viewport(), &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }

    ErrorLogModel model;
    CountingTable table;
};

void postTheme()
{
    NotificationHub::shared().post(NotificationName::colorThemeChanged);
}

} // namespace

class TableViewErrorLogTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void aNewThemeReloadsNothingWithoutRows();
    void aNewThemeReloadsNothingWithoutAModel();
    void aNewThemeRedrawsEveryVisibleRow();
    void aTableThatIsGoneHearsOfNoTheme();

    void everyRowGetsTheShadingRowView();
    void rowViewsAreUsedAgain();
    void itsOwnBackgroundIsClear();

    void returnShowsTheSelectedRow_data();
    void returnShowsTheSelectedRow();
    void returnWithoutARowShowsNothing();
    void aDoubleClickShowsItsRow();
    void theMenuOfARowShowsAndCopies();
    void theMenuOpensAtTheRowFromTheKeyboard();
    void aMenuForRowsThatHaveGoneShowsNothing();
    void withoutARowThereIsNoMenu();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void TableViewErrorLogTest::init()
{
    preferences_.reset();
    preferences_.emplace();
}

void TableViewErrorLogTest::aNewThemeReloadsNothingWithoutRows()
{
    Scene scene(0);
    scene.settle();
    QSignalSpy reloaded(&scene.table, &TableViewErrorLog::reloaded);
    PaintedRegion painted(scene.table.viewport());
    postTheme();
    QCoreApplication::processEvents();
    QCOMPARE(reloaded.size(), 0);
    QVERIFY(painted.region.isEmpty());
}

void TableViewErrorLogTest::aNewThemeReloadsNothingWithoutAModel()
{
    TableViewErrorLog table;
    QSignalSpy reloaded(&table, &TableViewErrorLog::reloaded);
    postTheme();
    QCOMPARE(reloaded.size(), 0);
}

void TableViewErrorLogTest::aNewThemeRedrawsEveryVisibleRow()
{
    Scene scene(100);
    scene.settle();
    QSignalSpy reloaded(&scene.table, &TableViewErrorLog::reloaded);
    PaintedRegion painted(scene.table.viewport());
    postTheme();
    QTRY_VERIFY(!painted.region.isEmpty());
    QCOMPARE(reloaded.size(), 1);
    QCOMPARE(painted.region.boundingRect(), scene.table.viewport()->rect());
}

void TableViewErrorLogTest::aTableThatIsGoneHearsOfNoTheme()
{
    {
        TableViewErrorLog table;
    }
    postTheme();
}

void TableViewErrorLogTest::everyRowGetsTheShadingRowView()
{
    Scene scene(3);
    scene.settle();
    QCOMPARE(scene.table.rowViews().shownCount(), 3U);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(scene.table.rowViews().shown(row)->identifier(),
                 QStringLiteral("RowViewWithMouseHover"));
}

void TableViewErrorLogTest::rowViewsAreUsedAgain()
{
    Scene scene(1000);
    scene.settle();
    for (int value = 0; value < 5000; value += 100) {
        scene.table.verticalScrollBar()->setValue(value);
        scene.table.grab();
    }
    const int seenAtOnce = 240 / rowHeight + 2;
    QVERIFY(scene.table.asked > seenAtOnce);
    QVERIFY(scene.table.made <= seenAtOnce);
}

void TableViewErrorLogTest::itsOwnBackgroundIsClear()
{
    const TableViewErrorLog table;
    QCOMPARE(table.palette().color(QPalette::Base), QColor(Qt::transparent));
}

void TableViewErrorLogTest::returnShowsTheSelectedRow_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void TableViewErrorLogTest::returnShowsTheSelectedRow()
{
    QFETCH(int, key);
    Scene scene(5);
    QSignalSpy shown(&scene.table, &TableViewErrorLog::showInFolder);
    scene.table.selectRow(3);
    QTest::keyClick(&scene.table, Qt::Key(key));
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.at(0).at(0).toInt(), 3);
}

void TableViewErrorLogTest::returnWithoutARowShowsNothing()
{
    Scene scene(5);
    QSignalSpy shown(&scene.table, &TableViewErrorLog::showInFolder);
    QTest::keyClick(&scene.table, Qt::Key_Return);
    QCOMPARE(shown.size(), 0);
}

void TableViewErrorLogTest::aDoubleClickShowsItsRow()
{
    Scene scene(5);
    QSignalSpy shown(&scene.table, &TableViewErrorLog::showInFolder);
    QTest::mouseDClick(scene.table.viewport(), Qt::LeftButton, {}, scene.pointIn(2));
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.at(0).at(0).toInt(), 2);
    QTest::mouseDClick(scene.table.viewport(), Qt::LeftButton, {}, QPoint(100, 200));
    QCOMPARE(shown.size(), 1);
}

void TableViewErrorLogTest::theMenuOfARowShowsAndCopies()
{
    Scene scene(5);
    QSignalSpy shown(&scene.table, &TableViewErrorLog::showInFolder);
    QTest::mouseClick(scene.table.viewport(), Qt::RightButton, {}, scene.pointIn(1));
    QMenu *menu = scene.openMenu(QContextMenuEvent::Mouse, scene.pointIn(1));
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 2);
    QCOMPARE(menu->actions().at(0)->text(), QStringLiteral("Show in Folder"));
    QCOMPARE(menu->actions().at(1)->text(), QStringLiteral("Copy"));
    menu->actions().at(0)->trigger();
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.at(0).at(0).toInt(), 1);
    menu->close();
}

void TableViewErrorLogTest::theMenuOpensAtTheRowFromTheKeyboard()
{
    Scene scene(5);
    scene.table.setCurrentIndex(scene.table.rowIndex(2));
    QMenu *menu = scene.openMenu(QContextMenuEvent::Keyboard, QPoint(0, 0));
    QVERIFY(menu);
    const QPoint at = scene.table.viewport()->mapFromGlobal(menu->pos());
    QCOMPARE(at.y(), scene.table.rowRect(2).bottom());
    menu->close();
}

void TableViewErrorLogTest::aMenuForRowsThatHaveGoneShowsNothing()
{
    Scene scene(5);
    QSignalSpy shown(&scene.table, &TableViewErrorLog::showInFolder);
    scene.table.selectRow(1);
    QMenu *menu = scene.openMenu(QContextMenuEvent::Mouse, scene.pointIn(1));
    QVERIFY(menu);
    scene.model.removeAll();
    menu->actions().at(0)->trigger();
    QCOMPARE(shown.size(), 0);
    menu->close();
}

void TableViewErrorLogTest::withoutARowThereIsNoMenu()
{
    Scene scene(0);
    QVERIFY(!scene.openMenu(QContextMenuEvent::Mouse, QPoint(100, 100)));
}

QTEST_MAIN(TableViewErrorLogTest)
#include "TableViewErrorLogTest.moc"
