#include "ui/DefaultTableRowView.h"

#include "ThemedPreferences.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QTest>

namespace {

const QString hoverRow = QStringLiteral("RowViewWithMouseHover");
const QString hoverAndBorderRow = QStringLiteral("RowViewWithMouseHover+Border");
const QString borderRow = QStringLiteral("RowViewWithBorder");
constexpr QSize rowSize(20, 10);
constexpr int tolerance = 1;

/// The row over a ground of this colour.
QImage painted(DefaultTableRowView &row, const QColor &below, double ratio = 1)
{
    QImage image(rowSize * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(below);
    QPainter painter(&image);
    row.paint(painter);
    return image;
}

QColor centre(DefaultTableRowView &row, const QColor &below = Qt::red)
{
    return painted(row, below).pixelColor(rowSize.width() / 2, rowSize.height() / 2);
}

QColor belowEdge(DefaultTableRowView &row, const QColor &below)
{
    return painted(row, below).pixelColor(rowSize.width() / 2, rowSize.height() - 1);
}

bool isAbout(const QColor &color, const QColor &expected)
{
    const auto isNear = [](int one, int other) { return std::abs(one - other) <= tolerance; };
    return isNear(color.red(), expected.red()) && isNear(color.green(), expected.green()) &&
           isNear(color.blue(), expected.blue());
}

/// What is left of a colour under black of this alpha.
QColor darkened(const QColor &color, double alpha)
{
    const auto part = [alpha](int value) { return int(std::lround(value * (1 - alpha))); };
    return {part(color.red()), part(color.green()), part(color.blue())};
}

/// A row as the tables use it, and a record of its wishes to be drawn.
struct Scene
{
    explicit Scene(const QString &identifier = {}) : row(QRectF(QPointF(0, 0), rowSize))
    {
        row.setIdentifier(identifier);
        row.updateBackgroundColorWithColor(QColor(Qt::transparent));
        row.setRedisplay([this] { ++redisplays; });
    }

    DefaultTableRowView row;
    int redisplays = 0;
};

const QColor white(255, 255, 255);
const QColor surfaceDark(0x1B, 0x1F, 0x24);

} // namespace

#define COMPARE_COLOR(actual, expected)                                                            \
    QVERIFY2(isAbout(actual, expected),                                                            \
             qPrintable((actual).name() + QLatin1String(" is not ") + QColor(expected).name()))

class DefaultTableRowViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();

    void itsStyleIsItsOwnNameAtFirst();
    void theIdentifierSwitchesHoverAndBorder_data();
    void theIdentifierSwitchesHoverAndBorder();
    void theIdentifierDecidesAtEachDrawing();

    void allSevenColoursAreCached();
    void theCacheIsKeptWhileTheThemeStays();
    void theCacheFollowsTheThemeAtTheNextDrawing();
    void anotherStyleCountsFromTheNextTheme();

    void theGroundIsTheGivenColour();
    void withoutOneTheGroundIsThePlatforms();
    void aClearGroundLetsTheTableThrough();
    void theGroundReplacesItsOwnLayerOnly();

    void theMouseDarkensTheGround_data();
    void theMouseDarkensTheGround();
    void theMouseShadesARowThatTracksNothing();
    void noBorderIsDrawnUnderTheMouse();
    void theBorderIsOneThickAtTheLowerEdge();
    void theBorderIsOneThickAtTwiceTheScale();
    void theBorderShowsInTheDark();
    void anOpaqueGroundInTheDarkTakesNoLightBorder();
    void withoutABorderColourTheGroundsIsUsed();

    void aSelectedRowHasTheThemesColour_data();
    void aSelectedRowHasTheThemesColour();
    void aTemporaryColourIsMirrored_data();
    void aTemporaryColourIsMirrored();
    void aTemporaryColourLastsWhileSelected();
    void aMissingSelectionColourFillsNothing();
    void theMouseDarkensASelectionAlikeInBothThemes_data();
    void theMouseDarkensASelectionAlikeInBothThemes();
    void anotherHighlightStyleDrawsNoSelection();

    void drawingWithHoverStartsTracking();
    void drawingWithoutHoverTracksNothing();
    void trackingStartsOnce();
    void aRemovedAreaStaysInTheProperty();
    void theMouseEntersOnceAndLeavesAlways();
    void updatingTheAreasForgetsTheMouseAlone();

