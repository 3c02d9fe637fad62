#include "ui/ScanningSheet.h"

#include "ui/ColorProperties.h"
#include "ui/DesignColors.h"
#include "ui/FocusRing.h"
#include "ui/PaintedWidget.h"
#include "ui/PlainButton.h"
#include "ui/RunningBar.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr QColor ground(255, 255, 255);

/// A window's body with the sheet over it.
struct Scene
{
    Scene()
    {
        window.resize(720, 520);
        new PlainButton(QStringLiteral("First"), &window);
        before = new PlainButton(QStringLiteral("Below"), &window);
        sheet = new ScanningSheet(&window);
        sheet->setGeometry(window.rect());
        window.show();
        window.activateWindow();
    }
    void setReducedMotion()
    {
        sheet->setPrefersReducedMotion([] { return true; });
    }
    /// The widget that holds the texts.
    [[nodiscard]] QWidget *paper() const { return sheet->btnStopScanning()->parentWidget(); }

    QWidget window;
    PlainButton *before;
    ScanningSheet *sheet;
};

} // namespace

class ScanningSheetTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void theSheetHangsFromTheTopInTheMiddle_data();
    void theSheetHangsFromTheTopInTheMiddle();
    void itsPartsStandInTheirPlaces();
    void itGrowsWithTheFontWhileItStands();
    void itShowsWhatWasFound();
    void aScreenReaderHearsHowMuchWasFound();
    void itSlidesInAndTellsWhenItHasGone();
    void aSheetClosedOnItsWayInTurnsBack();
    void aSheetOpenedOnItsWayOutStays();
    void withReducedMotionItIsThereAtOnceAndTheEndComesLater();
    void openingTwiceIsOpeningOnce();
    void stopHasTheFocusAndItsRing();
    void theFocusComesBack();
    void escapeAndReturnStop();
    void aStopThatIsDisabledIsNotPressedByEscape();
    void itsGroundIsThatOfDialogsUnderAScrim();

  private:
    ThemedPreferences preferences_;
};

void ScanningSheetTest::init()
{
    PaintedWidget::useFontOf(13);
}

void ScanningSheetTest::theSheetHangsFromTheTopInTheMiddle_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("progress");
    QTest::addColumn<QRect>("rect");
    QTest::newRow("open") << 720 << 1.0 << QRect(160, 0, 400, 168);
    QTest::newRow("half") << 720 << 0.5 << QRect(160, -84, 400, 168);
    QTest::newRow("closed") << 720 << 0.0 << QRect(160, -168, 400, 168);
    QTest::newRow("in a wide window") << 1000 << 1.0 << QRect(300, 0, 400, 168);
}

void ScanningSheetTest::theSheetHangsFromTheTopInTheMiddle()
{
    QFETCH(int, width);
    QFETCH(double, progress);
    QTEST(ScanningSheet::sheetRect(width, {400, 168}, progress), "rect");
}

void ScanningSheetTest::itsPartsStandInTheirPlaces()
{
    Scene scene;
    scene.setReducedMotion();
    scene.sheet->open();
    QCOMPARE(scene.paper()->geometry(), QRect(160, 0, 400, 168));
    QCOMPARE(scene.sheet->btnStopScanning()->geometry(), QRect(280, 120, 96, 32));
    QCOMPARE(scene.paper()->findChild<RunningBar *>()->geometry(), QRect(24, 100, 352, 4));
    QMap<QString, QRect> texts;
    for (const TextLabel *label : scene.paper()->findChildren<TextLabel *>())
        texts[label->text()] = label->geometry();
    QCOMPARE(texts[QStringLiteral("Looking through your folders")].topLeft(), QPoint(24, 20));
    QCOMPARE(texts[QStringLiteral("Files found")].topLeft(), QPoint(24, 50));
    QCOMPARE(texts[QStringLiteral("Size")].topLeft(), QPoint(200, 50));
    QCOMPARE(texts[QStringLiteral("Stopping keeps what was found.")].topLeft(), QPoint(24, 128));
}

