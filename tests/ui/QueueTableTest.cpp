#include "ui/QueueTable.h"

#include "ThemedPreferences.h"
#include "ui/DesignColors.h"
#include "ui/QueueTableModel.h"
#include "ui/TableRole.h"
#include "ui/Typography.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScrollBar>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>

namespace {

using Item = QueueArray::Item;
using Kind = QueueTable::Kind;

constexpr QSize tableSize(656, 304);
constexpr int headHeight = 24;
constexpr int rowHeight = 28;
constexpr int betweenTexts = 330; ///< x of no icon and no short text

Item itemOf(const QByteArray &name)
{
    Item item = QueueObject::create();
    item->removeAllObservers();
    item->setFilename(name);
    item->setFilepath("/home/ada/Documents");
    item->setFilesize(4100);
    item->setMaxValue(1000);
    return item;
}

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

/// A million rows that exist as a number, and a note of those that were asked for.
class CountingModel : public QAbstractTableModel
{
  public:
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 1'000'000;
    }
    int columnCount(const QModelIndex & = {}) const override { return 4; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        asked.insert(index.row());
        return role == Qt::DisplayRole ? QVariant(QString::number(index.row())) : QVariant();
    }

    mutable QSet<int> asked;
};

/// A table in a window of its own, over so many items.
struct Scene
{
    explicit Scene(int count = 30, Kind kind = Kind::Ready) : table(kind, &window)
    {
        window.resize(720, 400);
        other.setGeometry(700, 380, 10, 10);
        other.setFocusPolicy(Qt::StrongFocus);
        table.resize(tableSize);
        for (int number = 0; number < count; ++number)
            queue->append(itemOf("file " + QByteArray::number(number)));
        model.setQueueArray(queue);
        table.setModel(&model);
        window.show();
    }

    [[nodiscard]] QueueObject *item(int row) const
    {
        return queue->items().at(std::size_t(row)).get();
    }
    QImage painted() { return table.grab().toImage(); }
    /// In the middle of the row at this place in the view, where no text is.
    QColor ground(int place)
    {
        return painted().pixelColor(betweenTexts, headHeight + place * rowHeight + 5);
    }
    void hover(int place)
    {
        const QPointF at(betweenTexts, place * rowHeight + 5);
        QMouseEvent event(QEvent::MouseMove, at, table.viewport()->mapToGlobal(at), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(table.viewport(), &event);
        painted();
    }
    void focus(QWidget *widget)
    {
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        widget->setFocus();
        QTRY_VERIFY(widget->hasFocus());
    }
    void scrollByWheel(int pixels)
    {
        QWheelEvent event(QPointF(50, 50), table.viewport()->mapToGlobal(QPointF(50, 50)),
                          QPoint(0, -pixels), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(table.viewport(), &event);
    }
    [[nodiscard]] int firstRow() const { return table.rowsIn(table.viewport()->rect()).first; }
    [[nodiscard]] QScrollBar *shownBar() const
    {
        for (QScrollBar *bar : table.findChildren<QScrollBar *>(Qt::FindDirectChildrenOnly))
            if (bar != table.verticalScrollBar() && bar != table.horizontalScrollBar())
                return bar;
        return nullptr;
    }

    QWidget window;
    QWidget other{&window};
    std::shared_ptr<QueueArray> queue = std::make_shared<QueueArray>();
    QueueTableModel model{QByteArray("/home/ada"), nullptr};
    QueueTable table;
};

bool isAbout(const QColor &color, const QColor &expected)
{
    const auto isNear = [](int one, int other) { return std::abs(one - other) <= 2; };
    return isNear(color.red(), expected.red()) && isNear(color.green(), expected.green()) &&
           isNear(color.blue(), expected.blue());
}

/// Whether letters of this colour stand in the part of the picture.
bool hasColor(const QImage &image, const QRect &rect, const QColor &color)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const QColor seen = image.pixelColor(x, y);
            if (std::abs(seen.red() - color.red()) + std::abs(seen.green() - color.green()) +
                    std::abs(seen.blue() - color.blue()) <
                30)
                return true;
        }
    return false;
}

QRect textRect(int x, int place)
{
    return {x, headHeight + place * rowHeight, 60, rowHeight};
}

} // namespace