    void equalColoursAskForNoDrawing();
    void thePreferenceSwitchesHoverUntilTheNextDrawing();
    void aChangeOfDarknessAsksForDrawing();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void DefaultTableRowViewTest::init()
{
    preferences_.reset();
    preferences_.emplace();
}

void DefaultTableRowViewTest::itsStyleIsItsOwnNameAtFirst()
{
    QCOMPARE(DefaultTableRowView().colorStyleName(), QStringLiteral("DefaultTableRowView"));
}

void DefaultTableRowViewTest::theIdentifierSwitchesHoverAndBorder_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<bool>("hover");
    QTest::addColumn<bool>("border");
    QTest::newRow("hover") << hoverRow << true << false;
    QTest::newRow("hover and border") << hoverAndBorderRow << true << true;
    QTest::newRow("border") << borderRow << false << true;
    QTest::newRow("another") << QStringLiteral("RowView") << false << false;
    QTest::newRow("another case") << hoverRow.toLower() << false << false;
    QTest::newRow("none") << QString() << false << false;
}

void DefaultTableRowViewTest::theIdentifierSwitchesHoverAndBorder()
{
    QFETCH(QString, identifier);
    Scene scene(identifier);
    scene.row.buildColorCache();
    QTEST(scene.row.mouseHoverEnabled(), "hover");
    QTEST(scene.row.useBorder(), "border");
}

void DefaultTableRowViewTest::theIdentifierDecidesAtEachDrawing()
{
    Scene scene(hoverRow);
    centre(scene.row);
    scene.row.setIdentifier(borderRow);
    QVERIFY(scene.row.mouseHoverEnabled());
    centre(scene.row);
    QVERIFY(!scene.row.mouseHoverEnabled());
    QVERIFY(scene.row.useBorder());
}

void DefaultTableRowViewTest::allSevenColoursAreCached()
{
    Scene scene;
    scene.row.buildColorCache();
    QCOMPARE(scene.row.colorCache().count(), 7);
    for (const char *key : {"bg", "bc", "selbg", "selbginactive", "hovbg", "row", "rowodd"}) {
        const QLatin1String word(key);
        const auto expected =
            ColorProperties::color(ColorProperties::key(scene.row.colorStyleName(), word, false));
        QVERIFY2(expected && scene.row.colorCache().color(word) == expected, key);
    }
}

void DefaultTableRowViewTest::theCacheIsKeptWhileTheThemeStays()
{
    Scene scene;
    scene.row.buildColorCache();
    preferences_->setColors({});
    scene.row.buildColorCache();
    QCOMPARE(scene.row.colorCache().count(), 7);
}

void DefaultTableRowViewTest::theCacheFollowsTheThemeAtTheNextDrawing()
{
    Scene scene;
    centre(scene.row);
    QVERIFY(!scene.row.isDarkMode());
    preferences_->setDark(true);
    centre(scene.row);
    QVERIFY(scene.row.isDarkMode() && scene.row.lastMode());
    QCOMPARE(scene.row.colorCache().color(QLatin1String("selbg")), QColor(0x31, 0x4F, 0x78));
}

void DefaultTableRowViewTest::anotherStyleCountsFromTheNextTheme()
{
    Scene scene;
    scene.row.buildColorCache();
    scene.row.updateColorStyleName(QStringLiteral("NoSuchStyle"));
    QCOMPARE(scene.row.colorStyleName(), QStringLiteral("NoSuchStyle"));
    QCOMPARE(scene.redisplays, 1);
    QCOMPARE(scene.row.colorCache().count(), 7);
    preferences_->setDark(true);
    scene.row.buildColorCache();
    QCOMPARE(scene.row.colorCache().count(), 0);
}

void DefaultTableRowViewTest::theGroundIsTheGivenColour()
{
    Scene scene;
    scene.row.updateBackgroundColorWithColor(QColor(1, 2, 3));
    COMPARE_COLOR(centre(scene.row), QColor(1, 2, 3));
}

void DefaultTableRowViewTest::withoutOneTheGroundIsThePlatforms()
{
    Scene scene;
    scene.row.updateBackgroundColorWithColor(std::nullopt);
    COMPARE_COLOR(centre(scene.row), QApplication::palette().color(QPalette::Base));
}

void DefaultTableRowViewTest::aClearGroundLetsTheTableThrough()
{
    Scene scene(hoverRow);
    COMPARE_COLOR(centre(scene.row, surfaceDark), surfaceDark);
}

