#include "ui/FocusRing.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"
#include "ui/PlainButton.h"
#include "ui/SwitchButton.h"

#include <QLineEdit>
#include <QListView>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xEC, 0xEE, 0xEF);

/// A window with two buttons and its ring; active, the first button focused by the program.
struct Scene
{
    Scene()
    {
        window.resize(300, 200);
        first = new PlainButton(QStringLiteral("First"), &window);
        first->setGeometry(50, 40, 96, 32);
        second = new PlainButton(QStringLiteral("Second"), &window);
        second->setGeometry(50, 100, 96, 32);
        ring = FocusRing::install(&window);
        first->setFocus();
        window.show();
        window.activateWindow();
    }
    [[nodiscard]] bool isActive() { return QTest::qWaitForWindowActive(&window); }

    QWidget window;
    PlainButton *first;
    PlainButton *second;
    FocusRing *ring;
};

} // namespace

class FocusRingTest : public QObject
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

    void theReasonDecides_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<bool>("afterKeyboard");
        QTest::addColumn<bool>("afterMouse");
        QTest::newRow("Tab") << int(Qt::TabFocusReason) << true << true;
        QTest::newRow("Shift+Tab") << int(Qt::BacktabFocusReason) << true << true;
        QTest::newRow("shortcut") << int(Qt::ShortcutFocusReason) << true << true;
        QTest::newRow("mouse") << int(Qt::MouseFocusReason) << false << false;
        QTest::newRow("the program") << int(Qt::OtherFocusReason) << true << false;
        QTest::newRow("a list closes") << int(Qt::PopupFocusReason) << true << false;
        QTest::newRow("the window comes back") << int(Qt::ActiveWindowFocusReason) << true << false;
    }

    void theReasonDecides()
    {
        QFETCH(int, reason);
        QFETCH(bool, afterKeyboard);
        QFETCH(bool, afterMouse);

        QCOMPARE(FocusRing::shows(Qt::FocusReason(reason), true), afterKeyboard);
        QCOMPARE(FocusRing::shows(Qt::FocusReason(reason), false), afterMouse);
    }

    void aWindowHasOneRing()
    {
        QWidget window;
        QCOMPARE(FocusRing::install(&window), FocusRing::install(&window));
    }

    void aFirstFocusByTheProgramShowsNoRing()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        QVERIFY(!scene.ring->isVisible());
    }

    void theTabKeyShowsItAboutTheControl()
    {
        Scene scene;
        QVERIFY(scene.isActive());

        QTest::keyClick(&scene.window, Qt::Key_Tab);

        QVERIFY(scene.second->hasFocus());
        QVERIFY(scene.ring->isVisible());
        QCOMPARE(scene.ring->geometry(), QRect(46, 96, 104, 40));
    }

    void aClickTakesItAway()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        QTest::keyClick(&scene.window, Qt::Key_Tab);

        QTest::mouseClick(scene.first, Qt::LeftButton);

        QVERIFY(scene.first->hasFocus());
        QVERIFY(!scene.ring->isVisible());
    }

    void aFocusByTheProgramKeepsWhatWas()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);

        scene.first->setFocus(Qt::OtherFocusReason);

        QVERIFY(scene.ring->isVisible());
        QCOMPARE(scene.ring->geometry(), QRect(46, 36, 104, 40));
    }

    void dialogsAlwaysShowIt()
    {
        Scene scene;
        QVERIFY(scene.isActive());

        scene.ring->setAlwaysShown(true);
        QVERIFY(scene.ring->isVisible());
        QTest::mouseClick(scene.second, Qt::LeftButton);
        QVERIFY(scene.ring->isVisible());

        scene.ring->setAlwaysShown(false);
        QVERIFY(!scene.ring->isVisible());
    }

    void itIsTwoWideAndTwoAway_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void itIsTwoWideAndTwoAway()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);

        const QImage image = PaintedWidget::of(scene.window, ground);

        const QColor focus = DesignColors::color(ColorRole::Focus, isDark);
        for (const int y : {96, 97, 134, 135})
            COMPARE_COLOR(image.pixelColor(98, y), focus);
        for (const int y : {95, 98, 99, 132, 133, 136})
            COMPARE_COLOR(image.pixelColor(98, y), ground);
        // Radius 4 + 3: nothing in the corner, and at 45 degrees.
        COMPARE_COLOR(image.pixelColor(47, 97), ground);
        COMPARE_COLOR(image.pixelColor(48, 99), focus);
    }

    void itsEndsAreRoundAboutASwitch()
    {
        preferences_->setDark(false);
        QWidget window;
        SwitchButton control(&window);
        control.setGeometry(20, 20, 36, 20);
        window.resize(100, 60);
        FocusRing::install(&window)->setAlwaysShown(true);
        control.setFocus();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        const QImage image = PaintedWidget::of(window, ground);

        const QColor focus = DesignColors::color(ColorRole::Focus, false);
        COMPARE_COLOR(image.pixelColor(17, 30), focus);
        COMPARE_COLOR(image.pixelColor(18, 18), ground);
        COMPARE_COLOR(image.pixelColor(20, 21), focus);
    }

    void aTableGetsItInsideItsFrame()
    {
        preferences_->setDark(false);
        QWidget window;
        QListView table(&window);
        table.setFrameShape(QFrame::NoFrame);
        table.setGeometry(20, 20, 60, 60);
        FocusRing::setInside(&table);
        window.resize(100, 100);
        FocusRing *ring = FocusRing::install(&window);
        ring->setAlwaysShown(true);
        table.setFocus();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));

        QCOMPARE(ring->geometry(), QRect(21, 21, 58, 58));
        const QImage image = PaintedWidget::of(window, ground);
        const QColor focus = DesignColors::color(ColorRole::Focus, false);
        COMPARE_COLOR(image.pixelColor(50, 21), focus);
        COMPARE_COLOR(image.pixelColor(50, 22), focus);
    }

    void whatShowsItsFocusItselfGetsNone()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        FocusRing::setNone(scene.second);

        scene.second->setFocus(Qt::TabFocusReason);

        QVERIFY(!scene.ring->isVisible());
    }

    void itFollowsMovesAndSizes()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);

        scene.second->move(80, 60);
        QTRY_COMPARE(scene.ring->geometry(), QRect(76, 56, 104, 40));
        scene.second->resize(60, 32);
        QTRY_COMPARE(scene.ring->geometry(), QRect(76, 56, 68, 40));
    }

    void itGoesWithItsControl()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);
        QVERIFY(scene.ring->isVisible());

        delete scene.second;
        scene.first->hide();

        QTRY_VERIFY(!scene.ring->isVisible());
    }

    void itFollowsScrollingAndHidesWithWhatScrolledAway()
    {
        QWidget window;
        window.resize(200, 100);
        auto *area = new QScrollArea(&window);
        area->setGeometry(0, 0, 200, 100);
        auto *canvas = new QWidget;
        canvas->resize(150, 600);
        auto *button = new PlainButton(QStringLiteral("Stop"), canvas);
        button->setGeometry(20, 40, 80, 32);
        area->setWidget(canvas);
        FocusRing *ring = FocusRing::install(&window);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        button->setFocus(Qt::TabFocusReason);
        const QRect before = ring->geometry();

        area->verticalScrollBar()->setValue(20);
        QTRY_COMPARE(ring->geometry(), before.translated(0, -20));
        QVERIFY(ring->isVisible());

        area->verticalScrollBar()->setValue(300);
        QTRY_VERIFY(!ring->isVisible());
        area->verticalScrollBar()->setValue(0);
        QTRY_VERIFY(ring->isVisible());
    }

    void itIsAboveWhatHoldsItsControlAndBelowWhatCoversIt()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);
        const auto isAbove = [&scene](const QWidget *other) {
            const QObjectList &children = scene.window.children();
            return children.indexOf(scene.ring) > children.indexOf(other);
        };

        QCoreApplication::processEvents();
        scene.second->raise();
        QVERIFY(!isAbove(scene.second));
        QTRY_VERIFY(isAbove(scene.second));

        QWidget veil(&scene.window);
        veil.setGeometry(scene.window.rect());
        veil.show();
        veil.raise();
        QCoreApplication::processEvents();
        QVERIFY(!isAbove(&veil));
    }

    void itTakesNoMouse()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);

        QCOMPARE(scene.window.childAt(scene.second->geometry().center()), scene.second);
    }

    void anotherWindowsFocusIsNotItsOwn()
    {
        Scene scene;
        QVERIFY(scene.isActive());
        scene.second->setFocus(Qt::TabFocusReason);
        QWidget other;
        QLineEdit field(&other);
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        field.setFocus(Qt::TabFocusReason);

        QCOMPARE(scene.ring->control(), scene.second);
        QTRY_VERIFY(!scene.ring->isVisible());
    }
};

QTEST_MAIN(FocusRingTest)
#include "FocusRingTest.moc"
