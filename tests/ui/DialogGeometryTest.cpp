#include "ui/DialogGeometry.h"

#include <QTest>

using namespace DialogGeometry;

Q_DECLARE_METATYPE(std::optional<Reference>)
Q_DECLARE_METATYPE(std::optional<double>)
Q_DECLARE_METATYPE(Span)

class DialogGeometryTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aWindowGrowsDownwardsByWhatItsTextIsHigher_data();
    void aWindowGrowsDownwardsByWhatItsTextIsHigher();
    void aDialogIsPlacedOverItsWindow_data();
    void aDialogIsPlacedOverItsWindow();
    void buttonsFillTheirRowFromTheRight_data();
    void buttonsFillTheirRowFromTheRight();
    void threeButtonsEndWhereTheLastBegins();
    void largerFontsWidenTheRow();
    void aClickedButtonHasItsCode_data();
    void aClickedButtonHasItsCode();
    void theNextButtonWrapsAtBothEnds_data();
    void theNextButtonWrapsAtBothEnds();
};

void DialogGeometryTest::aWindowGrowsDownwardsByWhatItsTextIsHigher_data()
{
    QTest::addColumn<QSizeF>("fitting");
    QTest::addColumn<QRectF>("field");
    QTest::addColumn<QRect>("window");
    const QRectF field(88, 52, 328, 60);
    const QRect window(100, 200, 440, 178);
    QTest::newRow("shorter") << QSizeF(328, 20) << field << window;
    QTest::newRow("shorter and narrower") << QSizeF(100, 59.5) << field << window;
    QTest::newRow("as high") << QSizeF(328, 60) << field << window;
    QTest::newRow("higher by less than a pixel") << QSizeF(328, 60.9) << field << window;
    QTest::newRow("one line more")
        << QSizeF(328, 80) << QRectF(88, 52, 328, 80) << QRect(100, 200, 440, 198);
    QTest::newRow("the width, too")
        << QSizeF(300, 160) << QRectF(88, 52, 300, 160) << QRect(100, 200, 440, 278);
    QTest::newRow("a fraction more")
        << QSizeF(328, 80.75) << QRectF(88, 51.25, 328, 80.75) << QRect(100, 200, 440, 198);
}

void DialogGeometryTest::aWindowGrowsDownwardsByWhatItsTextIsHigher()
{
    QFETCH(QSizeF, fitting);
    const Growth growth = grown({88, 52, 328, 60}, fitting, {100, 200, 440, 178});
    QTEST(growth.field, "field");
    QTEST(growth.window, "window");
}

void DialogGeometryTest::aDialogIsPlacedOverItsWindow_data()
{
    QTest::addColumn<QSize>("dialog");
    QTest::addColumn<std::optional<Reference>>("reference");
    QTest::addColumn<QRect>("screen");
    QTest::addColumn<QRect>("usable");
    QTest::addColumn<QPoint>("place");
    const QSize dialog(440, 178);
    const QRect screen(0, 0, 1920, 1080);
    const auto row = [&](const char *name, const QRect &over, bool isMain, const QRect &usable,
                         const QPoint &place) {
        QTest::newRow(name) << dialog << std::optional<Reference>({over, isMain}) << screen
                            << usable << place;
    };
    const QRect window(600, 200, 720, 557);
    row("40 below the main window's top", window, true, screen, {740, 240});
    row("60 below another window's top", window, false, screen, {740, 260});
    row("half pixels go to the left", {600, 200, 721, 557}, true, screen, {740, 240});
    row("a window narrower than the dialog", {600, 200, 100, 90}, true, screen, {430, 240});
    row("pushed up to the screen's lower edge", {600, 1000, 720, 557}, true, screen, {740, 902});
    row("exactly at the lower edge", {600, 862, 720, 557}, true, screen, {740, 902});
    row("pushed up to a panel below", {600, 1000, 720, 557}, true, {0, 0, 1920, 1040}, {740, 862});
    row("pushed down from above the screen", {600, -500, 720, 557}, true, screen, {740, 0});
    row("pushed down to a panel above", {600, -500, 720, 557}, true, {0, 30, 1920, 1050},
        {740, 30});
    // The bound is the height, not the upper edge.
    row("a panel below holds as far from the top", {600, -500, 720, 557}, true, {0, 0, 1920, 1040},
        {740, 40});
    row("pushed in from the left", {-700, 200, 720, 557}, true, screen, {0, 240});
    row("pushed in to a panel at the left", {-700, 200, 720, 557}, true, {64, 0, 1856, 1080},
        {64, 240});
    row("pushed in from the right", {1800, 200, 720, 557}, true, screen, {1480, 240});
    row("pushed in from a panel at the right", {1800, 200, 720, 557}, true, {0, 0, 1856, 1080},
        {1416, 240});
    // The bound is the width, not the right edge.
    row("a panel at the left holds as far from the right", {1800, 200, 720, 557}, true,
        {64, 0, 1856, 1080}, {1416, 240});

    const QRect second(1920, 100, 1280, 1024);
    QTest::newRow("on a screen beside another")
        << dialog << std::optional<Reference>({QRect(2200, 300, 720, 557), true}) << second
        << second << QPoint(2340, 340);
    QTest::newRow("at the lower edge of that screen")
        << dialog << std::optional<Reference>({QRect(2200, 1000, 720, 557), true}) << second
        << second << QPoint(2340, 946);
    // Its lower edge below the screen's: the upper bound wins.
    QTest::newRow("higher than the screen")
        << QSize(440, 1200) << std::optional<Reference>({window, true}) << screen
        << QRect(0, 0, 1920, 1040) << QPoint(740, 40);
    QTest::newRow("without a window in the middle")
        << dialog << std::optional<Reference>() << screen << QRect(0, 30, 1920, 1050)
        << QPoint(740, 466);
}

