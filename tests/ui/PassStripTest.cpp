#include "ui/PassStrip.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QTest>

#include <memory>

namespace {

using Kind = PassStrip::CellKind;

constexpr QColor ground(0xEC, 0xEE, 0xEF);
constexpr float frameOpacity = 0.55F;
constexpr float toComeOpacity = 0.45F;

QColor fainter(QColor color, float opacity)
{
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

QString letters(const QList<Kind> &kinds)
{
    QString letters;
    for (const Kind kind : kinds)
        letters += QStringLiteral("0FRP").at(int(kind));
    return letters;
}

} // namespace

class PassStripTest : public QObject
{
    Q_OBJECT

  private:
    std::unique_ptr<ThemedPreferences> preferences_;

    static void addThemes()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    /// DoD: zeros in cell 1, high bytes in cell 2, random in cell 3.
    static std::unique_ptr<PassStrip> strip(std::int64_t method)
    {
        auto strip = std::make_unique<PassStrip>();
        strip->setMethod(method);
        strip->resize(336, strip->sizeHint().height());
        return strip;
    }

  private Q_SLOTS:
    void initTestCase()
    {
        preferences_ = std::make_unique<ThemedPreferences>();
        PaintedWidget::useFontOf(13);
    }
    void cleanupTestCase() { preferences_.reset(); }

    void cellsAreAsWideAsFits_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("cellWidth");
        QTest::addColumn<double>("gap");
        QTest::newRow("one pass") << 1 << 336.0 << 1.0 << 24.0 << 4.0;
        QTest::newRow("seven passes") << 7 << 336.0 << 1.0 << 24.0 << 4.0;
        QTest::newRow("ten passes keep the wide gap") << 10 << 336.0 << 1.0 << 24.0 << 4.0;
        QTest::newRow("eleven passes are closer") << 11 << 336.0 << 1.0 << 24.0 << 2.0;
        QTest::newRow("33 passes") << 33 << 336.0 << 1.0 << 8.0 << 2.0;
        QTest::newRow("35 passes") << 35 << 336.0 << 1.0 << 7.0 << 2.0;
        QTest::newRow("exactly what fits") << 35 << 313.0 << 1.0 << 7.0 << 2.0;
        QTest::newRow("one less than fits") << 35 << 312.0 << 1.0 << 6.0 << 2.0;
        QTest::newRow("less room for few") << 7 << 100.0 << 1.0 << 10.0 << 4.0;
        QTest::newRow("no room") << 35 << 20.0 << 1.0 << 1.0 << 2.0;
        QTest::newRow("a larger font") << 3 << 538.0 << 1.6 << 38.0 << 6.0;
        QTest::newRow("a larger font, many") << 35 << 538.0 << 1.6 << 12.0 << 3.0;
    }

    void cellsAreAsWideAsFits()
    {
        QFETCH(int, count);
        QFETCH(double, width);
        QFETCH(double, scale);
        QFETCH(double, cellWidth);
        QFETCH(double, gap);

        const QList<QRectF> cells = PassStrip::cells(count, QRectF(10, 5, width, 16), scale);

        QCOMPARE(cells.size(), count);
        for (int i = 0; i < count; ++i)
            QCOMPARE(cells.at(i), QRectF(10 + i * (cellWidth + gap), 5, cellWidth, 16));
    }

    void cellsEndAtTheRightWhenAlignedThere()
    {
        const QList<QRectF> cells = PassStrip::cells(3, QRectF(248, 0, 336, 16), 1, Qt::AlignRight);

        QCOMPARE(cells.first().left(), 504.0);
        QCOMPARE(cells.last().right(), 584.0);
    }

    void eachPassHasItsDrawing_data()
    {
        QTest::addColumn<qlonglong>("method");
        QTest::addColumn<QString>("expected");
        QTest::newRow("zero") << 1LL << QStringLiteral("0");
        QTest::newRow("random") << 2LL << QStringLiteral("R");
        QTest::newRow("GOST") << 3LL << QStringLiteral("0R");
        QTest::newRow("DoD E") << 4LL << QStringLiteral("0FR");
        QTest::newRow("RAZER") << 5LL << QStringLiteral("RRR0");
        QTest::newRow("Schneier") << 6LL << QStringLiteral("F0RRRRR");
        QTest::newRow("VSITR") << 7LL << QStringLiteral("0F0F0FR");
        QTest::newRow("DoD ECE") << 8LL << QStringLiteral("0FRR0FR");
        QTest::newRow("Pfitzner") << 9LL << QString(33, QLatin1Char('R'));
        QTest::newRow("Gutmann: plain bytes are patterns of its table")
            << 10LL
            << QString(4, QLatin1Char('R')) + QString(27, QLatin1Char('P')) +
                   QString(4, QLatin1Char('R'));
    }

    void eachPassHasItsDrawing()
    {
        QFETCH(qlonglong, method);
        QFETCH(QString, expected);

        QCOMPARE(letters(PassStrip::kinds(method)), expected);
    }

    void anUnknownMethodHasNoCells_data()
    {
        QTest::addColumn<qlonglong>("method");
        QTest::newRow("no method") << 0LL;
        QTest::newRow("negative") << -1LL;
        QTest::newRow("beyond the catalogue") << 11LL;
        QTest::newRow("far beyond") << std::numeric_limits<qlonglong>::max();
    }

    void anUnknownMethodHasNoCells()
    {
        QFETCH(qlonglong, method);
        const auto shown = strip(method);

        QVERIFY(PassStrip::kinds(method).isEmpty());
        QVERIFY(PassStrip::cellsOf(method, QRectF(0, 0, 336, 16)).isEmpty());
        const QImage image = PaintedWidget::of(*shown, ground);
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                QCOMPARE(image.pixelColor(x, y), ground);
    }