#define COMPARE_COLOR(actual, expected)                                                            \
    do {                                                                                           \
        const QColor seen = actual;                                                                \
        QVERIFY2(isAbout(seen, expected),                                                          \
                 qPrintable(seen.name() + QLatin1String(" is not ") + QColor(expected).name()));   \
    } while (false)

class QueueTableTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();

    void theCardHasHeadAndGround_data();
    void theCardHasHeadAndGround();
    void theCornersAreNotPainted();
    void eachKindHasItsIdentifier_data();
    void eachKindHasItsIdentifier();
    void rowsHaveALineAtTheirLowerEdge_data();
    void rowsHaveALineAtTheirLowerEdge();
    void errorRowsHaveNoLine();
    void rowsAndHeadGrowWithTheType();

    void theMouseShadesItsRow_data();
    void theMouseShadesItsRow();
    void aRowOfARunTakesNoShade();
    void scrollingForgetsTheMouseUntilItMoves();
    void resizingForgetsTheMouseUntilItMoves();
    void leavingTheTableEndsTheShade();

    void aSelectedRowHasTheColourOfTheFocus_data();
    void aSelectedRowHasTheColourOfTheFocus();
    void aNewThemeIsSeenAtTheNextPainting();

    void theRowInWorkIsTintedWithABar();
    void theBarIsSeenOverASelection();
    void theNameOfTheRowInWorkIsBold();
    void statusIconsAreDrawnDuringARun();
    void noStatusIconIsDrawnBefore();

    void progressRepaintsItsRowAlone();
    void aChangedRowKeepsThePlaceAndTheSelection();
    void aRowOutOfSightRepaintsNothing();

    void atMostOneViewIsMadeForARow();
    void viewsAreUsedAgain();
    void onlyVisibleRowsAreAskedFor();

    void theRowInWorkIsKeptFifth();
    void theUsersScrollingHoldsForFiveSeconds_data();
    void theUsersScrollingHoldsForFiveSeconds();
    void aHeldScrollBarHoldsForAsLong();
    void theScrollBarLiesOverTheRows();
    void theScrollBarFollowsBothWays();
    void aShortTableShowsNoScrollBar();

    void keysMoveFromRowToRow_data();
    void keysMoveFromRowToRow();
    void lettersSearchNothing();
    void aClickTakesTheWholeRow();
    void selectionIsCopiedAsText();
    void nothingSelectedCopiesNothing();
    void theClickedRowStandsForNoSelection();

    void anEmptyTableSaysWhy();
    void aTableWithRowsSaysNothingMore();
    void onlyAnElidedTextHasAToolTip();
    void aScreenReaderHearsTheRow();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void QueueTableTest::initTestCase()
{
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
}

void QueueTableTest::init()
{
    preferences_.reset();
    preferences_.emplace();
}

void QueueTableTest::theCardHasHeadAndGround_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("head");
    QTest::addColumn<QColor>("line");
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("edge");
    QTest::newRow("light") << false << QColor(0xF1F3F5) << QColor(0xD8DADC) << QColor(0xFCFDFD)
                           << QColor(0xDADCDE);
    QTest::newRow("dark") << true << QColor(0x21262B) << QColor(0x2C3135) << QColor(0x1B1F24)
                          << QColor(0x2F3337);
}

void QueueTableTest::theCardHasHeadAndGround()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, head);
    QFETCH(QColor, line);
    QFETCH(QColor, ground);
    QFETCH(QColor, edge);
    preferences_->setDark(isDark);
    Scene scene(2);
    const QImage image = scene.painted();
    COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight - 2), head);
    COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight - 1), line);
    COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight), ground);
    COMPARE_COLOR(image.pixelColor(betweenTexts, tableSize.height() - 2), ground);
    COMPARE_COLOR(image.pixelColor(betweenTexts, tableSize.height() - 1), edge);
    COMPARE_COLOR(image.pixelColor(0, 200), edge);
    COMPARE_COLOR(image.pixelColor(1, 200), ground);
    COMPARE_COLOR(image.pixelColor(tableSize.width() - 1, 200), edge);
    COMPARE_COLOR(image.pixelColor(tableSize.width() - 2, 200), ground);
    QVERIFY(image.pixelColor(betweenTexts, 0) != head); // the edge lies over the head
}