/// A half clear ground is laid over the table, not put in its place.
void DefaultTableRowViewTest::theGroundReplacesItsOwnLayerOnly()
{
    Scene scene;
    scene.row.updateBackgroundColorWithColor(QColor(0, 0, 0, 51));
    COMPARE_COLOR(centre(scene.row, white), QColor(204, 204, 204));
    QCOMPARE(centre(scene.row, white).alpha(), 255);
}

void DefaultTableRowViewTest::theMouseDarkensTheGround_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<double>("alpha");
    QTest::newRow("light") << false << 0.04;
    QTest::newRow("dark") << true << 0.1;
}

void DefaultTableRowViewTest::theMouseDarkensTheGround()
{
    QFETCH(bool, isDark);
    QFETCH(double, alpha);
    preferences_->setDark(isDark);
    Scene scene(hoverRow);
    scene.row.mouseEntered();
    COMPARE_COLOR(centre(scene.row, white), darkened(white, alpha));
    scene.row.updateBackgroundColorWithColor(QColor(200, 100, 50));
    COMPARE_COLOR(centre(scene.row, white), darkened(QColor(200, 100, 50), alpha));
    scene.row.mouseExited();
    COMPARE_COLOR(centre(scene.row, white), QColor(200, 100, 50));
}

/// The shade asks for the mouse alone, not for what switched hover on.
void DefaultTableRowViewTest::theMouseShadesARowThatTracksNothing()
{
    Scene scene(borderRow);
    scene.row.mouseEntered();
    COMPARE_COLOR(centre(scene.row, white), darkened(white, 0.04));
    COMPARE_COLOR(belowEdge(scene.row, white), darkened(white, 0.04));
    QVERIFY(!scene.row.mouseHoverEnabled());
    scene.row.setSelected(true);
    scene.row.setEmphasized(true);
    COMPARE_COLOR(centre(scene.row), darkened(QColor::fromRgbF(0.239F, 0.58F, 1.0F), 0.04));
}

void DefaultTableRowViewTest::noBorderIsDrawnUnderTheMouse()
{
    Scene scene(hoverAndBorderRow);
    scene.row.mouseEntered();
    COMPARE_COLOR(belowEdge(scene.row, white), centre(scene.row, white));
    scene.row.mouseExited();
    QVERIFY(belowEdge(scene.row, white) != centre(scene.row, white));
}

void DefaultTableRowViewTest::theBorderIsOneThickAtTheLowerEdge()
{
    Scene scene(borderRow);
    const QImage image = painted(scene.row, white);
    const int last = rowSize.height() - 1;
    for (int x = 0; x < rowSize.width(); ++x) {
        COMPARE_COLOR(image.pixelColor(x, last), darkened(white, 0.04));
        COMPARE_COLOR(image.pixelColor(x, last - 1), white);
        COMPARE_COLOR(image.pixelColor(x, 0), white);
    }
}

void DefaultTableRowViewTest::theBorderIsOneThickAtTwiceTheScale()
{
    Scene scene(borderRow);
    const QImage image = painted(scene.row, white, 2);
    const int last = 2 * rowSize.height() - 1;
    COMPARE_COLOR(image.pixelColor(5, last), darkened(white, 0.04));
    COMPARE_COLOR(image.pixelColor(5, last - 1), darkened(white, 0.04));
    COMPARE_COLOR(image.pixelColor(5, last - 2), white);
}

/// White of alpha 0.03 lies as it is on the clear ground, and so lightens the table's.
void DefaultTableRowViewTest::theBorderShowsInTheDark()
{
    preferences_->setDark(true);
    Scene scene(borderRow);
    COMPARE_COLOR(belowEdge(scene.row, surfaceDark), QColor(0x22, 0x26, 0x2A));
}

void DefaultTableRowViewTest::anOpaqueGroundInTheDarkTakesNoLightBorder()
{
    preferences_->setDark(true);
    Scene scene(borderRow);
    scene.row.updateBackgroundColorWithColor(surfaceDark);
    COMPARE_COLOR(belowEdge(scene.row, white), surfaceDark);
}