    void atRestTheCellsShowWhatTheyWrite_data() { addThemes(); }

    void atRestTheCellsShowWhatTheyWrite()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const QColor line = DesignColors::color(ColorRole::PassLine, isDark);
        const QColor fill = DesignColors::color(ColorRole::PassFill, isDark);

        const QImage image = PaintedWidget::of(*strip(4), ground, 2);

        COMPARE_COLOR(image.pixelColor(24, 1), PaintedWidget::over(line, ground));
        COMPARE_COLOR(image.pixelColor(24, 16), ground);
        COMPARE_COLOR(image.pixelColor(56 + 24, 16), fill);
        COMPARE_COLOR(image.pixelColor(112 + 24, 0),
                      PaintedWidget::over(fainter(line, frameOpacity), ground));
        // The first dot is 3.5 from the left and 2.9 from above; right of it is none.
        COMPARE_COLOR(image.pixelColor(112 + 7, 5), fill);
        COMPARE_COLOR(image.pixelColor(112 + 12, 5), ground);
        // In the second row the dots are offset.
        COMPARE_COLOR(image.pixelColor(112 + 12, 12), fill);
        COMPARE_COLOR(image.pixelColor(112 + 7, 12), ground);
        // No bar below.
        COMPARE_COLOR(image.pixelColor(56 + 24, 40), ground);
    }

    void patternsAreRisingStrokes()
    {
        preferences_->setDark(false);
        const QColor fill = DesignColors::color(ColorRole::PassFill, false);

        const QImage image = PaintedWidget::of(*strip(10), ground, 4);

        // The fifth cell is 36 from the left and 7 wide; the middle stroke goes through its middle.
        const int left = 36 * 4;
        COMPARE_COLOR(image.pixelColor(left + 14, 32), fill);
        COMPARE_COLOR(image.pixelColor(left + 20, 27), fill);
        COMPARE_COLOR(image.pixelColor(left + 8, 37), fill);
        COMPARE_COLOR(image.pixelColor(left + 20, 37), ground);
    }

    void aLargerFontHasAsManyDots()
    {
        preferences_->setDark(false);
        const QColor fill = DesignColors::color(ColorRole::PassFill, false);
        PaintedWidget::useFontOf(19);
        const double unit = 19 / 13.0;
        const auto shown = strip(2);

        const QImage image = PaintedWidget::of(*shown, ground, 4);
        PaintedWidget::useFontOf(13);

        // The fourth dot of the first row.
        const double y = std::round(16 * unit) / 2 - 5.1 * unit;
        COMPARE_COLOR(image.pixelColor(int(18.5 * unit * 4), int(y * 4)), fill);
    }

    void inVeryNarrowCellsStrokesStillRise()
    {
        preferences_->setDark(false);
        const QColor fill = DesignColors::color(ColorRole::PassFill, false);
        PassStrip narrow;
        narrow.setMethod(10);
        narrow.resize(35 * 4 + 34 * 2, 21);

        const QImage image = PaintedWidget::of(narrow, ground, 8);

        // The fifth cell is 24 from the left and 4 wide; its middle stroke.
        COMPARE_COLOR(image.pixelColor(26 * 8, 8 * 8), fill);
        const auto isStroke = [&](double x, double y) {
            return PaintedWidget::isAbout(image.pixelColor(int(x * 8), int(y * 8)), fill, 40);
        };
        QVERIFY(isStroke(26.8, 7.3));
        QVERIFY(!isStroke(26.8, 8.7));
    }

    void inARunWhatIsReachedIsBlue_data() { addThemes(); }

    void inARunWhatIsReachedIsBlue()
    {
        QFETCH(bool, isDark);
        preferences_->setDark(isDark);
        const QColor blue = DesignColors::color(ColorRole::Blue);
        const QColor fill = DesignColors::color(ColorRole::PassFill, isDark);
        const auto shown = strip(4);
        shown->setCurrentPass(2);

        const QImage image = PaintedWidget::of(*shown, ground, 2);

        COMPARE_COLOR(image.pixelColor(24, 1), blue);
        COMPARE_COLOR(image.pixelColor(56 + 24, 16), blue);
        COMPARE_COLOR(image.pixelColor(112 + 7, 5),
                      PaintedWidget::over(fainter(fill, toComeOpacity), ground));
    }

    void aBarLiesUnderTheCurrentCellOnly()
    {
        const QColor blue = DesignColors::color(ColorRole::Blue);
        const auto shown = strip(4);
        shown->setCurrentPass(2);
        QCOMPARE(shown->height(), 21);

        const QImage image = PaintedWidget::of(*shown, ground);

        COMPARE_COLOR(image.pixelColor(28 + 12, 18), ground);
        COMPARE_COLOR(image.pixelColor(28 + 12, 19), blue);
        COMPARE_COLOR(image.pixelColor(28 + 12, 20), blue);
        COMPARE_COLOR(image.pixelColor(12, 19), ground);
        COMPARE_COLOR(image.pixelColor(56 + 12, 19), ground);
        COMPARE_COLOR(image.pixelColor(26, 19), ground);
    }

    void screenReadersHearThePass()
    {
        const auto shown = strip(4);
        QCOMPARE(shown->accessibleName(), QStringLiteral("Passes"));
        QCOMPARE(shown->accessibleDescription(), QStringLiteral("3"));

        shown->setCurrentPass(2);

        QCOMPARE(shown->accessibleDescription(), QStringLiteral("Pass 2 of 3"));
    }
};

QTEST_MAIN(PassStripTest)
#include "PassStripTest.moc"