void QueueTableTest::theCornersAreNotPainted()
{
    Scene scene(0);
    scene.table.setAttribute(Qt::WA_TranslucentBackground);
    QImage image(tableSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    scene.table.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    const int right = tableSize.width() - 1;
    const int bottom = tableSize.height() - 1;
    for (const QPoint corner :
         {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
        QCOMPARE(image.pixelColor(corner), QColor(Qt::red));
    for (const QPoint inside :
         {QPoint(4, 4), QPoint(right - 4, 4), QPoint(4, bottom - 4), QPoint(right - 4, bottom - 4)})
        QVERIFY(image.pixelColor(inside) != QColor(Qt::red));
}

void QueueTableTest::eachKindHasItsIdentifier_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("identifier");
    QTest::newRow("ready") << int(Kind::Ready) << QStringLiteral("RowViewWithMouseHover+Border");
    QTest::newRow("erasing") << int(Kind::Erasing) << QStringLiteral("RowViewWithBorder");
    QTest::newRow("error log") << int(Kind::ErrorLog) << QStringLiteral("RowViewWithMouseHover");
}

void QueueTableTest::eachKindHasItsIdentifier()
{
    QFETCH(int, kind);
    QFETCH(QString, identifier);
    QueueTable table{Kind(kind)};
    QCOMPARE(table.rowIdentifier(), identifier);
    const RowViewStore::View view = table.rowViewForRow(0);
    QCOMPARE(view->identifier(), identifier);
    QVERIFY(view->frame().isEmpty());
}

void QueueTableTest::rowsHaveALineAtTheirLowerEdge_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("line");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("light") << false << QColor(0xF2F3F3) << QColor(0xFCFDFD);
    QTest::newRow("dark") << true << QColor(0x22262A) << QColor(0x1B1F24);
}

void QueueTableTest::rowsHaveALineAtTheirLowerEdge()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, line);
    QFETCH(QColor, ground);
    preferences_->setDark(isDark);
    for (const Kind kind : {Kind::Ready, Kind::Erasing}) {
        Scene scene(2, kind);
        const QImage image = scene.painted();
        COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight + rowHeight - 2), ground);
        COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight + rowHeight - 1), line);
        COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight + rowHeight), ground);
        COMPARE_COLOR(image.pixelColor(betweenTexts, headHeight + 3 * rowHeight - 1), ground);
    }
}

void QueueTableTest::errorRowsHaveNoLine()
{
    Scene scene(2, Kind::ErrorLog);
    const QImage image = scene.painted();
    COMPARE_COLOR(image.pixelColor(250, headHeight + rowHeight - 1), QColor(0xFCFDFD));
}

void QueueTableTest::rowsAndHeadGrowWithTheType()
{
    const QFont before = QApplication::font();
    QFont larger = before;
    larger.setPixelSize(20);
    Scene scene(3);
    QApplication::setFont(larger);
    QTRY_COMPARE(scene.table.verticalHeader()->defaultSectionSize(), Typography::scaled(28));
    QCOMPARE(scene.table.rowRect(0).height(), 43);
    QTRY_COMPARE(scene.table.viewport()->y(), Typography::scaled(24));
    QApplication::setFont(before);
}

void QueueTableTest::theMouseShadesItsRow_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("color");
    QTest::newRow("light") << false << QColor(0xF2F3F3);
    QTest::newRow("dark") << true << QColor(0x181B20);
}

void QueueTableTest::theMouseShadesItsRow()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, color);
    preferences_->setDark(isDark);
    Scene scene;
    const QColor rest = scene.ground(0);
    scene.hover(2);
    COMPARE_COLOR(scene.ground(2), color);
    COMPARE_COLOR(scene.ground(1), rest);
    scene.hover(3);
    COMPARE_COLOR(scene.ground(2), rest);
    COMPARE_COLOR(scene.ground(3), color);
}

void QueueTableTest::aRowOfARunTakesNoShade()
{
    Scene scene(30, Kind::Erasing);
    const QColor rest = scene.ground(2);
    scene.hover(2);
    COMPARE_COLOR(scene.ground(2), rest);
}

