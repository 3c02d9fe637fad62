#include "ui/WindowGeometry.h"

#include <QTest>

class WindowGeometryTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theContentFitsTheViewAndKeepsItsTopLeftCorner_data();
    void theContentFitsTheViewAndKeepsItsTopLeftCorner();
    void theFirstSizeIsTheNaturalOneAsFarAsItFits_data();
    void theFirstSizeIsTheNaturalOneAsFarAsItFits();
    void aRememberedFrameComesBackToAVisiblePlace_data();
    void aRememberedFrameComesBackToAVisiblePlace();
    void withoutAnyScreenAFrameStaysWhereItWas();
    void theOuterPixelsResize_data();
    void theOuterPixelsResize();
    void eachEdgeHasItsCursor();
    void aFrameThatFillsASideOfItsScreenIsTiled_data();
    void aFrameThatFillsASideOfItsScreenIsTiled();
    void cornersAreRoundOnlyWhereTheyMayBe();
    void framesSurviveAsText();
    void whatIsNoFrameIsNotRead_data();
    void whatIsNoFrameIsNotRead();
};

void WindowGeometryTest::theContentFitsTheViewAndKeepsItsTopLeftCorner_data()
{
    QTest::addColumn<QRect>("content");
    QTest::addColumn<QSize>("view");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("narrower, as high")
        << QRect(60, 800, 500, 300) << QSize(420, 263) << QRect(60, 800, 420, 300);
    QTest::newRow("100 higher") << QRect(60, 800, 500, 300) << QSize(500, 363)
                                << QRect(60, 800, 500, 400);
    QTest::newRow("lower") << QRect(-5, 0, 720, 557) << QSize(720, 464) << QRect(-5, 0, 720, 501);
}

void WindowGeometryTest::theContentFitsTheViewAndKeepsItsTopLeftCorner()
{
    QFETCH(QRect, content);
    QFETCH(QSize, view);
    QTEST(WindowGeometry::contentRect(content, view), "expected");
}

void WindowGeometryTest::theFirstSizeIsTheNaturalOneAsFarAsItFits_data()
{
    QTest::addColumn<QSize>("natural");
    QTest::addColumn<QSize>("available");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("a usual screen") << QSize(720, 557) << QSize(1920, 1040) << QSize(720, 557);
    QTest::newRow("a low screen") << QSize(720, 557) << QSize(1024, 540) << QSize(720, 540);
    QTest::newRow("a very low screen") << QSize(720, 557) << QSize(1024, 480) << QSize(720, 501);
    QTest::newRow("a large font") << QSize(1152, 869) << QSize(1366, 730) << QSize(1152, 730);
    QTest::newRow("a narrow screen") << QSize(720, 557) << QSize(600, 800) << QSize(640, 557);
}

void WindowGeometryTest::theFirstSizeIsTheNaturalOneAsFarAsItFits()
{
    QFETCH(QSize, natural);
    QFETCH(QSize, available);
    QTEST(WindowGeometry::firstContentSize(natural, available), "expected");
}

void WindowGeometryTest::aRememberedFrameComesBackToAVisiblePlace_data()
{
    QTest::addColumn<QRect>("saved");
    QTest::addColumn<QRect>("expected");
    QTest::newRow("on the first screen") << QRect(100, 80, 720, 557) << QRect(100, 80, 720, 557);
    QTest::newRow("on the second screen") << QRect(2000, 80, 720, 557) << QRect(2000, 80, 720, 557);
    QTest::newRow("half off to the right, its header in reach")
        << QRect(3000, 80, 720, 557) << QRect(3000, 80, 720, 557);
    QTest::newRow("half off to the left") << QRect(-600, 80, 720, 557) << QRect(-600, 80, 720, 557);
    QTest::newRow("off to the right") << QRect(5000, 80, 720, 557) << QRect(2480, 80, 720, 557);
    QTest::newRow("off to the left") << QRect(-5000, 80, 720, 557) << QRect(0, 80, 720, 557);
    QTest::newRow("its header above the screen")
        << QRect(100, -20, 720, 557) << QRect(100, 0, 720, 557);
    QTest::newRow("below the screen") << QRect(100, 3000, 720, 557) << QRect(100, 483, 720, 557);
    QTest::newRow("larger than the screen")
        << QRect(10, 10, 4000, 3000) << QRect(10, 10, 1920, 1040);
    QTest::newRow("smaller than may be") << QRect(10, 10, 5, 5) << QRect(10, 10, 640, 277);
}

void WindowGeometryTest::aRememberedFrameComesBackToAVisiblePlace()
{
    QFETCH(QRect, saved);
    const std::vector<QRect> screens{{0, 0, 1920, 1040}, {1920, 0, 1280, 1000}};
    QTEST(WindowGeometry::restoredFrame(saved, screens, {640, 277}), "expected");
}

void WindowGeometryTest::withoutAnyScreenAFrameStaysWhereItWas()
{
    const QRect frame(100, 80, 720, 557);
    QCOMPARE(WindowGeometry::restoredFrame(frame, {}, {640, 277}), frame);
}

