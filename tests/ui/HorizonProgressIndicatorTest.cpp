#include "ui/HorizonProgressIndicator.h"

#include "ui/ProgressTrack.h"
#include "ui/ThemedPreferences.h"

#include <QAccessible>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const QColor blue(92, 156, 223);

QImage shown(QWidget &widget, const QColor &ground, double ratio = 1)
{
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(ground);
    QPainter painter(&image);
    widget.render(&painter, {}, {}, QWidget::DrawChildren);
    return image;
}

/// Pixels of a row, from the left, that have this colour; nothing of it may stand further right.
int filledFromTheLeft(const QImage &image, int row, const QColor &color)
{
    int width = 0;
    while (width < image.width() && image.pixelColor(width, row) == color)
        ++width;
    for (int x = width; x < image.width(); ++x) {
        if (image.pixelColor(x, row) == color)
            return -1;
    }
    return width;
}

} // namespace

class HorizonProgressIndicatorTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theFillsWidth_data();
    void theFillsWidth();
    void thirtyOfAHundredFillSixtyOfTwoHundred();
    void nothingIsDrawnAtZero();
    void nothingIsDrawnWithoutAUsableMaximum_data();
    void nothingIsDrawnWithoutAUsableMaximum();
    void moreThanTheMaximumFillsTheBar();
    void theFillReachesTheUpperAndTheLowerEdge();
    void nothingIsDrawnBesideTheFill();
    void theColourDoesNotFollowTheTheme();
    void isSharpAtTwiceTheRatio();
    void screenReadersHearThePercentageCut();
    void theTrackIsTheGroundBehindTheWholeBar();
    void theTrackFollowsTheTheme();

  private:
    ThemedPreferences preferences_;
};

void HorizonProgressIndicatorTest::theFillsWidth_data()
{
    QTest::addColumn<double>("bounds");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("width");
    QTest::newRow("30 of 100 in 200") << 200.0 << 100.0 << 30.0 << 60.0;
    QTest::newRow("0 of 100") << 200.0 << 100.0 << 0.0 << 0.0;
    QTest::newRow("all") << 200.0 << 100.0 << 100.0 << 200.0;
    QTest::newRow("more than all") << 200.0 << 100.0 << 150.0 << 300.0;
    QTest::newRow("a fraction") << 656.0 << 3.0 << 1.0 << 656.0 / 3;
    QTest::newRow("below zero") << 200.0 << 100.0 << -1.0 << 0.0;
    QTest::newRow("both below zero") << 200.0 << -100.0 << -30.0 << 60.0;
    QTest::newRow("0 of 0") << 200.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("some of 0") << 200.0 << 0.0 << 5.0 << 0.0;
    QTest::newRow("of no number") << 200.0 << notANumber << 5.0 << 0.0;
    QTest::newRow("no number") << 200.0 << 100.0 << notANumber << 0.0;
    QTest::newRow("of infinity") << 200.0 << infinity << 5.0 << 0.0;
    QTest::newRow("infinity") << 200.0 << 100.0 << infinity << 0.0;
    QTest::newRow("infinity of infinity") << 200.0 << infinity << infinity << 0.0;
    QTest::newRow("no bounds") << 0.0 << 100.0 << 30.0 << 0.0;
}

void HorizonProgressIndicatorTest::theFillsWidth()
{
    QFETCH(const double, bounds);
    QFETCH(const double, maximum);
    QFETCH(const double, value);
    QFETCH(const double, width);

    QCOMPARE(HorizonProgressIndicator::fillWidth(bounds, maximum, value), width);
}

void HorizonProgressIndicatorTest::thirtyOfAHundredFillSixtyOfTwoHundred()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    bar.setMaxValue(100);
    bar.setDoubleValue(30);

    QCOMPARE(filledFromTheLeft(shown(bar, Qt::red), 4, blue), 60);
}

void HorizonProgressIndicatorTest::nothingIsDrawnAtZero()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    const QImage image = shown(bar, Qt::red);

    for (int x = 0; x < 200; ++x)
        QCOMPARE(image.pixelColor(x, 4), QColor(Qt::red));
}