void QueueTableTest::scrollingForgetsTheMouseUntilItMoves()
{
    Scene scene;
    const QColor rest = scene.ground(2);
    scene.hover(2);
    QVERIFY(scene.ground(2) != rest);
    scene.table.verticalScrollBar()->setValue(rowHeight);
    for (const int place : {0, 1, 2, 3})
        QCOMPARE(scene.ground(place), rest);
    scene.hover(2);
    QVERIFY(scene.ground(2) != rest);
}

void QueueTableTest::resizingForgetsTheMouseUntilItMoves()
{
    Scene scene;
    const QColor rest = scene.ground(2);
    scene.hover(2);
    QVERIFY(scene.ground(2) != rest);
    scene.table.resize(tableSize + QSize(0, 10));
    QCOMPARE(scene.ground(2), rest);
    scene.hover(2);
    QVERIFY(scene.ground(2) != rest);
}

void QueueTableTest::leavingTheTableEndsTheShade()
{
    Scene scene;
    const QColor rest = scene.ground(2);
    scene.hover(2);
    QVERIFY(scene.ground(2) != rest);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(scene.table.viewport(), &leave);
    QCOMPARE(scene.ground(2), rest);
}

void QueueTableTest::aSelectedRowHasTheColourOfTheFocus_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("focused");
    QTest::addColumn<QColor>("other");
    QTest::addColumn<QColor>("textFocused");
    QTest::addColumn<QColor>("textOther");
    QTest::newRow("light") << false << QColor(0x3D94FF) << QColor(0xD8EAFF) << QColor(0x06172B)
                           << QColor(0x1A2026);
    QTest::newRow("dark") << true << QColor(0x314F78) << QColor(0x565A5E) << QColor(0xFFFFFF)
                          << QColor(0xFFFFFF);
}

void QueueTableTest::aSelectedRowHasTheColourOfTheFocus()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, focused);
    QFETCH(QColor, other);
    QFETCH(QColor, textFocused);
    QFETCH(QColor, textOther);
    preferences_->setDark(isDark);
    Scene scene;
    scene.table.selectRow(1);
    scene.focus(&scene.table);
    COMPARE_COLOR(scene.ground(1), focused);
    QVERIFY(hasColor(scene.painted(), textRect(40, 1), textFocused));
    QVERIFY(hasColor(scene.painted(), textRect(336, 1), textFocused));
    scene.focus(&scene.other);
    COMPARE_COLOR(scene.ground(1), other);
    QVERIFY(hasColor(scene.painted(), textRect(40, 1), textOther));
    QVERIFY(hasColor(scene.painted(), textRect(336, 1), textOther));
    scene.table.setFocus();
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
    COMPARE_COLOR(scene.ground(1), other);
}

void QueueTableTest::aNewThemeIsSeenAtTheNextPainting()
{
    Scene scene;
    scene.table.selectRow(0);
    COMPARE_COLOR(scene.ground(0), QColor(0xD8EAFF));
    COMPARE_COLOR(scene.ground(1), QColor(0xFCFDFD));
    preferences_->setDark(true);
    COMPARE_COLOR(scene.ground(0), QColor(0x565A5E));
    COMPARE_COLOR(scene.ground(1), QColor(0x1B1F24));
}

void QueueTableTest::theRowInWorkIsTintedWithABar()
{
    Scene scene(5, Kind::Erasing);
    scene.item(1)->setDoubleValue(250);
    scene.model.setRowInWork(1, 1, 3);
    const QImage image = scene.painted();
    const int bottom = headHeight + 2 * rowHeight;
    const QColor blue(0x5C9CDF);
    const QColor track(0xCED9E6);
    COMPARE_COLOR(image.pixelColor(betweenTexts, bottom - 4), QColor(0xE4F0FD));
    COMPARE_COLOR(image.pixelColor(163, bottom - 3), blue);
    COMPARE_COLOR(image.pixelColor(163, bottom - 2), blue);
    COMPARE_COLOR(image.pixelColor(164, bottom - 3), track);
    COMPARE_COLOR(image.pixelColor(654, bottom - 3), track);
    // The row's line lies over the bar.
    COMPARE_COLOR(image.pixelColor(163, bottom - 1), QColor(0x5895D6));
    COMPARE_COLOR(image.pixelColor(163, bottom), QColor(0xFCFDFD));
}

