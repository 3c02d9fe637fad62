#include "ui/ThreePartImage.h"

#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

constexpr double cap = 4;

ThreePartImage blue()
{
    return ThreePartImage::makeThreepartImage(QStringLiteral("btn_blue"), cap, 57, cap);
}

QImage drawn(const ThreePartImage &image, const QSize &size, double ratio)
{
    QImage canvas((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    image.draw(painter, QRectF(QPointF(), QSizeF(size)));
    return canvas;
}

/// How many pixels from the left a row takes to reach the colour of its middle.
int pixelsToMiddle(const QImage &image, int row)
{
    const QColor middle = image.pixelColor(image.width() / 2, row);
    int x = 0;
    while (image.pixelColor(x, row) != middle)
        ++x;
    return x;
}

} // namespace

class ThreePartImageTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void partsAreCutFromTheSource();
    void theRightCapIsCutFromTheRightEdge();
    void capsKeepTheirWidthAndTheMiddleTakesTheRest_data();
    void capsKeepTheirWidthAndTheMiddleTakesTheRest();
    void cornersKeepTheirSizeAtAnyRatio_data();
    void cornersKeepTheirSizeAtAnyRatio();
    void thereIsNoSeamBetweenTheParts_data() { cornersKeepTheirSizeAtAnyRatio_data(); }
    void thereIsNoSeamBetweenTheParts();
    void theRightEndIsTheLeftOneMirroredOnlyInTheDrawing();
    void itIsNeverMirrored();
    void atItsOwnSizeItIsTheDrawing();
    void aHigherFrameKeepsTheEdgesThickness();
    void aMissingDrawingDrawsNothing();
    void aPartWithoutWidthDrawsNothing();
};

void ThreePartImageTest::partsAreCutFromTheSource()
{
    const ThreePartImage image = blue();

    QCOMPARE(image.lp.source, QRectF(0, 0, 4, 32));
    QCOMPARE(image.mp.source, QRectF(4, 0, 57, 32));
    QCOMPARE(image.rp.source, QRectF(61, 0, 4, 32));
    QCOMPARE(image.lp.image, QStringLiteral("btn_blue"));
}

void ThreePartImageTest::theRightCapIsCutFromTheRightEdge()
{
    // Its place counts from the drawing's width, not from the two other parts.
    const ThreePartImage image =
        ThreePartImage::makeThreepartImage(QStringLiteral("btn_red"), 6, 10, 3);

    QCOMPARE(image.mp.source, QRectF(6, 0, 10, 40));
    QCOMPARE(image.rp.source, QRectF(47, 0, 3, 40));
}

void ThreePartImageTest::capsKeepTheirWidthAndTheMiddleTakesTheRest_data()
{
    QTest::addColumn<QRectF>("frame");
    QTest::addColumn<QRectF>("left");
    QTest::addColumn<QRectF>("middle");
    QTest::addColumn<QRectF>("right");
    QTest::newRow("its own size") << QRectF(0, 0, 65, 32) << QRectF(0, 0, 4, 32)
                                  << QRectF(4, 0, 57, 32) << QRectF(61, 0, 4, 32);
    QTest::newRow("wider, elsewhere") << QRectF(10, 20, 224, 32) << QRectF(10, 20, 4, 32)
                                      << QRectF(14, 20, 216, 32) << QRectF(230, 20, 4, 32);
    QTest::newRow("higher") << QRectF(0, 0, 100, 48) << QRectF(0, 0, 4, 48) << QRectF(4, 0, 92, 48)
                            << QRectF(96, 0, 4, 48);
    QTest::newRow("both caps and nothing else")
        << QRectF(0, 0, 8, 32) << QRectF(0, 0, 4, 32) << QRectF(4, 0, 0, 32) << QRectF(4, 0, 4, 32);
    QTest::newRow("too narrow") << QRectF(0, 0, 6, 32) << QRectF(0, 0, 3, 32) << QRectF(3, 0, 0, 32)
                                << QRectF(3, 0, 3, 32);
}

void ThreePartImageTest::capsKeepTheirWidthAndTheMiddleTakesTheRest()
{
    QFETCH(const QRectF, frame);
    QFETCH(const QRectF, left);
    QFETCH(const QRectF, middle);
    QFETCH(const QRectF, right);

    const ThreePartImage::Places places = blue().places(frame);

    QCOMPARE(places.lp, left);
    QCOMPARE(places.mp, middle);
    QCOMPARE(places.rp, right);
}