/// Half of the ground's own colour over it, darkening, changes nothing where the ground is opaque,
/// and makes a half clear ground denser.
void DefaultTableRowViewTest::withoutABorderColourTheGroundsIsUsed()
{
    preferences_->setColors({});
    Scene scene(borderRow);
    scene.row.updateBackgroundColorWithColor(QColor(0, 0, 0, 128));
    COMPARE_COLOR(centre(scene.row, white), QColor(127, 127, 127));
    COMPARE_COLOR(belowEdge(scene.row, white), QColor(63, 63, 63));
}

void DefaultTableRowViewTest::aSelectedRowHasTheThemesColour_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<bool>("isFocused");
    QTest::addColumn<QColor>("color");
    QTest::newRow("light, focused") << false << true << QColor::fromRgbF(0.239F, 0.58F, 1.0F);
    QTest::newRow("light") << false << false << QColor::fromRgbF(0.847F, 0.918F, 1.0F);
    QTest::newRow("dark, focused") << true << true << QColor::fromRgbF(0.192F, 0.31F, 0.471F);
    QTest::newRow("dark") << true << false << QColor::fromRgbF(0.337F, 0.353F, 0.369F);
}

void DefaultTableRowViewTest::aSelectedRowHasTheThemesColour()
{
    QFETCH(bool, isDark);
    QFETCH(bool, isFocused);
    QFETCH(QColor, color);
    preferences_->setDark(isDark);
    Scene scene(hoverAndBorderRow);
    scene.row.setSelected(true);
    scene.row.setEmphasized(isFocused);
    COMPARE_COLOR(centre(scene.row), color);
    COMPARE_COLOR(belowEdge(scene.row, Qt::red), color); // and no border
}

void DefaultTableRowViewTest::aTemporaryColourIsMirrored_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<bool>("isFocused");
    QTest::addColumn<QColor>("color");
    const QColor faint(204, 204, 255); // a fifth of blue over white
    QTest::newRow("dark, focused") << true << true << faint;
    QTest::newRow("dark") << true << false << QColor::fromRgbF(0.337F, 0.353F, 0.369F);
    QTest::newRow("light, focused") << false << true << QColor(0, 0, 255);
    QTest::newRow("light") << false << false << faint;
}

void DefaultTableRowViewTest::aTemporaryColourIsMirrored()
{
    QFETCH(bool, isDark);
    QFETCH(bool, isFocused);
    QFETCH(QColor, color);
    preferences_->setDark(isDark);
    Scene scene;
    scene.row.setSelected(true);
    scene.row.setEmphasized(isFocused);
    scene.row.overWriteSelectionColorWithColor(QColor(0, 0, 255));
    COMPARE_COLOR(centre(scene.row, white), color);
}

void DefaultTableRowViewTest::aTemporaryColourLastsWhileSelected()
{
    Scene scene;
    scene.row.setSelected(true);
    scene.row.overWriteSelectionColorWithColor(QColor(0, 0, 255));
    centre(scene.row);
    QVERIFY(scene.row.tempSelectionColor());
    scene.row.setSelected(false);
    QVERIFY(scene.row.tempSelectionColor());
    centre(scene.row);
    QVERIFY(!scene.row.tempSelectionColor());
}

void DefaultTableRowViewTest::aMissingSelectionColourFillsNothing()
{
    preferences_->setColors({});
    Scene scene;
    scene.row.setSelected(true);
    scene.row.setEmphasized(true);
    COMPARE_COLOR(centre(scene.row, QColor(9, 8, 7)), QColor(9, 8, 7));
}

void DefaultTableRowViewTest::theMouseDarkensASelectionAlikeInBothThemes_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("color");
    QTest::newRow("light") << false << QColor::fromRgbF(0.239F, 0.58F, 1.0F);
    QTest::newRow("dark") << true << QColor::fromRgbF(0.192F, 0.31F, 0.471F);
}

void DefaultTableRowViewTest::theMouseDarkensASelectionAlikeInBothThemes()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, color);
    preferences_->setDark(isDark);
    Scene scene(hoverRow);
    scene.row.setSelected(true);
    scene.row.setEmphasized(true);
    scene.row.mouseEntered();
    COMPARE_COLOR(centre(scene.row), darkened(color, 0.04));
}

void DefaultTableRowViewTest::anotherHighlightStyleDrawsNoSelection()
{
    Scene scene(hoverRow);
    scene.row.setSelectionHighlightStyle(DefaultTableRowView::SelectionHighlightStyle::None);
    scene.row.setSelected(true);
    scene.row.mouseEntered();
    COMPARE_COLOR(centre(scene.row, QColor(9, 8, 7)), QColor(9, 8, 7));
    QCOMPARE(int(DefaultTableRowView::SelectionHighlightStyle::Regular), 0);
}

