#include "ui/SegmentedControl.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xFC, 0xFD, 0xFD);

} // namespace

class SegmentedControlTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static std::unique_ptr<SegmentedControl> control(int index)
    {
        auto control = std::make_unique<SegmentedControl>();
        control->setAccessibleName(QStringLiteral("Theme"));
        control->setSegments(
            {QStringLiteral("Light"), QStringLiteral("Dark"), QStringLiteral("System")});
        control->setCurrentIndex(index);
        control->resize(control->sizeHint());
        control->show();
        return control;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void threeSegmentsStandSideBySide()
    {
        const auto shown = control(0);

        QCOMPARE(shown->size(), QSize(262, 28));
        QCOMPARE(shown->segmentRect(0), QRect(2, 2, 86, 24));
        QCOMPARE(shown->segmentRect(1), QRect(88, 2, 86, 24));
        QCOMPARE(shown->segmentRect(2), QRect(174, 2, 86, 24));
    }

    void theChosenSegmentIsRaised_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void theChosenSegmentIsRaised()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const QColor on = DesignColors::color(ColorRole::SegmentOn, isDark);
        const QColor track =
            PaintedWidget::over(DesignColors::color(ColorRole::SegmentBackground, isDark), ground);

        const QImage image = PaintedWidget::of(*control(1), ground);

        COMPARE_COLOR(image.pixelColor(92, 14), on);
        COMPARE_COLOR(image.pixelColor(130, 2),
                      PaintedWidget::over(DesignColors::color(ColorRole::Edge, isDark), on));
        COMPARE_COLOR(image.pixelColor(10, 14), track);
        // Its shadow, just below.
        QVERIFY(image.pixelColor(130, 26).lightness() < track.lightness());
    }

    void aClickOnlySaysWhatIsWanted()
    {
        const auto shown = control(0);
        QSignalSpy chosen(shown.get(), &SegmentedControl::chosen);

        QTest::mouseClick(shown->childAt(shown->segmentRect(2).center()), Qt::LeftButton);

        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen.first().first().toInt(), 2);
        QCOMPARE(shown->currentIndex(), 0);
        QVERIFY(QAccessible::queryAccessibleInterface(shown.get())->child(0)->state().checked);
        QVERIFY(!QAccessible::queryAccessibleInterface(shown.get())->child(2)->state().checked);
        COMPARE_COLOR(PaintedWidget::of(*shown, ground).pixelColor(8, 14),
                      DesignColors::color(ColorRole::SegmentOn));
    }

    void aClickOnTheChosenOneCountsToo()
    {
        const auto shown = control(0);
        QSignalSpy chosen(shown.get(), &SegmentedControl::chosen);

        QTest::mouseClick(shown->childAt(shown->segmentRect(0).center()), Qt::LeftButton);

        QCOMPARE(chosen.count(), 1);
    }

    void arrowsChooseTheNeighbour_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("expected");
        QTest::newRow("right") << 0 << int(Qt::Key_Right) << 1;
        QTest::newRow("down") << 1 << int(Qt::Key_Down) << 2;
        QTest::newRow("left") << 2 << int(Qt::Key_Left) << 1;
        QTest::newRow("up") << 1 << int(Qt::Key_Up) << 0;
        QTest::newRow("home") << 2 << int(Qt::Key_Home) << 0;
        QTest::newRow("end") << 0 << int(Qt::Key_End) << 2;
        QTest::newRow("left at the first") << 0 << int(Qt::Key_Left) << -1;
        QTest::newRow("right at the last") << 2 << int(Qt::Key_Right) << -1;
        QTest::newRow("right with nothing chosen") << -1 << int(Qt::Key_Right) << 0;
        QTest::newRow("left with nothing chosen") << -1 << int(Qt::Key_Left) << 0;
        QTest::newRow("another key") << 1 << int(Qt::Key_A) << -1;
    }

    void arrowsChooseTheNeighbour()
    {
        QFETCH(int, from);
        QFETCH(int, key);
        QFETCH(int, expected);
        const auto shown = control(from);
        QSignalSpy chosen(shown.get(), &SegmentedControl::chosen);

        QTest::keyClick(shown.get(), Qt::Key(key));

        QCOMPARE(chosen.count(), expected < 0 ? 0 : 1);
        if (expected >= 0)
            QCOMPARE(chosen.first().first().toInt(), expected);
    }

    void aNumberOutsideShowsNothingAsChosen_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("below") << -1;
        QTest::newRow("beyond") << 3;
    }

    void aNumberOutsideShowsNothingAsChosen()
    {
        QFETCH(int, index);
        preferences_->setDark(false);
        const QImage image = PaintedWidget::of(*control(index), ground);

        const QColor track =
            PaintedWidget::over(DesignColors::color(ColorRole::SegmentBackground, false), ground);
        for (const int x : {1, 8, 94, 180, 260})
            COMPARE_COLOR(image.pixelColor(x, 14), track);
    }

    void disabledItHasNoGround()
    {
        const auto shown = control(0);
        shown->setEnabled(false);

        const QImage image = PaintedWidget::of(*shown, ground);

        COMPARE_COLOR(image.pixelColor(180, 14), ground);
        COMPARE_COLOR(image.pixelColor(8, 14), ground);
    }

    void screenReadersHearRadioButtons()
    {
        const auto shown = control(1);
        QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(shown.get());
        QVERIFY(heard);
        QCOMPARE(heard->text(QAccessible::Name), QStringLiteral("Theme"));
        QCOMPARE(heard->childCount(), 3);
        QCOMPARE(heard->child(1)->role(), QAccessible::RadioButton);
        QCOMPARE(heard->child(1)->text(QAccessible::Name), QStringLiteral("Dark"));
        QVERIFY(heard->child(1)->state().checked);
        QVERIFY(!heard->child(0)->state().checked);
    }
};

QTEST_MAIN(SegmentedControlTest)
#include "SegmentedControlTest.moc"