void ThreePartImageTest::cornersKeepTheirSizeAtAnyRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::newRow("100 %") << 1.0;
    QTest::newRow("125 %") << 1.25;
    QTest::newRow("150 %") << 1.5;
    QTest::newRow("200 %") << 2.0;
}

void ThreePartImageTest::cornersKeepTheirSizeAtAnyRatio()
{
    QFETCH(const double, ratio);

    const QImage image = drawn(blue(), {224, 32}, ratio);

    // The top row is the whole corner, four points; a row in the middle is the edge, one point.
    const int corner = pixelsToMiddle(image, 0);
    QVERIFY2(corner >= int(2 * ratio) && corner <= int(std::ceil(cap * ratio)),
             qPrintable(QString::number(corner)));
    const int edge = pixelsToMiddle(image, image.height() / 2);
    QVERIFY2(edge >= int(ratio) && edge <= int(std::ceil(ratio)),
             qPrintable(QString::number(edge)));
    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
}

void ThreePartImageTest::thereIsNoSeamBetweenTheParts()
{
    QFETCH(const double, ratio);

    const QImage image = drawn(blue(), {224, 32}, ratio);

    const int row = image.height() / 2;
    const QColor middle = image.pixelColor(image.width() / 2, row);
    const int inset = int(std::ceil(2 * ratio));
    for (int x = inset; x < image.width() - inset; ++x)
        QCOMPARE(image.pixelColor(x, row), middle);
}

void ThreePartImageTest::theRightEndIsTheLeftOneMirroredOnlyInTheDrawing()
{
    const QImage image = drawn(blue(), {100, 32}, 2);

    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(199, 0).alpha(), 0);
    QCOMPARE(image.pixelColor(199, 32), image.pixelColor(0, 32));
}

void ThreePartImageTest::itIsNeverMirrored()
{
    // Its light line is at the top, whichever way the platform's coordinates run.
    const QImage image = drawn(blue(), {100, 32}, 1);

    QVERIFY(image.pixelColor(50, 0).lightness() > image.pixelColor(50, 31).lightness());
    QVERIFY(image.pixelColor(50, 2).lightness() > image.pixelColor(50, 29).lightness());
}

void ThreePartImageTest::atItsOwnSizeItIsTheDrawing()
{
    const QImage image = drawn(blue(), {65, 32}, 1);

    const auto isNear = [&](int y, const QColor &expected) {
        const QColor color = image.pixelColor(32, y);
        return std::abs(color.red() - expected.red()) <= 2 &&
               std::abs(color.green() - expected.green()) <= 2 &&
               std::abs(color.blue() - expected.blue()) <= 2;
    };
    QVERIFY(isNear(1, QColor(0x35, 0x76, 0xC6)));
    QVERIFY(isNear(30, QColor(0x2D, 0x6A, 0xB8)));
    QVERIFY(isNear(31, QColor(0x22, 0x55, 0x96))); // the edge over the fill
}

void ThreePartImageTest::aHigherFrameKeepsTheEdgesThickness()
{
    const QImage image = drawn(blue(), {100, 51}, 1);

    QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    const QColor edge = image.pixelColor(50, 50);
    const QColor above = image.pixelColor(50, 49);
    QVERIFY(above.blue() - edge.blue() > 20);
    QVERIFY(std::abs(image.pixelColor(50, 48).blue() - above.blue()) <= 2);
}

void ThreePartImageTest::aMissingDrawingDrawsNothing()
{
    const ThreePartImage image =
        ThreePartImage::makeThreepartImage(QStringLiteral("no_such_picture"), 4, 57, 4);

    const QImage canvas = drawn(image, {65, 32}, 1);

    QCOMPARE(canvas.pixelColor(32, 16).alpha(), 0);
    QCOMPARE(canvas.pixelColor(2, 16).alpha(), 0);
}

void ThreePartImageTest::aPartWithoutWidthDrawsNothing()
{
    const ThreePartImage image =
        ThreePartImage::makeThreepartImage(QStringLiteral("btn_blue"), 0, 57, 4);

    const QImage canvas = drawn(image, {65, 32}, 1);

    // The middle begins at once, with what stands at the drawing's left edge.
    QCOMPARE(image.places(QRectF(0, 0, 65, 32)).mp, QRectF(0, 0, 61, 32));
    QVERIFY(canvas.pixelColor(0, 16).alpha() == 255);
}

QTEST_MAIN(ThreePartImageTest)
#include "ThreePartImageTest.moc"