void ScanningSheetTest::itGrowsWithTheFontWhileItStands()
{
    Scene scene;
    scene.setReducedMotion();
    scene.sheet->open();
    PaintedWidget::useFontOf(20);
    QTRY_COMPARE(scene.paper()->size(), QSize(Typography::scaled(400), Typography::scaled(168)));
    QCOMPARE(scene.paper()->x(), (scene.window.width() - scene.paper()->width()) / 2);
    QCOMPARE(scene.sheet->btnStopScanning()->height(), Typography::scaled(32));
    QCOMPARE(Typography::scaled(32), 49);
    for (const TextLabel *label : scene.paper()->findChildren<TextLabel *>())
        QCOMPARE(label->height(), Typography::lineHeight(label->style()));
}

void ScanningSheetTest::itShowsWhatWasFound()
{
    Scene scene;
    scene.sheet->setFound(QStringLiteral("12,480"), QStringLiteral("38.02 GB"));
    QMap<QString, QRect> texts;
    for (const TextLabel *label : scene.paper()->findChildren<TextLabel *>())
        texts[label->text()] = label->geometry();
    QCOMPARE(texts.value(QStringLiteral("12,480")).topLeft(), QPoint(24, 64));
    QCOMPARE(texts.value(QStringLiteral("38.02 GB")).topLeft(), QPoint(200, 64));
}

void ScanningSheetTest::aScreenReaderHearsHowMuchWasFound()
{
    Scene scene;
    scene.sheet->setFound(QStringLiteral("1"), QStringLiteral("2 Bytes"));
    scene.sheet->setFound(QStringLiteral("12,480"), QStringLiteral("38.02 GB"));
    QMap<QString, QString> heard;
    for (TextLabel *label : scene.paper()->findChildren<TextLabel *>()) {
        const QAccessibleInterface *element = QAccessible::queryAccessibleInterface(label);
        heard[element->text(QAccessible::Name)] = element->text(QAccessible::Description);
    }
    QCOMPARE(heard.value(QStringLiteral("Found files")), QStringLiteral("12,480"));
    QVERIFY(heard.contains(QStringLiteral("38.02 GB")));
}

void ScanningSheetTest::itSlidesInAndTellsWhenItHasGone()
{
    Scene scene;
    QSignalSpy closed(scene.sheet, &ScanningSheet::closed);
    scene.sheet->open();
    QVERIFY(scene.sheet->isOpen());
    QVERIFY(scene.paper()->y() < 0);
    QTRY_COMPARE(scene.paper()->y(), 0);
    scene.sheet->close();
    QVERIFY(!scene.sheet->isOpen());
    QVERIFY(scene.sheet->isShown());
    QVERIFY(scene.sheet->isVisible());
    QVERIFY(closed.isEmpty());
    QTRY_COMPARE(closed.size(), 1);
    QVERIFY(!scene.sheet->isShown());
    QVERIFY(scene.sheet->isHidden());
}

void ScanningSheetTest::aSheetClosedOnItsWayInTurnsBack()
{
    Scene scene;
    QSignalSpy closed(scene.sheet, &ScanningSheet::closed);
    scene.sheet->open();
    QTRY_VERIFY(scene.paper()->y() > -168);
    const int before = scene.paper()->y();
    scene.sheet->close();
    QVERIFY(std::abs(scene.paper()->y() - before) < 60);
    QTRY_COMPARE(closed.size(), 1);
    QVERIFY(scene.sheet->isHidden());
}

void ScanningSheetTest::aSheetOpenedOnItsWayOutStays()
{
    Scene scene;
    QSignalSpy closed(scene.sheet, &ScanningSheet::closed);
    scene.sheet->open();
    QTRY_COMPARE(scene.paper()->y(), 0);
    scene.sheet->close();
    QTRY_VERIFY(scene.paper()->y() < 0);
    scene.sheet->open();
    QTRY_COMPARE(scene.paper()->y(), 0);
    QVERIFY(closed.isEmpty());
    QVERIFY(scene.sheet->isVisible());
}

