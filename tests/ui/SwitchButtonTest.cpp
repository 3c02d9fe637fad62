#include "ui/SwitchButton.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xEC, 0xEE, 0xEF);
constexpr float disabledOpacity = 0.4F;

QColor faint(QColor color)
{
    color.setAlphaF(disabledOpacity);
    return PaintedWidget::over(color, ground);
}

} // namespace

class SwitchButtonTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static std::unique_ptr<SwitchButton> button(bool isOn)
    {
        auto button = std::make_unique<SwitchButton>(QStringLiteral("Include beta releases"));
        button->resize(button->sizeHint());
        button->setChecked(isOn);
        return button;
    }
    static void addThemes()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void onIsFilledWithALargeKnob_data() { addThemes(); }
    void onIsFilledWithALargeKnob()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const auto shown = button(true);
        QCOMPARE(shown->size(), QSize(36, 20));

        const QImage image = PaintedWidget::of(*shown, ground);

        const QColor on = DesignColors::color(ColorRole::SwitchOn, isDark);
        COMPARE_COLOR(image.pixelColor(10, 10), on);
        COMPARE_COLOR(image.pixelColor(18, 1), on);
        COMPARE_COLOR(image.pixelColor(26, 10), Qt::white);
        COMPARE_COLOR(image.pixelColor(20, 10), Qt::white);
        COMPARE_COLOR(image.pixelColor(17, 10), on);
        COMPARE_COLOR(image.pixelColor(0, 0), ground);
    }

    void offIsAFrameWithASmallKnob_data() { addThemes(); }
    void offIsAFrameWithASmallKnob()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);

        const QImage image = PaintedWidget::of(*button(false), ground);

        const QColor off = DesignColors::color(ColorRole::SwitchOff, isDark);
        COMPARE_COLOR(image.pixelColor(18, 0), off);
        COMPARE_COLOR(image.pixelColor(18, 1), off);
        COMPARE_COLOR(image.pixelColor(18, 2), ground);
        COMPARE_COLOR(image.pixelColor(10, 10), off);
        COMPARE_COLOR(image.pixelColor(6, 10), off);
        COMPARE_COLOR(image.pixelColor(3, 10), ground);
        COMPARE_COLOR(image.pixelColor(26, 10), ground);
    }

    void disabledItIsFaintAndItsKnobStillSeen()
    {
        preferences_->setDark(false);
        const auto on = button(true);
        const auto off = button(false);
        on->setEnabled(false);
        off->setEnabled(false);

        const QImage onImage = PaintedWidget::of(*on, ground);
        COMPARE_COLOR(onImage.pixelColor(10, 10),
                      faint(DesignColors::color(ColorRole::SwitchOn, false)));
        COMPARE_COLOR(onImage.pixelColor(26, 10), faint(Qt::white));
        COMPARE_COLOR(PaintedWidget::of(*off, ground).pixelColor(18, 1),
                      faint(DesignColors::color(ColorRole::SwitchOff, false)));
    }

    void spaceTurnsItAndReturnDoesNot()
    {
        const auto shown = button(false);
        QSignalSpy toggled(shown.get(), &SwitchButton::toggled);

        QTest::keyClick(shown.get(), Qt::Key_Space);
        QVERIFY(shown->isChecked());
        QTest::keyClick(shown.get(), Qt::Key_Return);
        QVERIFY(shown->isChecked());
        QTest::keyClick(shown.get(), Qt::Key_Space);
        QVERIFY(!shown->isChecked());
        QCOMPARE(toggled.count(), 2);
    }

    void aClickTurnsIt()
    {
        const auto shown = button(false);
        QTest::mouseClick(shown.get(), Qt::LeftButton);
        QVERIFY(shown->isChecked());
    }

    void screenReadersHearACheckBox()
    {
        const auto shown = button(true);
        QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(shown.get());
        QVERIFY(heard);
        QCOMPARE(heard->role(), QAccessible::CheckBox);
        QCOMPARE(heard->text(QAccessible::Name), QStringLiteral("Include beta releases"));
        QVERIFY(heard->state().checked);
    }
};

QTEST_MAIN(SwitchButtonTest)
#include "SwitchButtonTest.moc"