void QueueTableTest::theBarIsSeenOverASelection()
{
    Scene scene(5, Kind::Erasing);
    scene.item(1)->setDoubleValue(500);
    scene.model.setRowInWork(1, 1, 3);
    scene.table.selectRow(1);
    COMPARE_COLOR(scene.ground(1), QColor(0xD8EAFF));
    COMPARE_COLOR(scene.painted().pixelColor(100, headHeight + 2 * rowHeight - 2),
                  QColor(0x5C9CDF));
}

void QueueTableTest::theNameOfTheRowInWorkIsBold()
{
    Scene scene(5, Kind::Erasing);
    const auto darkness = [](const QImage &image, const QRect &rect) {
        int sum = 0;
        for (int y = rect.top(); y <= rect.bottom() - 4; ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                sum += 255 - image.pixelColor(x, y).green();
        return sum;
    };
    const QColor ground = scene.ground(1);
    const int before = darkness(scene.painted(), textRect(64, 1));
    scene.model.setRowInWork(1, 0, 0);
    const int tint = (ground.green() - scene.ground(1).green()) * 60 * (rowHeight - 4);
    QVERIFY(darkness(scene.painted(), textRect(64, 1)) - tint > before * 11 / 10);
}

void QueueTableTest::statusIconsAreDrawnDuringARun()
{
    Scene scene(5, Kind::Erasing);
    scene.item(0)->setStatus(QueueObject::Wiped);
    scene.item(1)->setStatus(QueueObject::Failed);
    scene.model.setRowInWork(2, 1, 3);
    const QImage image = scene.painted();
    const auto iconPixel = [&image](int place, int x, int y) {
        return image.pixelColor(12 + x, headHeight + place * rowHeight + 6 + y);
    };
    COMPARE_COLOR(iconPixel(0, 8, 3), QColor(0x2A8A52));
    COMPARE_COLOR(iconPixel(1, 8, 3), QColor(0xD0453B));
    COMPARE_COLOR(iconPixel(2, 8, 8), QColor(0xE4F0FD)); // within the ring
    QVERIFY(!isAbout(iconPixel(2, 12, 4), QColor(0xE4F0FD)));
    COMPARE_COLOR(iconPixel(3, 8, 3), QColor(0xFCFDFD));
}

void QueueTableTest::noStatusIconIsDrawnBefore()
{
    Scene scene(2, Kind::Ready);
    scene.item(0)->setStatus(QueueObject::Wiped);
    const QImage image = scene.painted();
    QVERIFY(!hasColor(image, {1, headHeight, 38, rowHeight}, QColor(0x2A8A52)));
}

void QueueTableTest::progressRepaintsItsRowAlone()
{
    Scene scene(30, Kind::Erasing);
    scene.model.setRowInWork(3, 1, 3);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QTest::qWait(0);
    PaintedRegion painted(scene.table.viewport());
    scene.item(3)->setDoubleValue(500);
    scene.model.rowChanged(3);
    QTRY_VERIFY(!painted.region.isEmpty());
    QCOMPARE(painted.region.boundingRect(), scene.table.rowRect(3));
}

void QueueTableTest::aChangedRowKeepsThePlaceAndTheSelection()
{
    Scene scene(100, Kind::Erasing);
    scene.table.selectRow(40);
    scene.table.verticalScrollBar()->setValue(777);
    for (int row = 0; row < 100; ++row) {
        scene.item(row)->setStatus(QueueObject::Wiped);
        scene.model.setRowInWork(row, 1, 3);
        scene.model.rowChanged(row);
    }
    QCOMPARE(scene.table.verticalScrollBar()->value(), 777);
    QCOMPARE(scene.table.selectedOrClickedRows(), (QList<int>{40}));
}

void QueueTableTest::aRowOutOfSightRepaintsNothing()
{
    Scene scene(100, Kind::Erasing);
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QTest::qWait(0);
    PaintedRegion painted(scene.table.viewport());
    scene.model.rowChanged(50);
    scene.model.rowChanged(1);
    QTRY_VERIFY(!painted.region.isEmpty());
    QCOMPARE(painted.region.boundingRect(), scene.table.rowRect(1));
}

void QueueTableTest::atMostOneViewIsMadeForARow()
{
    Scene scene(30);
    scene.painted();
    scene.painted();
    QCOMPARE(scene.table.rowViews().shownCount(), 10U);
    QCOMPARE(scene.table.rowViews().waitingCount(), 0U);
}

void QueueTableTest::viewsAreUsedAgain()
{
    Scene scene(1000);
    scene.painted();
    for (int value = 0; value < 20000; value += 333) {
        scene.table.verticalScrollBar()->setValue(value);
        scene.painted();
    }
    // Eleven rows are seen at once where two are cut.
    const RowViewStore &views = scene.table.rowViews();
    QVERIFY(views.shownCount() + views.waitingCount() <= 12);
}

void QueueTableTest::onlyVisibleRowsAreAskedFor()
{
    Scene scene(0);
    CountingModel rows;
    scene.table.setModel(&rows);
    scene.painted();
    scene.table.verticalScrollBar()->setValue(14'000'000);
    scene.painted();
    scene.table.selectAll();
    scene.painted();
    QVERIFY(rows.asked.size() <= 22);
    QCOMPARE(scene.firstRow(), 500'000);
    scene.table.setModel(nullptr);
}

void QueueTableTest::theRowInWorkIsKeptFifth()
{
    Scene scene(100, Kind::Erasing);
    scene.table.keepRowInView(2);
    QCOMPARE(scene.firstRow(), 0);
    scene.table.keepRowInView(50);
    QCOMPARE(scene.firstRow(), 46);
    scene.table.keepRowInView(51);
    QCOMPARE(scene.firstRow(), 47);
    scene.table.keepRowInView(99);
    QCOMPARE(scene.table.verticalScrollBar()->value(), scene.table.verticalScrollBar()->maximum());
    scene.table.keepRowInView(-1);
    QCOMPARE(scene.firstRow(), 90);
}

void QueueTableTest::theUsersScrollingHoldsForFiveSeconds_data()
{
    QTest::addColumn<QString>("by");
    QTest::newRow("wheel") << QStringLiteral("wheel");
    QTest::newRow("key") << QStringLiteral("key");
    QTest::newRow("scroll bar") << QStringLiteral("bar");
}

void QueueTableTest::theUsersScrollingHoldsForFiveSeconds()
{
    QFETCH(QString, by);
    Scene scene(100, Kind::Erasing);
    qint64 now = 1000;
    scene.table.setClock([&now] { return now; });
    if (by == QStringLiteral("wheel"))
        scene.scrollByWheel(40);
    else if (by == QStringLiteral("key"))
        QTest::keyClick(&scene.table, Qt::Key_End);
    else
        scene.shownBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    const int value = scene.table.verticalScrollBar()->value();
    QVERIFY(value > 0);
    now += 4999;
    scene.table.keepRowInView(50);
    QCOMPARE(scene.table.verticalScrollBar()->value(), value);
    now += 1;
    scene.table.keepRowInView(50);
    QCOMPARE(scene.firstRow(), 46);
    // What the program scrolls holds nothing.
    scene.table.keepRowInView(60);
    QCOMPARE(scene.firstRow(), 56);
}

void QueueTableTest::aHeldScrollBarHoldsForAsLong()
{
    Scene scene(100, Kind::Erasing);
    scene.shownBar()->setSliderDown(true);
    scene.table.keepRowInView(50);
    QCOMPARE(scene.firstRow(), 0);
    scene.shownBar()->setSliderDown(false);
    scene.table.keepRowInView(50);
    QCOMPARE(scene.firstRow(), 46);
}

void QueueTableTest::theScrollBarLiesOverTheRows()
{
    Scene scene(100);
    QCOMPARE(scene.table.viewport()->geometry(),
             QRect(0, headHeight, tableSize.width(), tableSize.height() - headHeight));
    QVERIFY(scene.shownBar() && scene.shownBar()->isVisible());
    QCOMPARE(scene.shownBar()->geometry().right(), tableSize.width() - 2);
    QCOMPARE(scene.shownBar()->geometry().top(), headHeight);
}

void QueueTableTest::theScrollBarFollowsBothWays()
{
    Scene scene(100);
    QScrollBar *own = scene.table.verticalScrollBar();
    QCOMPARE(scene.shownBar()->maximum(), own->maximum());
    QCOMPARE(scene.shownBar()->pageStep(), own->pageStep());
    own->setValue(123);
    QCOMPARE(scene.shownBar()->value(), 123);
    scene.shownBar()->setValue(456);
    QCOMPARE(own->value(), 456);
    for (int number = 0; number < 50; ++number)
        scene.queue->append(itemOf("more"));
    scene.model.queueChanged();
    QTRY_COMPARE(scene.shownBar()->maximum(), 150 * rowHeight - 280);
    QCOMPARE(scene.shownBar()->value(), 456);
}

void QueueTableTest::aShortTableShowsNoScrollBar()
{
    Scene scene(10);
    QVERIFY(!scene.shownBar()->isVisible());
    scene.queue->append(itemOf("one more"));
    scene.model.queueChanged();
    QTRY_VERIFY(scene.shownBar()->isVisible());
}

void QueueTableTest::keysMoveFromRowToRow_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::newRow("down") << int(Qt::Key_Down) << 3 << 4;
    QTest::newRow("up") << int(Qt::Key_Up) << 3 << 2;
    QTest::newRow("up at the top") << int(Qt::Key_Up) << 0 << 0;
    QTest::newRow("down at the end") << int(Qt::Key_Down) << 99 << 99;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << 3 << 13;
    QTest::newRow("page up") << int(Qt::Key_PageUp) << 13 << 3;
    QTest::newRow("page up near the top") << int(Qt::Key_PageUp) << 3 << 0;
    QTest::newRow("home") << int(Qt::Key_Home) << 50 << 0;
    QTest::newRow("end") << int(Qt::Key_End) << 50 << 99;
    QTest::newRow("left") << int(Qt::Key_Left) << 3 << 3;
    QTest::newRow("right") << int(Qt::Key_Right) << 3 << 3;
}

void QueueTableTest::keysMoveFromRowToRow()
{
    QFETCH(int, key);
    QFETCH(int, from);
    QFETCH(int, to);
    Scene scene(100);
    scene.table.setCurrentIndex(scene.table.rowIndex(from));
    QTest::keyClick(&scene.table, Qt::Key(key));
    QCOMPARE(scene.table.currentIndex(), scene.table.rowIndex(to));
    QCOMPARE(scene.table.selectedOrClickedRows(), (QList<int>{to}));
    const QRect rect = scene.table.rowRect(to);
    QVERIFY(scene.table.viewport()->rect().contains(rect));
}

void QueueTableTest::lettersSearchNothing()
{
    Scene scene(100);
    scene.table.setCurrentIndex(scene.table.rowIndex(3));
    QTest::keyClicks(&scene.table, QStringLiteral("file 7"));
    QCOMPARE(scene.table.currentIndex().row(), 3);
}

void QueueTableTest::aClickTakesTheWholeRow()
{
    Scene scene;
    QTest::mouseClick(scene.table.viewport(), Qt::LeftButton, {}, QPoint(600, 2 * rowHeight + 10));
    QCOMPARE(scene.table.currentIndex(), scene.table.rowIndex(2));
    QCOMPARE(scene.table.currentIndex().column(), int(QueueTableModel::Name));
    QVERIFY(scene.table.selectionModel()->isRowSelected(2));
}

void QueueTableTest::selectionIsCopiedAsText()
{
    Scene scene;
    scene.table.selectRow(3);
    scene.table.selectionModel()->select(scene.table.rowIndex(1),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::keyClick(&scene.table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(),
             QStringLiteral("file 1\t~/Documents\t4.10 KB\nfile 3\t~/Documents\t4.10 KB"));
}

void QueueTableTest::nothingSelectedCopiesNothing()
{
    Scene scene;
    QApplication::clipboard()->setText(QStringLiteral("before"));
    scene.table.copy();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
}

void QueueTableTest::theClickedRowStandsForNoSelection()
{
    Scene scene;
    QVERIFY(scene.table.selectedOrClickedRows().isEmpty());
    QTest::mouseClick(scene.table.viewport(), Qt::LeftButton, {}, QPoint(100, 2 * rowHeight + 10));
    scene.table.clearSelection();
    QCOMPARE(scene.table.selectedOrClickedRows(), (QList<int>{2}));
    scene.table.selectRow(7);
    QCOMPARE(scene.table.selectedOrClickedRows(), (QList<int>{7}));
    scene.queue->clear();
    scene.model.queueChanged();
    scene.queue->append(itemOf("one"));
    scene.queue->append(itemOf("two"));
    scene.queue->append(itemOf("three"));
    scene.model.queueChanged();
    QVERIFY(scene.table.selectedOrClickedRows().isEmpty());
}

void QueueTableTest::anEmptyTableSaysWhy()
{
    Scene scene(0);
    const QString title = QStringLiteral("Nothing to erase was found.");
    const QString sentence = QStringLiteral("Drop something else here, or press Ctrl+O.");
    const QImage before = scene.painted();
    scene.table.setEmptyText(title, sentence);
    const QImage after = scene.painted();
    const int centre = headHeight + (tableSize.height() - headHeight) / 2;
    QVERIFY(hasColor(after, {200, centre - 22, 256, 20}, QColor(0x1A2026)));
    QVERIFY(hasColor(after, {200, centre, 256, 20}, QColor(0x505B65)));
    QCOMPARE(after.copy(0, 0, 656, centre - 22), before.copy(0, 0, 656, centre - 22));
    QCOMPARE(scene.table.accessibleDescription(), title + QLatin1Char(' ') + sentence);
}

void QueueTableTest::aTableWithRowsSaysNothingMore()
{
    Scene scene(0);
    scene.table.setEmptyText(QStringLiteral("Nothing"), QStringLiteral("at all"));
    scene.queue->append(itemOf("one"));
    scene.model.queueChanged();
    QVERIFY(scene.table.accessibleDescription().isEmpty());
    scene.queue->clear();
    scene.model.queueChanged();
    QCOMPARE(scene.table.accessibleDescription(), QStringLiteral("Nothing at all"));
}

void QueueTableTest::onlyAnElidedTextHasAToolTip()
{
    Scene scene(0);
    const QByteArray longName = QByteArray("long-").repeated(51);
    scene.queue->append(itemOf("short"));
    scene.queue->append(itemOf(longName));
    scene.model.queueChanged();
    const auto toolTipAt = [&scene](int x, int place) {
        const QPoint at(x, place * rowHeight + 10);
        QHelpEvent event(QEvent::ToolTip, at, scene.table.viewport()->mapToGlobal(at));
        QApplication::sendEvent(scene.table.viewport(), &event);
        return QToolTip::text();
    };
    const QString shown = toolTipAt(100, 1);
    QVERIFY(QToolTip::isVisible());
    QString joined = shown;
    joined.remove(QLatin1Char('\n')).remove(QChar(0x2068)).remove(QChar(0x2069));
    QCOMPARE(joined, QString::fromUtf8(longName));
    QVERIFY(shown.count(QLatin1Char('\n')) > 0);
    for (const QPoint &at : {QPoint(100, 0), QPoint(400, 1), QPoint(100, 5)}) {
        toolTipAt(at.x(), at.y());
        QTRY_VERIFY(!QToolTip::isVisible());
        toolTipAt(100, 1);
        QVERIFY(QToolTip::isVisible());
    }
    QToolTip::hideText();
}

void QueueTableTest::aScreenReaderHearsTheRow()
{
    Scene scene(3);
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&scene.table);
    QVERIFY(table && table->tableInterface());
    QCOMPARE(table->text(QAccessible::Name), QStringLiteral("Files to erase"));
    QAccessibleInterface *cell = table->tableInterface()->cellAt(1, QueueTableModel::Name);
    QVERIFY(cell);
    QCOMPARE(cell->text(QAccessible::Name),
             QStringLiteral(u"\u2068file 1\u2069, \u2068~/Documents\u2069, 4.10 KB, waiting"));
}

QTEST_MAIN(QueueTableTest)
#include "QueueTableTest.moc"