void DefaultTableRowViewTest::drawingWithHoverStartsTracking()
{
    Scene scene(hoverRow);
    QVERIFY(!scene.row.trackingArea());
    centre(scene.row);
    QVERIFY(scene.row.isTracking());
    const DefaultTableRowView::TrackingArea expected{QRectF(QPointF(0, 0), rowSize), 641};
    QVERIFY(scene.row.trackingArea() == expected);
}

void DefaultTableRowViewTest::drawingWithoutHoverTracksNothing()
{
    Scene scene(borderRow);
    centre(scene.row);
    QVERIFY(!scene.row.trackingArea() && !scene.row.isTracking());
}

void DefaultTableRowViewTest::trackingStartsOnce()
{
    Scene scene(hoverRow);
    centre(scene.row);
    scene.row.removeTrackingArea();
    centre(scene.row);
    QVERIFY(!scene.row.isTracking());
}

void DefaultTableRowViewTest::aRemovedAreaStaysInTheProperty()
{
    Scene scene;
    scene.row.startTrackingArea();
    scene.row.removeTrackingArea();
    QVERIFY(!scene.row.isTracking());
    QVERIFY(scene.row.trackingArea());
}

void DefaultTableRowViewTest::theMouseEntersOnceAndLeavesAlways()
{
    Scene scene;
    scene.row.mouseEntered();
    scene.row.mouseEntered();
    QVERIFY(scene.row.mouseInside());
    QCOMPARE(scene.redisplays, 1);
    scene.row.mouseExited();
    scene.row.mouseExited();
    QVERIFY(!scene.row.mouseInside());
    QCOMPARE(scene.redisplays, 3);
}

void DefaultTableRowViewTest::updatingTheAreasForgetsTheMouseAlone()
{
    Scene scene(hoverRow);
    centre(scene.row);
    const auto area = scene.row.trackingArea();
    scene.row.mouseEntered();
    scene.redisplays = 0;
    scene.row.setFrame({0, 0, 40, 10});
    scene.row.updateTrackingAreas();
    QVERIFY(!scene.row.mouseInside());
    QVERIFY(scene.row.trackingArea() == area && scene.row.isTracking());
    QCOMPARE(scene.redisplays, 0);
}

void DefaultTableRowViewTest::equalColoursAskForNoDrawing()
{
    Scene scene;
    scene.redisplays = 0;
    scene.row.updateBackgroundColorWithColor(QColor(1, 2, 3));
    scene.row.updateBackgroundColorWithColor(QColor(1, 2, 3));
    QCOMPARE(scene.redisplays, 1);
    scene.row.overWriteSelectionColorWithColor(QColor(4, 5, 6));
    scene.row.overWriteSelectionColorWithColor(QColor(4, 5, 6));
    QCOMPARE(scene.redisplays, 2);
}

void DefaultTableRowViewTest::thePreferenceSwitchesHoverUntilTheNextDrawing()
{
    const QString key = QStringLiteral("useMouseHoverRowColor");
    Scene scene(borderRow);
    scene.row.enableMSRowHoverChangeNotification(); // no value, no change
    QVERIFY(!scene.row.mouseHoverEnabled() && !scene.row.trackingArea());
    UserDefaults::standard().setValue(key, true);
    scene.row.enableMSRowHoverChangeNotification();
    QVERIFY(scene.row.mouseHoverEnabled() && scene.row.isTracking());
    UserDefaults::standard().setValue(key, false);
    scene.row.enableMSRowHoverChangeNotification();
    QVERIFY(!scene.row.mouseHoverEnabled() && !scene.row.isTracking());
    UserDefaults::standard().setValue(key, true);
    scene.row.enableMSRowHoverChangeNotification();
    centre(scene.row);
    QVERIFY(!scene.row.mouseHoverEnabled());
}

void DefaultTableRowViewTest::aChangeOfDarknessAsksForDrawing()
{
    Scene scene;
    scene.redisplays = 0;
    scene.row.msRowHoverDarknessChangeNotification();
    QCOMPARE(scene.redisplays, 1);
}

QTEST_MAIN(DefaultTableRowViewTest)
#include "DefaultTableRowViewTest.moc"