void WindowGeometryTest::theOuterPixelsResize_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<Qt::Edges>("edges");
    const auto row = [](const char *name, QPoint point, Qt::Edges edges) {
        QTest::newRow(name) << point << edges;
    };
    row("the middle", {360, 278}, {});
    row("the sixth pixel", {5, 278}, Qt::LeftEdge);
    row("the seventh pixel", {6, 278}, {});
    row("right", {719, 278}, Qt::RightEdge);
    row("sixth from the right", {714, 278}, Qt::RightEdge);
    row("seventh from the right", {713, 278}, {});
    row("top", {360, 0}, Qt::TopEdge);
    row("bottom", {360, 556}, Qt::BottomEdge);
    row("top left", {0, 0}, Qt::TopEdge | Qt::LeftEdge);
    row("along the top, near the left", {15, 0}, Qt::TopEdge | Qt::LeftEdge);
    row("along the top, no more so near", {16, 0}, Qt::TopEdge);
    row("down the left, near the bottom", {0, 541}, Qt::BottomEdge | Qt::LeftEdge);
    row("bottom right", {719, 556}, Qt::BottomEdge | Qt::RightEdge);
    row("near both edges, but inside", {10, 10}, {});
    row("outside", {-1, 278}, {});
    row("outside, on the right", {720, 278}, {});
}

void WindowGeometryTest::theOuterPixelsResize()
{
    QFETCH(QPoint, point);
    QTEST(WindowGeometry::edgesAt(point, {720, 557}), "edges");
}

void WindowGeometryTest::eachEdgeHasItsCursor()
{
    QCOMPARE(WindowGeometry::cursorFor(Qt::LeftEdge), Qt::SizeHorCursor);
    QCOMPARE(WindowGeometry::cursorFor(Qt::BottomEdge), Qt::SizeVerCursor);
    QCOMPARE(WindowGeometry::cursorFor(Qt::TopEdge | Qt::LeftEdge), Qt::SizeFDiagCursor);
    QCOMPARE(WindowGeometry::cursorFor(Qt::BottomEdge | Qt::RightEdge), Qt::SizeFDiagCursor);
    QCOMPARE(WindowGeometry::cursorFor(Qt::TopEdge | Qt::RightEdge), Qt::SizeBDiagCursor);
    QCOMPARE(WindowGeometry::cursorFor({}), Qt::ArrowCursor);
}

void WindowGeometryTest::aFrameThatFillsASideOfItsScreenIsTiled_data()
{
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<bool>("isTiled");
    QTest::newRow("free") << QRect(100, 100, 720, 557) << false;
    QTest::newRow("in a corner") << QRect(0, 30, 720, 557) << false;
    QTest::newRow("left half") << QRect(0, 30, 960, 1010) << true;
    QTest::newRow("right half") << QRect(960, 30, 960, 1010) << true;
    QTest::newRow("upper half") << QRect(0, 30, 1920, 505) << true;
    QTest::newRow("all of it") << QRect(0, 30, 1920, 1010) << true;
}

void WindowGeometryTest::aFrameThatFillsASideOfItsScreenIsTiled()
{
    QFETCH(QRect, frame);
    QTEST(WindowGeometry::isTiled(frame, {0, 30, 1920, 1010}), "isTiled");
}

void WindowGeometryTest::cornersAreRoundOnlyWhereTheyMayBe()
{
    QCOMPARE(WindowGeometry::cornerRadius(true, false, false), 10);
    QCOMPARE(WindowGeometry::cornerRadius(false, false, false), 0);
    QCOMPARE(WindowGeometry::cornerRadius(true, true, false), 0);
    QCOMPARE(WindowGeometry::cornerRadius(true, false, true), 0);
}

void WindowGeometryTest::framesSurviveAsText()
{
    const QRect frame(-12, 40, 720, 557);
    QCOMPARE(WindowGeometry::textFromFrame(frame), QStringLiteral("-12 40 720 557"));
    QCOMPARE(WindowGeometry::frameFromText(QStringLiteral("-12 40 720 557")), frame);
}

void WindowGeometryTest::whatIsNoFrameIsNotRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("three numbers") << QStringLiteral("1 2 3");
    QTest::newRow("five numbers") << QStringLiteral("1 2 3 4 5");
    QTest::newRow("a word") << QStringLiteral("1 2 wide 4");
    QTest::newRow("no width") << QStringLiteral("1 2 0 4");
    QTest::newRow("a negative height") << QStringLiteral("1 2 3 -4");
    QTest::newRow("the lowest number") << QStringLiteral("-2147483648 2 3 4");
    QTest::newRow("far too large") << QStringLiteral("1 2 2000000000 2000000000");
}

void WindowGeometryTest::whatIsNoFrameIsNotRead()
{
    QFETCH(QString, text);
    QVERIFY(!WindowGeometry::frameFromText(text));
}

QTEST_GUILESS_MAIN(WindowGeometryTest)
#include "WindowGeometryTest.moc"