void HorizonProgressIndicatorTest::nothingIsDrawnWithoutAUsableMaximum_data()
{
    QTest::addColumn<double>("maximum");
    QTest::newRow("0") << 0.0;
    QTest::newRow("no number") << notANumber;
    QTest::newRow("infinity") << infinity;
}

void HorizonProgressIndicatorTest::nothingIsDrawnWithoutAUsableMaximum()
{
    QFETCH(const double, maximum);
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    bar.setDoubleValue(30);
    bar.setMaxValue(maximum);

    const QImage image = shown(bar, Qt::red);

    for (int x = 0; x < 200; ++x)
        QCOMPARE(image.pixelColor(x, 4), QColor(Qt::red));
}

void HorizonProgressIndicatorTest::moreThanTheMaximumFillsTheBar()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);

    for (const double value : {100.0, 101.0, 1e18, 1e305}) {
        bar.setDoubleValue(value);
        QCOMPARE(filledFromTheLeft(shown(bar, Qt::red), 4, blue), 200);
    }
}

void HorizonProgressIndicatorTest::theFillReachesTheUpperAndTheLowerEdge()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    bar.setDoubleValue(50);

    const QImage image = shown(bar, Qt::red);

    for (int y = 0; y < 8; ++y)
        QCOMPARE(filledFromTheLeft(image, y, blue), 100);
}

void HorizonProgressIndicatorTest::nothingIsDrawnBesideTheFill()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    bar.setDoubleValue(50);

    const QImage image = shown(bar, Qt::red);

    for (int y = 0; y < 8; ++y) {
        for (int x = 100; x < 200; ++x)
            QCOMPARE(image.pixelColor(x, y), QColor(Qt::red));
    }
}

void HorizonProgressIndicatorTest::theColourDoesNotFollowTheTheme()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    bar.setDoubleValue(50);
    preferences_.setDark(true);

    const QImage image = shown(bar, Qt::red);
    preferences_.setDark(false);

    QCOMPARE(image.pixelColor(20, 4), blue);
}

void HorizonProgressIndicatorTest::isSharpAtTwiceTheRatio()
{
    HorizonProgressIndicator bar;
    bar.resize(200, 8);
    bar.setDoubleValue(30.25);

    QCOMPARE(filledFromTheLeft(shown(bar, Qt::red, 2), 8, blue), 121);
}

void HorizonProgressIndicatorTest::screenReadersHearThePercentageCut()
{
    HorizonProgressIndicator bar;
    bar.setMaxValue(1000);
    bar.setDoubleValue(419.9);

    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&bar);
    QVERIFY(seen);
    QCOMPARE(seen->role(), QAccessible::ProgressBar);
    QVERIFY(seen->valueInterface());
    QCOMPARE(seen->valueInterface()->currentValue().toInt(), 41);

    bar.setMaxValue(0);
    QCOMPARE(seen->valueInterface()->currentValue().toInt(), 0);
}

void HorizonProgressIndicatorTest::theTrackIsTheGroundBehindTheWholeBar()
{
    ProgressTrack track;
    track.resize(656, 8);
    track.indicator()->setDoubleValue(25);

    const QImage image = shown(track, Qt::white);

    QCOMPARE(track.indicator()->geometry(), QRect(0, 0, 656, 8));
    for (const int y : {0, 7}) {
        QCOMPARE(filledFromTheLeft(image, y, blue), 164);
        // #101820 at 10 % over white, up to the square ends.
        const QColor ground = image.pixelColor(655, y);
        QVERIFY(std::abs(ground.red() - 231) <= 1 && std::abs(ground.blue() - 233) <= 1);
    }
}

void HorizonProgressIndicatorTest::theTrackFollowsTheTheme()
{
    ProgressTrack track;
    track.resize(100, 8);
    preferences_.setDark(true);

    const QColor ground = shown(track, Qt::black).pixelColor(50, 4);
    preferences_.setDark(false);

    QVERIFY(std::abs(ground.red() - 23) <= 1); // white at 9 % over black
}

QTEST_MAIN(HorizonProgressIndicatorTest)
#include "HorizonProgressIndicatorTest.moc"
