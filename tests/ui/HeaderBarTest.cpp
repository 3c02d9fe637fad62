#include "ui/HeaderBar.h"

#include "ui/DesignColors.h"
#include "ui/HeaderButton.h"
#include "ui/PaintedWidget.h"
#include "ui/ThemedPreferences.h"
#include "ui/VTLLine.h"

#include <QSignalSpy>
#include <QTest>

namespace {

constexpr QColor ground(240, 240, 240);

/// Counts what it asks the window system for.
class DraggedHeader : public HeaderBar
{
  public:
    int drags = 0;
    void performWindowDrag() override { ++drags; }
};

/// The columns that are darker than the ground, within these of row 18.
std::pair<int, int> inkSpan(const QImage &picture, int from, int to)
{
    int first = -1;
    int last = -1;
    for (int x = from; x < to; ++x) {
        for (int y = 6; y < 30; ++y) {
            if (picture.pixelColor(x, y).lightness() > 200)
                continue;
            first = first < 0 ? x : first;
            last = x;
        }
    }
    return {first, last};
}

} // namespace

class HeaderBarTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();

    void theButtonsStandInTheirPlaces();
    void theRightPartKeepsToTheRightEdge();
    void theErrorLogIsThereOnlyWithEntries();
    void theErrorLogCountsUpTo99();
    void theTitleMakesRoomForTheErrorLog();
    void theTitleIsCentred();
    void aLongTitleStaysInItsPlace();
    void theTitleStopsGrowingAt16Pixels();
    void theTitleOfAnInactiveWindowStepsBack();
    void theSeparatorIsTheLastRow();
    void buttonsSayTheirNameAndShortcut();
    void theHeaderMovesTheWindow();
    void aClickOnTheHeaderMovesNothing();

  private:
    ThemedPreferences preferences_;
};

void HeaderBarTest::initTestCase()
{
    PaintedWidget::useFontOf(13);
}

void HeaderBarTest::theButtonsStandInTheirPlaces()
{
    HeaderBar header;
    header.setErrorCount(2);
    header.resize(720, 37);
    header.show();
    QCOMPARE(header.height(), 37);
    QCOMPARE(header.btnAddFiles()->geometry(), QRect(8, 4, 28, 28));
    QCOMPARE(header.btnErrorLog()->geometry(), QRect(516, 4, 44, 28));
    QCOMPARE(header.btnPreferences()->geometry(), QRect(564, 4, 28, 28));
    QCOMPARE(header.btnMenu()->geometry(), QRect(596, 4, 28, 28));
    QCOMPARE(header.btnMinimise()->geometry(), QRect(648, 4, 28, 28));
    QCOMPARE(header.btnClose()->geometry(), QRect(684, 4, 28, 28));
    QList<VTLLine *> lines = header.findChildren<VTLLine *>();
    lines.removeOne(header.toolBarSeparator());
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first()->geometry(), QRect(635, 10, 1, 16));
    QCOMPARE(lines.first()->name(), QStringLiteral("BtnInfoLine"));
}

void HeaderBarTest::theRightPartKeepsToTheRightEdge()
{
    HeaderBar header;
    header.resize(1000, 37);
    header.show();
    QCOMPARE(header.btnAddFiles()->x(), 8);
    QCOMPARE(header.btnClose()->x(), 964);
    QCOMPARE(header.btnPreferences()->x(), 844);
}

void HeaderBarTest::theErrorLogIsThereOnlyWithEntries()
{
    HeaderBar header;
    header.show();
    QVERIFY(header.btnErrorLog()->isHidden());
    header.setErrorCount(1);
    QVERIFY(header.btnErrorLog()->isVisible());
    QCOMPARE(header.btnErrorLog()->badgeText(), QStringLiteral("1"));
    QCOMPARE(header.btnErrorLog()->accessibleName(), QStringLiteral("Error log, 1 entry"));
    header.setErrorCount(2);
    QCOMPARE(header.btnErrorLog()->accessibleName(), QStringLiteral("Error log, 2 entries"));
    header.setErrorCount(0);
    QVERIFY(header.btnErrorLog()->isHidden());
}

void HeaderBarTest::theErrorLogCountsUpTo99()
{
    HeaderBar header;
    header.resize(720, 37);
    header.show();
    header.setErrorCount(99);
    QCOMPARE(header.btnErrorLog()->badgeText(), QStringLiteral("99"));
    QCOMPARE(header.btnErrorLog()->geometry(), QRect(516, 4, 44, 28));
    header.setErrorCount(100);
    QCOMPARE(header.btnErrorLog()->badgeText(), QStringLiteral("99+"));
    QCOMPARE(header.btnErrorLog()->geometry(), QRect(508, 4, 52, 28));
}

void HeaderBarTest::theTitleMakesRoomForTheErrorLog()
{
    HeaderBar header;
    header.resize(720, 37);
    header.show();
    const QRect place = header.titleTextField()->geometry();
    QCOMPARE(place.left(), 184);
    QCOMPARE(place.right() + 1, 536);
    header.setErrorCount(1);
    QCOMPARE(header.titleTextField()->geometry().left(), 208);
    QCOMPARE(header.titleTextField()->geometry().right() + 1, 512);
}

