#include "ui/RunningBar.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QTest>

#include <memory>

namespace {

constexpr QColor ground(0xE6, 0xE8, 0xEA);

} // namespace

class RunningBarTest : public QObject
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

    void theBlockGoesFromOneEndToTheOther_data()
    {
        QTest::addColumn<double>("turn");
        QTest::addColumn<double>("x");
        QTest::newRow("start: just outside") << 0.0 << -96.0;
        QTest::newRow("whole inside") << 96.0 / 448 << 0.0;
        QTest::newRow("half") << 0.5 << 128.0;
        QTest::newRow("end: just outside") << 1.0 << 352.0;
    }

    void theBlockGoesFromOneEndToTheOther()
    {
        QFETCH(double, turn);
        QFETCH(double, x);

        const QRectF block = RunningBar::block(turn, QSizeF(352, 4), 96);

        QCOMPARE(block.x(), x);
        QCOMPARE(block.size(), QSizeF(96, 4));
    }

    void itRunsWhileItIsSeen()
    {
        RunningBar bar;
        bar.resize(352, 4);
        QVERIFY(!bar.isRunning());
        bar.show();
        QVERIFY(bar.isRunning());
        bar.hide();
        QVERIFY(!bar.isRunning());
    }

    void stillItIsAFullTrack_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void stillItIsAFullTrack()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        RunningBar bar;
        bar.resize(352, 4);
        const QColor track =
            PaintedWidget::over(DesignColors::color(ColorRole::Track, isDark), ground);
        COMPARE_COLOR(PaintedWidget::of(bar, ground).pixelColor(176, 2), track);

        bar.setStill(true);
        bar.show();

        QVERIFY(!bar.isRunning());
        const QImage image = PaintedWidget::of(bar, ground);
        for (const int x : {0, 176, 351})
            COMPARE_COLOR(image.pixelColor(x, 2), DesignColors::color(ColorRole::Blue));
    }

    void itRunsAgainWhenMotionIsWantedAgain()
    {
        RunningBar bar;
        bar.setStill(true);
        bar.show();
        bar.setStill(false);
        QVERIFY(bar.isRunning());
    }
};

QTEST_MAIN(RunningBarTest)
#include "RunningBarTest.moc"