void ScanningSheetTest::withReducedMotionItIsThereAtOnceAndTheEndComesLater()
{
    Scene scene;
    scene.setReducedMotion();
    QSignalSpy closed(scene.sheet, &ScanningSheet::closed);
    scene.sheet->open();
    QCOMPARE(scene.paper()->y(), 0);
    scene.sheet->close();
    QVERIFY(closed.isEmpty());
    QTRY_COMPARE(closed.size(), 1);
    QVERIFY(scene.sheet->isHidden());
}

void ScanningSheetTest::openingTwiceIsOpeningOnce()
{
    Scene scene;
    scene.setReducedMotion();
    QSignalSpy opened(scene.sheet, &ScanningSheet::opened);
    QSignalSpy closed(scene.sheet, &ScanningSheet::closed);
    scene.sheet->open();
    scene.sheet->open();
    QCOMPARE(opened.size(), 1);
    scene.sheet->close();
    scene.sheet->close();
    QTRY_COMPARE(closed.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(closed.size(), 1);
}

void ScanningSheetTest::stopHasTheFocusAndItsRing()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowActive(&scene.window));
    FocusRing *ring = FocusRing::install(&scene.window);
    scene.setReducedMotion();
    scene.sheet->open();
    QCOMPARE(scene.window.focusWidget(), scene.sheet->btnStopScanning());
    QTRY_VERIFY(ring->isVisible());
    QCOMPARE(ring->control(), scene.sheet->btnStopScanning());
}

void ScanningSheetTest::theFocusComesBack()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowActive(&scene.window));
    scene.before->setFocus();
    scene.sheet->open();
    scene.sheet->close();
    QTRY_VERIFY(!scene.sheet->isShown());
    QCOMPARE(scene.window.focusWidget(), scene.before);
}

void ScanningSheetTest::escapeAndReturnStop()
{
    Scene scene;
    QVERIFY(QTest::qWaitForWindowActive(&scene.window));
    scene.sheet->open();
    QSignalSpy stops(scene.sheet, &ScanningSheet::stopClicked);
    QTest::keyClick(scene.sheet->btnStopScanning(), Qt::Key_Escape);
    QCOMPARE(stops.size(), 1);
    QTest::keyClick(scene.sheet->btnStopScanning(), Qt::Key_Return);
    QCOMPARE(stops.size(), 2);
    QTest::mouseClick(scene.sheet->btnStopScanning(), Qt::LeftButton);
    QCOMPARE(stops.size(), 3);
}

void ScanningSheetTest::aStopThatIsDisabledIsNotPressedByEscape()
{
    Scene scene;
    scene.sheet->open();
    scene.sheet->btnStopScanning()->setEnabled(false);
    QSignalSpy stops(scene.sheet, &ScanningSheet::stopClicked);
    QTest::keyClick(scene.sheet, Qt::Key_Escape);
    QVERIFY(stops.isEmpty());
}

void ScanningSheetTest::itsGroundIsThatOfDialogsUnderAScrim()
{
    for (const bool isDark : {false, true}) {
        preferences_.setDark(isDark);
        Scene scene;
        scene.setReducedMotion();
        scene.sheet->open();
        const QImage picture = PaintedWidget::of(*scene.sheet, ground);
        const QString key =
            ColorProperties::key(QStringLiteral("DefaultAlertView"), QLatin1String("bg"), isDark);
        COMPARE_COLOR(picture.pixelColor(170, 10), ColorProperties::color(key).value());
        const QColor scrim = PaintedWidget::over(DesignColors::color(ColorRole::Scrim), ground);
        COMPARE_COLOR(picture.pixelColor(5, 510), scrim);
        // The shadow beside the sheet, and a rounded lower corner.
        QVERIFY(picture.pixelColor(156, 100).lightness() < scrim.lightness());
        QVERIFY(picture.pixelColor(160, 167) != ColorProperties::color(key).value());
        COMPARE_COLOR(picture.pixelColor(160, 3), ColorProperties::color(key).value());
    }
    preferences_.setDark(false);
}

QTEST_MAIN(ScanningSheetTest)
#include "ScanningSheetTest.moc"