void HeaderBarTest::theTitleIsCentred()
{
    HeaderBar header;
    header.resize(720, 37);
    header.titleTextField()->setText(QStringLiteral("HHHHHHHH"));
    header.show();
    QVERIFY(QTest::qWaitForWindowActive(&header));
    const auto [first, last] = inkSpan(PaintedWidget::of(header, ground), 184, 536);
    QVERIFY(first > 0);
    QVERIFY2(std::abs(first + last - 719) <= 3, qPrintable(QString::number(first + last)));
}

void HeaderBarTest::aLongTitleStaysInItsPlace()
{
    HeaderBar header;
    header.resize(720, 37);
    header.titleTextField()->setText(QString(200, QLatin1Char('H')));
    header.show();
    const QImage picture = PaintedWidget::of(header, ground);
    QCOMPARE(inkSpan(picture, 40, 184), std::pair(-1, -1));
    QCOMPARE(inkSpan(picture, 537, 560), std::pair(-1, -1));
    // Elided at the end: three dots are lower than a letter.
    QVERIFY(picture.pixelColor(532, 14).lightness() > 200);
}

void HeaderBarTest::theTitleStopsGrowingAt16Pixels()
{
    const auto height = [](int fontPixels) {
        PaintedWidget::useFontOf(fontPixels);
        HeaderBar header;
        header.resize(720, 37);
        header.titleTextField()->setText(QStringLiteral("HHHH"));
        header.show();
        const auto [first, last] = inkSpan(PaintedWidget::of(header, ground), 184, 536);
        PaintedWidget::useFontOf(13);
        return last - first;
    };
    QVERIFY(height(16) > height(13));
    QCOMPARE(height(20), height(16));
}

void HeaderBarTest::theTitleOfAnInactiveWindowStepsBack()
{
    HeaderBar header;
    header.resize(720, 37);
    header.titleTextField()->setText(QString(12, QChar(u'\u2588')));
    header.show();
    QVERIFY(QTest::qWaitForWindowActive(&header));
    const auto middle = [&header] { return PaintedWidget::of(header, ground).pixelColor(360, 18); };
    COMPARE_COLOR(middle(), DesignColors::color(ColorRole::Text));
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_VERIFY(!header.isActiveWindow());
    COMPARE_COLOR(middle(), DesignColors::color(ColorRole::TextSecondary));
}

void HeaderBarTest::theSeparatorIsTheLastRow()
{
    HeaderBar header;
    header.resize(720, 37);
    header.show();
    QCOMPARE(header.toolBarSeparator()->geometry(), QRect(0, 36, 720, 1));
    const QImage picture = PaintedWidget::of(header, ground);
    COMPARE_COLOR(picture.pixelColor(300, 36), PaintedWidget::over(QColor(0, 0, 0, 26), ground));
    COMPARE_COLOR(picture.pixelColor(300, 35), ground);
}

void HeaderBarTest::buttonsSayTheirNameAndShortcut()
{
    const HeaderBar header;
    QCOMPARE(header.btnAddFiles()->accessibleName(), QStringLiteral("Add files and folders"));
    QCOMPARE(header.btnPreferences()->accessibleName(), QStringLiteral("Preferences"));
    QCOMPARE(header.btnMenu()->accessibleName(), QStringLiteral("Main menu"));
    QCOMPARE(header.btnMinimise()->accessibleName(), QStringLiteral("Minimise"));
    QCOMPARE(header.btnClose()->accessibleName(), QStringLiteral("Close window"));
    QCOMPARE(header.btnAddFiles()->toolTip(), QStringLiteral("Add files and folders (Ctrl+O)"));
    QCOMPARE(header.btnMenu()->toolTip(), QStringLiteral("Main menu (F10)"));
}

void HeaderBarTest::theHeaderMovesTheWindow()
{
    DraggedHeader header;
    header.resize(720, 37);
    header.titleTextField()->setText(QStringLiteral("Finished"));
    header.show();
    QVERIFY(QTest::qWaitForWindowExposed(&header));
    QTest::mousePress(header.windowHandle(), Qt::LeftButton, {}, {360, 18});
    QTest::mouseMove(header.windowHandle(), {400, 30});
    QTRY_COMPARE(header.drags, 1);
    QTest::mouseRelease(header.windowHandle(), Qt::LeftButton, {}, {400, 30});
}

void HeaderBarTest::aClickOnTheHeaderMovesNothing()
{
    DraggedHeader header;
    header.resize(720, 37);
    header.show();
    QVERIFY(QTest::qWaitForWindowExposed(&header));
    QTest::mouseClick(&header, Qt::LeftButton, {}, {300, 18});
    QTest::mouseMove(&header, {400, 30});
    QCoreApplication::processEvents();
    QCOMPARE(header.drags, 0);
}

QTEST_MAIN(HeaderBarTest)
#include "HeaderBarTest.moc"
