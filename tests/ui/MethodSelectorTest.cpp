#include "ui/MethodSelector.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "engine/WipeDescriptionController.h"
#include "ui/DesignColors.h"
#include "ui/FocusRing.h"
#include "ui/MethodList.h"

#include <QAccessible>
#include <QAction>
#include <QListView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xEC, 0xEE, 0xEF);
constexpr std::int64_t dodE = 4;
constexpr std::int64_t gutmann = 10;

/// A window of the main window's size with a selector where the ready view has it.
struct Scene
{
    explicit Scene(std::int64_t method = dodE)
    {
        window.resize(720, 557);
        other = new QWidget(&window);
        other->setGeometry(500, 20, 20, 20);
        other->setFocusPolicy(Qt::StrongFocus);
        selector = new MethodSelector(&window);
        selector->setGeometry(32, 325, 296, 32);
        selector->setMethods(WipeDescriptionController().wipeDescriptions());
        selector->setCurrentMethod(method);
        window.show();
        window.activateWindow();
        selector->setFocus();
    }
    [[nodiscard]] bool isActive() { return QTest::qWaitForWindowActive(&window); }
    [[nodiscard]] QListView *view() const { return selector->list()->view(); }
    [[nodiscard]] int row() const { return view()->currentIndex().row(); }
    [[nodiscard]] QPoint rowCentre(int row) const
    {
        return view()->visualRect(view()->model()->index(row, 0)).center();
    }

    QWidget window;
    QWidget *other;
    MethodSelector *selector;
};

} // namespace

class MethodSelectorTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void itsGroundTellsItsState_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<QString>("state");
        QTest::addColumn<QColor>("expected");
        for (const bool isDark : {false, true}) {
            const char *theme = isDark ? "dark" : "light";
            const auto add = [isDark, theme](const char *state, const QColor &color) {
                QTest::addRow("%s, %s", theme, state)
                    << isDark << QString::fromLatin1(state) << color;
            };
            add("normal", DesignColors::color(ColorRole::Control, isDark));
            add("hover", DesignColors::color(ColorRole::ControlHover, isDark));
            add("pressed", DesignColors::color(ColorRole::ControlPressed, isDark));
            add("disabled", ground);
        }
    }

    void itsGroundTellsItsState()
    {
        QFETCH(bool, isDark);
        QFETCH(QString, state);
        QFETCH(QColor, expected);
        preferences_->setDark(isDark);
        MethodSelector selector;
        selector.resize(296, 32);
        selector.setAttribute(Qt::WA_UnderMouse, state == QLatin1String("hover"));
        selector.setDown(state == QLatin1String("pressed"));
        selector.setEnabled(state != QLatin1String("disabled"));

        const QImage image = PaintedWidget::of(selector, ground, 2);

        COMPARE_COLOR(image.pixelColor(100, 10), expected);
        // The arrow head's tip is 18 from the right.
        COMPARE_COLOR(image.pixelColor((296 - 18) * 2, 35),
                      DesignColors::color(ColorRole::TextSecondary, isDark));
    }

    void noShortcutOfTheWindowActsWhileTheListIsOpen()
    {
        Scene scene;
        QAction start;
        start.setShortcut(Qt::CTRL | Qt::Key_Return);
        scene.window.addAction(&start);
        QSignalSpy started(&start, &QAction::triggered);
        QSignalSpy chosen(scene.selector, &MethodSelector::methodChosen);
        QVERIFY(scene.isActive());
        scene.selector->click();
        QTest::keyClick(scene.view(), Qt::Key_Down);

        QTest::keyClick(scene.view(), Qt::Key_Return, Qt::ControlModifier);

        QCOMPARE(started.count(), 0);
        QVERIFY(!scene.selector->list()->isOpen());
        QCOMPARE(chosen.count(), 1);
        QTest::keyClick(scene.selector, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(started.count(), 1);
    }

    void itShowsTheMethodsNameAndTellsItsText()
    {
        Scene scene;
        QCOMPARE(scene.selector->currentName(), QStringLiteral("3-Pass DoD 5220.22-M (E)"));
        QCOMPARE(scene.selector->accessibleName(), QStringLiteral("Wipe method"));
        QCOMPARE(scene.selector->accessibleDescription(),
                 WipeDescriptionController().wipeDescriptions()[dodE].info);
    }

    void aMethodOutsideTheCatalogueShowsNothing_data()
    {
        QTest::addColumn<qlonglong>("method");
        QTest::newRow("0") << 0LL;
        QTest::newRow("negative") << -3LL;
        QTest::newRow("11") << 11LL;
        QTest::newRow("huge") << std::numeric_limits<qlonglong>::max();
    }

    void aMethodOutsideTheCatalogueShowsNothing()
    {
        QFETCH(qlonglong, method);
        Scene scene(method);
        QVERIFY(scene.isActive());

        QVERIFY(scene.selector->currentName().isEmpty());
        QVERIFY(scene.selector->accessibleDescription().isEmpty());
        QCOMPARE(scene.selector->currentMethod(), std::int64_t(method));
        // The list opens at its first row, and nothing is checked.
        scene.selector->click();
        QCOMPARE(scene.row(), 0);
        for (int row = 0; row < 10; ++row)
            QCOMPARE(scene.view()->model()->index(row, 0).data(Qt::CheckStateRole).toInt(),
                     int(Qt::Unchecked));
    }

    void theListLiesWithTheChosenRowOverTheSelector()
    {
        Scene scene;
        QVERIFY(scene.isActive());

        scene.selector->click();

        QCOMPARE(scene.selector->list()->cardRect(), QRect(26, 237, 616, 292));
        const QPoint row = scene.view()->mapTo(&scene.window, scene.rowCentre(3));
        QCOMPARE(row.y(), scene.selector->geometry().center().y());
    }

    void theListStaysInsideTheWindow_data()
    {
        QTest::addColumn<qlonglong>("method");
        QTest::addColumn<QPoint>("selector");
        QTest::newRow("the last row, at the top") << 10LL << QPoint(32, 60);
        QTest::newRow("the first row, at the bottom") << 1LL << QPoint(32, 500);
        QTest::newRow("at the right") << 4LL << QPoint(394, 125);
    }

    void theListStaysInsideTheWindow()
    {
        QFETCH(qlonglong, method);
        QFETCH(QPoint, selector);
        Scene scene(method);
        QVERIFY(scene.isActive());
        scene.selector->move(selector);

        scene.selector->click();

        const QRect card = scene.selector->list()->cardRect();
        QCOMPARE(card.size(), QSize(616, 292));
        QVERIFY(scene.window.rect().contains(card));
    }

    void aWindowTooSmallForTheListScrollsIt()
    {
        Scene scene(gutmann);
        scene.window.resize(500, 200);
        scene.selector->move(10, 100);
        QVERIFY(scene.isActive());

        scene.selector->click();

        QVERIFY(scene.window.rect().contains(scene.selector->list()->cardRect()));
        const QRect last = scene.view()->visualRect(scene.view()->model()->index(9, 0));
        QVERIFY(scene.view()->viewport()->rect().contains(last));
    }

    void theListGrowsWithTheFont()
    {
        QCOMPARE(MethodList::wantedRect(QRect(32, 325, 296, 32), 10, 3, 1),
                 QRect(26, 237, 616, 292));
        QCOMPARE(MethodList::wantedRect(QRect(32, 325, 474, 51), 10, 0, 1.6).size(),
                 QSize(966 + 12, 450 + 12));
    }

    void keysOpenIt_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Space") << int(Qt::Key_Space);
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Down") << int(Qt::Key_Down);
        QTest::newRow("Up") << int(Qt::Key_Up);
    }

    void keysOpenIt()
    {
        QFETCH(int, key);
        Scene scene;
        QVERIFY(scene.isActive());

        QTest::keyClick(scene.selector, Qt::Key(key));

        QVERIFY(scene.selector->list()->isOpen());
        QVERIFY(scene.view()->hasFocus());
        QCOMPARE(scene.row(), 3);
        QCOMPARE(scene.selector->currentMethod(), dodE);
    }

    void keysMoveInIt_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("row");
        QTest::newRow("down") << QStringLiteral("D") << 4;
        QTest::newRow("up") << QStringLiteral("U") << 2;
        QTest::newRow("home") << QStringLiteral("H") << 0;
        QTest::newRow("end") << QStringLiteral("E") << 9;
        QTest::newRow("up at the first") << QStringLiteral("HU") << 0;
        QTest::newRow("down at the last") << QStringLiteral("ED") << 9;
        QTest::newRow("two numbers of a name") << QStringLiteral("35") << 9;
        QTest::newRow("the name's first number") << QStringLiteral("2") << 2;
    }

    void keysMoveInIt()
    {
        QFETCH(QString, keys);
        QFETCH(int, row);
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();

        static const QHash<QChar, Qt::Key> named = {{QLatin1Char('D'), Qt::Key_Down},
                                                    {QLatin1Char('U'), Qt::Key_Up},
                                                    {QLatin1Char('H'), Qt::Key_Home},
                                                    {QLatin1Char('E'), Qt::Key_End}};
        for (const QChar key : keys) {
            if (named.contains(key))
                QTest::keyClick(scene.view(), named.value(key));
            else
                QTest::keyClick(scene.view(), key.toLatin1());
        }

        QCOMPARE(scene.row(), row);
        QCOMPARE(scene.selector->currentMethod(), dodE);
    }

    void keysChooseAndTheKeyboardGoesBack_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
        QTest::newRow("Space") << int(Qt::Key_Space);
    }

    void keysChooseAndTheKeyboardGoesBack()
    {
        QFETCH(int, key);
        Scene scene;
        QVERIFY(scene.isActive());
        QSignalSpy chosen(scene.selector, &MethodSelector::methodChosen);
        scene.selector->click();
        QTest::keyClick(scene.view(), Qt::Key_Down);

        QTest::keyClick(scene.view(), Qt::Key(key));

        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen.first().first().toLongLong(), 5LL);
        QCOMPARE(scene.selector->currentName(), QStringLiteral("4-Pass RAZER"));
        QVERIFY(!scene.selector->list()->isOpen());
        QVERIFY(scene.selector->hasFocus());
    }

    void escapeAndTabLeaveTheMethodAsItIs_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Escape") << int(Qt::Key_Escape);
        QTest::newRow("Tab") << int(Qt::Key_Tab);
    }

    void escapeAndTabLeaveTheMethodAsItIs()
    {
        QFETCH(int, key);
        Scene scene;
        QVERIFY(scene.isActive());
        QSignalSpy chosen(scene.selector, &MethodSelector::methodChosen);
        scene.selector->click();
        QTest::keyClick(scene.view(), Qt::Key_Down);

        QTest::keyClick(scene.view(), Qt::Key(key));

        QCOMPARE(chosen.count(), 0);
        QCOMPARE(scene.selector->currentMethod(), dodE);
        QVERIFY(!scene.selector->list()->isOpen());
        QVERIFY(scene.selector->hasFocus());
    }

    void aClickChooses()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        QSignalSpy chosen(scene.selector, &MethodSelector::methodChosen);
        scene.selector->click();

        QTest::mouseClick(scene.view()->viewport(), Qt::LeftButton, {}, scene.rowCentre(9));

        QCOMPARE(chosen.count(), 1);
        QCOMPARE(scene.selector->currentMethod(), gutmann);
        QVERIFY(!scene.selector->list()->isOpen());
    }

    void aClickBesideItOnlyClosesIt()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();

        const QPoint place = scene.other->geometry().center();
        QTest::mouseClick(scene.window.childAt(place), Qt::LeftButton, {}, place);

        QVERIFY(!scene.selector->list()->isOpen());
        QCOMPARE(scene.selector->currentMethod(), dodE);
        QVERIFY(!scene.other->hasFocus());
    }

    void theWheelDoesNothing()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        QSignalSpy chosen(scene.selector, &MethodSelector::methodChosen);

        QWheelEvent wheel(QPointF(10, 10), QPointF(10, 10), {}, QPoint(0, -120), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(scene.selector, &wheel);

        QCOMPARE(chosen.count(), 0);
        QCOMPARE(scene.selector->currentMethod(), dodE);
    }

    void anotherWindowClosesIt()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();

        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));

        QTRY_VERIFY(!scene.selector->list()->isOpen());
    }

    void aWindowThatGrowsClosesIt()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();

        scene.window.resize(800, 600);

        QTRY_VERIFY(!scene.selector->list()->isOpen());
    }

    void openingBuildsNothingAnew()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();
        const QAbstractItemModel *model = scene.view()->model();
        QSignalSpy inserted(model, &QAbstractItemModel::rowsInserted);
        QSignalSpy reset(model, &QAbstractItemModel::modelReset);
        QTest::keyClick(scene.view(), Qt::Key_Escape);

        scene.selector->click();

        QCOMPARE(scene.view()->model(), model);
        QCOMPARE(inserted.count() + reset.count(), 0);
    }

    void theChosenRowIsCheckedAndTheCurrentOneShaded_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void theChosenRowIsCheckedAndTheCurrentOneShaded()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();
        QTest::keyClick(scene.view(), Qt::Key_Down);

        const QImage image = PaintedWidget::of(scene.window, ground);

        const QColor menu = DesignColors::color(ColorRole::Menu, isDark);
        const QColor shaded =
            PaintedWidget::over(DesignColors::color(ColorRole::GhostHover, isDark), menu);
        COMPARE_COLOR(image.pixelColor(250, 341), menu);
        COMPARE_COLOR(image.pixelColor(250, 369), shaded);
        COMPARE_COLOR(image.pixelColor(34, 369), shaded);
        COMPARE_COLOR(image.pixelColor(30, 369), menu);
        COMPARE_COLOR(image.pixelColor(26, 400),
                      PaintedWidget::over(DesignColors::color(ColorRole::Edge, isDark), menu));
        // A mark in row 4 and in no other.
        const auto hasMark = [&image, isDark](int top) {
            for (int y = top; y < top + 28; ++y)
                for (int x = 256; x < 272; ++x)
                    if (PaintedWidget::isAbout(image.pixelColor(x, y),
                                               DesignColors::color(ColorRole::Text, isDark), 12))
                        return true;
            return false;
        };
        for (int row = 0; row < 10; ++row)
            QCOMPARE(hasMark(243 + 28 * row), row == 3);
        // The method's passes: high bytes in the second cell, 28 right of 288.
        COMPARE_COLOR(image.pixelColor(288 + 28 + 12, 341),
                      DesignColors::color(ColorRole::PassFill, isDark));
    }

    void itCastsAShadow()
    {
        preferences_->setDark(false);
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();

        const QImage image = PaintedWidget::of(scene.window, ground);

        QVERIFY(image.pixelColor(300, 530).lightness() < ground.lightness() - 25);
        QVERIFY(image.pixelColor(300, 550).lightness() < ground.lightness());
        COMPARE_COLOR(image.pixelColor(705, 200), ground);
    }

    void theListShowsNoRing()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        FocusRing *ring = FocusRing::install(&scene.window);
        scene.other->setFocus();
        scene.selector->setFocus(Qt::TabFocusReason);
        QVERIFY(ring->isVisible());

        QTest::keyClick(scene.selector, Qt::Key_Space);
        QTRY_VERIFY(!ring->isVisible());
        QTest::keyClick(scene.view(), Qt::Key_Escape);
        QTRY_VERIFY(ring->isVisible());
    }

    void screenReadersHearASelectorWithItsMethod()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(scene.selector);
        QVERIFY(heard);
        QCOMPARE(heard->role(), QAccessible::ComboBox);
        QCOMPARE(heard->text(QAccessible::Name), QStringLiteral("Wipe method"));
        QCOMPARE(heard->text(QAccessible::Value), QStringLiteral("3-Pass DoD 5220.22-M (E)"));
        QVERIFY(heard->text(QAccessible::Description).startsWith(QLatin1String("pass 1")));
        QVERIFY(!heard->state().expanded);

        heard->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());

        QVERIFY(scene.selector->isListOpen());
        QVERIFY(heard->state().expanded);
    }

    void screenReadersHearTheRows()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.selector->click();

        QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(scene.view());
        QVERIFY(heard);
        QCOMPARE(heard->role(), QAccessible::List);
        QCOMPARE(heard->text(QAccessible::Name), QStringLiteral("Wipe method"));
        QCOMPARE(heard->childCount(), 10);
        QCOMPARE(heard->child(9)->text(QAccessible::Name),
                 QStringLiteral("35-Pass Gutmann Method"));
    }
};

QTEST_MAIN(MethodSelectorTest)
#include "MethodSelectorTest.moc"