void DialogGeometryTest::aDialogIsPlacedOverItsWindow()
{
    QFETCH(QSize, dialog);
    QFETCH(std::optional<Reference>, reference);
    QFETCH(QRect, screen);
    QFETCH(QRect, usable);
    QFETCH(QPoint, place);
    QCOMPARE(placed(dialog, reference, screen, usable), QRect(place, dialog));
}

void DialogGeometryTest::buttonsFillTheirRowFromTheRight_data()
{
    QTest::addColumn<double>("windowWidth");
    QTest::addColumn<std::optional<double>>("lastLeft");
    QTest::addColumn<double>("fitted");
    QTest::addColumn<Span>("span");
    const auto row = [](const char *name, double window, std::optional<double> last, double fitted,
                        const Span &span) {
        QTest::newRow(name) << window << last << fitted << span;
    };
    row("a short first one", 440, {}, 30, {349, 81});
    row("a wide first one", 440, {}, 120, {310, 120});
    row("the second ends where the first begins", 440, 349, 40, {268, 81});
    row("exactly to the left edge", 440, {}, 430, {0, 430});
    row("one pixel beyond it", 440, {}, 431, {10, 420});
    row("far beyond it", 440, {}, 900, {10, 420});
    row("a second one beyond it", 440, 268, 300, {10, 258});
    row("less than a pixel beyond it", 440, {}, 430.5, {10, 420.5});
    row("after one that takes the row", 440, 10, 81, {10, 0});
    row("after one that begins at the edge", 440, 0, 81, {10, -10});
    row("the anchor is cut to whole pixels", 440.9, {}, 30, {349, 81});
    row("and so is that of the next", 440, 300.9, 81, {219, 81});
}

void DialogGeometryTest::buttonsFillTheirRowFromTheRight()
{
    QFETCH(double, windowWidth);
    QFETCH(std::optional<double>, lastLeft);
    QFETCH(double, fitted);
    QTEST(buttonSpan(windowWidth, lastLeft, fitted, {81, 10}), "span");
}

void DialogGeometryTest::threeButtonsEndWhereTheLastBegins()
{
    const RowMeasure row{81, 10};
    const Span first = buttonSpan(440, {}, 81, row);
    const Span second = buttonSpan(440, first.left, 100, row);
    const Span third = buttonSpan(440, second.left, 140, row);
    QCOMPARE(first.left + first.width, 430.0);
    QCOMPARE(second.left + second.width, first.left);
    QCOMPARE(third.left + third.width, second.left);
}

void DialogGeometryTest::largerFontsWidenTheRow()
{
    QCOMPARE(buttonSpan(704, {}, 30, {130, 16}), (Span{558, 130}));
    QCOMPARE(buttonSpan(704, 558, 30, {130, 16}), (Span{428, 130}));
}

void DialogGeometryTest::aClickedButtonHasItsCode_data()
{
    QTest::addColumn<std::int64_t>("clicked");
    QTest::addColumn<int>("code");
    QTest::newRow("first") << std::int64_t(1) << 1000;
    QTest::newRow("second") << std::int64_t(2) << 1001;
    QTest::newRow("third") << std::int64_t(3) << 1002;
    QTest::newRow("cancel") << std::int64_t(-1) << -1;
    QTest::newRow("none") << std::int64_t(0) << 0;
    QTest::newRow("a fourth") << std::int64_t(4) << 0;
    QTest::newRow("any other") << std::int64_t(-2) << 0;
    QTest::newRow("more than 32 bits") << (std::int64_t(1) << 32 | 1) << 0;
}

void DialogGeometryTest::aClickedButtonHasItsCode()
{
    QFETCH(std::int64_t, clicked);
    QTEST(int(responseFor(clicked)), "code");
}

void DialogGeometryTest::theNextButtonWrapsAtBothEnds_data()
{
    QTest::addColumn<std::int64_t>("active");
    QTest::addColumn<bool>("towardsLeft");
    QTest::addColumn<std::int64_t>("next");
    const auto row = [](const char *name, std::int64_t active, bool left, std::int64_t next) {
        QTest::newRow(name) << active << left << next;
    };
    row("left of the first", 1, true, 2);
    row("left of the leftmost is the rightmost", 3, true, 1);
    row("right of the second", 2, false, 1);
    row("right of the rightmost is the leftmost", 1, false, 3);
    row("none yet, to the left", 0, true, 1);
    row("none yet, to the right", 0, false, 3);
    row("a number beyond the last, to the left", 7, true, 1);
}

void DialogGeometryTest::theNextButtonWrapsAtBothEnds()
{
    QFETCH(std::int64_t, active);
    QFETCH(bool, towardsLeft);
    QTEST(nextButton(active, 3, towardsLeft), "next");
}

QTEST_MAIN(DialogGeometryTest)
#include "DialogGeometryTest.moc"
