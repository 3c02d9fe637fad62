#include "ui/VantorelStyle.h"

#include "Pixels.h"
#include "ThemedPreferences.h"
#include "ui/DesignColors.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyleOption>
#include <QTest>
#include <QToolTip>
#include <QTreeView>

namespace {

constexpr QSize contentSize(400, 6944);

/// Counts how often it is drawn.
struct Watched : QWidget
{
    [[nodiscard]] QColor ground() const { return palette().color(QPalette::Window); }
    void paintEvent(QPaintEvent *) override { ++paints; }
    int paints = 0;
};

/// Laid out and polished as if it were shown.
void prepare(QWidget &widget)
{
    widget.setAttribute(Qt::WA_DontShowOnScreen);
    widget.show();
    QApplication::processEvents();
}

QColor roleColor(ColorRole role, ColorRole below)
{
    return Pixels::over(DesignColors::color(role), DesignColors::color(below));
}

QWidget *toolTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->inherits("QTipLabel") && window->isVisible())
            return window;
    }
    return nullptr;
}

/// One element of the style by itself, on white.
QImage drawn(QStyle::PrimitiveElement element, QStyleOption &&option, QStyle::State state)
{
    QImage image(40, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    option.rect = image.rect();
    option.state = state;
    QPainter painter(&image);
    QApplication::style()->drawPrimitive(element, &option, &painter);
    return image;
}

/// The darkest point is of this colour, or as near to it as thin strokes come.
bool isWrittenIn(ColorRole role, const QImage &image, const QRect &rect)
{
    int darkest = 255;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            darkest = std::min(darkest, image.pixelColor(x, y).lightness());
    }
    const int expected = DesignColors::color(role).lightness();
    return darkest >= expected - 2 && darkest < expected + 45;
}

/// A menu with one of everything that a row can be.
struct Menu : QMenu
{
    Menu()
        : first(addAction(QStringLiteral("&Add"))), second(addAction(QStringLiteral("&Start"))),
          line(addSeparator()), third(addAction(QStringLiteral("&Vantorel")))
    {
        first->setShortcut(QKeySequence(QStringLiteral("Ctrl+O")));
        second->setEnabled(false);
        third->setCheckable(true);
        third->setChecked(true);
    }

    QAction *first;
    QAction *second;
    QAction *line;
    QAction *third;
};

} // namespace

class VantorelStyleTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void thePaletteHasTheDesignsColours_data();
    void thePaletteHasTheDesignsColours();
    void noGroundIsBrightInTheDark();
    void noTextIsDarkInTheDark();
    void applyingTheThemeGivesTheApplicationItsPalette();
    void applyingTheThemeDrawsWhatIsShownAnew();

    void highContrastDrawsWhatIsShownAnew();

    void menuRowsHaveTheirPlaces();
    void aMenuGrowsWithTheFont();
    void aMenuIsAsWideAsItsTexts();
    void theMenusRowsAreDrawnInTheirColours_data();
    void theMenusRowsAreDrawnInTheirColours();
    void theMenusTextsHaveTheirColours();
    void aDisabledRowIsNotShadedByTheMouse();
    void aMenusCornersAreRoundOnlyWhereWindowsAreTransparent_data();
    void aMenusCornersAreRoundOnlyWhereWindowsAreTransparent();

    void scrollBarsTakeNoRoom();
    void theThumbLiesAtTheEdgeAndKeepsClearOfTheEnds_data();
    void theThumbLiesAtTheEdgeAndKeepsClearOfTheEnds();
    void theThumbIsAsLongAsThePartThatShows();
    void theThumbIsTranslucentGrey_data();
    void theThumbIsTranslucentGrey();
    void aBarWithNothingToScrollIsEmpty();
    void aPressBesideTheThumbTurnsThePage();
    void theThumbIsTakenOverTheBarsWholeWidth();

    void aToolTipIsNoWiderThanItsLimit();
    void aToolTipIsOnTheMenusGround();

    void controlsHaveTheirGrounds_data();
    void controlsHaveTheirGrounds();
    void theMouseChangesTheGround();
    void framesAreLinesAlone();
    void theArrowPointsDown();
    void aDisabledSelectorHasNoGround_data();
    void aDisabledSelectorHasNoGround();
    void aTextFieldWithoutFrameHasNoGround();
    void aTableHeadHasItsGroundAndLine();
    void everyPartOfTheFilePanelIsDarkInTheDark();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void VantorelStyleTest::initTestCase()
{
    preferences_.emplace();
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
    QApplication::setStyle(new VantorelStyle);
}

void VantorelStyleTest::init()
{
    preferences_.emplace();
    VantorelStyle::setTransparentWindows(false);
    VantorelStyle::applyTheme();
}

void VantorelStyleTest::cleanup()
{
    preferences_.reset();
}

void VantorelStyleTest::thePaletteHasTheDesignsColours_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("role");
    QTest::addColumn<QColor>("light");
    QTest::addColumn<QColor>("dark");
    const auto row = [](const char *name, QPalette::ColorGroup group, QPalette::ColorRole role,
                        QRgb light, QRgb dark) {
        QTest::newRow(name) << int(group) << int(role) << QColor(light) << QColor(dark);
    };
    const auto active = QPalette::Active;
    row("windows", active, QPalette::Window, 0xE7E7E7, 0x272C31);
    row("views", active, QPalette::Base, 0xFCFDFD, 0x1B1F24);
    row("their other rows", active, QPalette::AlternateBase, 0xF1F3F5, 0x21262B);
    row("buttons", active, QPalette::Button, 0xFFFFFF, 0x363E46);
    row("tool tips", active, QPalette::ToolTipBase, 0xFAFBFB, 0x2B3137);
    row("text", active, QPalette::Text, 0x1A2026, 0xE8ECEF);
    row("text of windows", active, QPalette::WindowText, 0x1A2026, 0xE8ECEF);
    row("text of buttons", active, QPalette::ButtonText, 0x1A2026, 0xE8ECEF);
    row("text of tool tips", active, QPalette::ToolTipText, 0x1A2026, 0xE8ECEF);
    row("text that is not there", active, QPalette::PlaceholderText, 0x505B65, 0xA3AEB8);
    row("links", active, QPalette::Link, 0x1C62BC, 0x82B7F3);
    row("disabled text", QPalette::Disabled, QPalette::Text, 0x8B959E, 0x6C7781);
    row("disabled buttons", QPalette::Disabled, QPalette::ButtonText, 0x8B959E, 0x6C7781);
    row("text of an inactive window", QPalette::Inactive, QPalette::Text, 0x1A2026, 0xE8ECEF);
    row("selection", active, QPalette::Highlight, 0x3D94FF, 0x314F78);
    row("selected text", active, QPalette::HighlightedText, 0x06172B, 0xFFFFFF);
    row("selection in an inactive window", QPalette::Inactive, QPalette::Highlight, 0xD8EAFF,
        0x565A5E);
    row("selected text there", QPalette::Inactive, QPalette::HighlightedText, 0x1A2026, 0xFFFFFF);
}

void VantorelStyleTest::thePaletteHasTheDesignsColours()
{
    QFETCH(int, group);
    QFETCH(int, role);
    QFETCH(QColor, light);
    QFETCH(QColor, dark);
    for (const bool isDark : {false, true}) {
        const QColor found = VantorelStyle::palette(isDark).color(QPalette::ColorGroup(group),
                                                                  QPalette::ColorRole(role));
        QCOMPARE(found.name(), (isDark ? dark : light).name());
    }
}

void VantorelStyleTest::noGroundIsBrightInTheDark()
{
    const QPalette palette = VantorelStyle::palette(true);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto role :
             {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
              QPalette::ToolTipBase, QPalette::Light, QPalette::Midlight, QPalette::Mid,
              QPalette::Dark, QPalette::Shadow})
            QVERIFY(palette.color(group, role).lightness() < 100);
    }
}

void VantorelStyleTest::noTextIsDarkInTheDark()
{
    const QPalette palette = VantorelStyle::palette(true);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                QPalette::BrightText, QPalette::ToolTipText, QPalette::Link,
                                QPalette::PlaceholderText, QPalette::HighlightedText})
            QVERIFY(palette.color(group, role).lightness() > 100);
    }
}

void VantorelStyleTest::applyingTheThemeGivesTheApplicationItsPalette()
{
    for (const bool isDark : {true, false}) {
        preferences_->setDark(isDark);
        VantorelStyle::applyTheme();
        const QPalette expected = VantorelStyle::palette(isDark);
        QCOMPARE(QApplication::palette().color(QPalette::Window), expected.color(QPalette::Window));
        QCOMPARE(QToolTip::palette().color(QPalette::ToolTipText),
                 expected.color(QPalette::ToolTipText));
        QCOMPARE(QApplication::palette("QMenu").color(QPalette::Text),
                 expected.color(QPalette::Text));
        QCOMPARE(QLineEdit().palette().color(QPalette::Base), expected.color(QPalette::Base));
    }
}

void VantorelStyleTest::applyingTheThemeDrawsWhatIsShownAnew()
{
    Watched window;
    prepare(window);
    const int before = window.paints;
    preferences_->setDark(true);
    VantorelStyle::applyTheme();
    QTRY_VERIFY(window.paints > before);
    QCOMPARE(window.ground().name(), QStringLiteral("#272c31"));
}

void VantorelStyleTest::highContrastDrawsWhatIsShownAnew()
{
    Watched widget;
    prepare(widget);
    const int before = widget.paints;
    VantorelStyle::setHighContrast(true);
    QCOMPARE(DesignColors::color(ColorRole::Edge), DesignColors::color(ColorRole::TextSecondary));
    QTRY_VERIFY(widget.paints > before);
    VantorelStyle::setHighContrast(false);
    QVERIFY(DesignColors::color(ColorRole::Edge) != DesignColors::color(ColorRole::TextSecondary));
}

void VantorelStyleTest::menuRowsHaveTheirPlaces()
{
    Menu menu;
    prepare(menu);
    QCOMPARE(menu.width(), 280);
    QCOMPARE(menu.actionGeometry(menu.first), QRect(0, 6, 280, 28));
    QCOMPARE(menu.actionGeometry(menu.second), QRect(0, 34, 280, 28));
    QCOMPARE(menu.actionGeometry(menu.line), QRect(0, 62, 280, 9));
    QCOMPARE(menu.actionGeometry(menu.third), QRect(0, 71, 280, 28));
    QCOMPARE(menu.height(), 105);
}

void VantorelStyleTest::aMenuGrowsWithTheFont()
{
    const QFont before = QApplication::font();
    QFont font = before;
    font.setPixelSize(26);
    QApplication::setFont(font);
    Menu menu;
    prepare(menu);
    const QSize size = menu.size();
    const int row = menu.actionGeometry(menu.first).height();
    QApplication::setFont(before);
    QCOMPARE(row, 45);
    QCOMPARE(size.width(), 448);
}

void VantorelStyleTest::aMenuIsAsWideAsItsTexts()
{
    Menu menu;
    const QString text(30, QLatin1Char('w'));
    menu.addAction(text);
    prepare(menu);
    const int least = menu.fontMetrics().horizontalAdvance(text) + 36 + 18;
    QVERIFY2(menu.width() >= least,
             qPrintable(QStringLiteral("%1 of %2").arg(menu.width()).arg(least)));
}

void VantorelStyleTest::theMenusRowsAreDrawnInTheirColours_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void VantorelStyleTest::theMenusRowsAreDrawnInTheirColours()
{
    QFETCH(bool, isDark);
    preferences_->setDark(isDark);
    Menu menu;
    prepare(menu);
    menu.setActiveAction(menu.first);
    const QImage image = Pixels::painted(menu);
    const QColor ground = DesignColors::color(ColorRole::Menu);
    const QColor edge = roleColor(ColorRole::Edge, ColorRole::Menu);
    const QColor hover = roleColor(ColorRole::GhostHover, ColorRole::Menu);
    const QColor line =
        Pixels::over(*ColorProperties::color(QStringLiteral("DefaultLine_bg_") +
                                             QLatin1String(isDark ? "dark" : "light")),
                     ground);
    COMPARE_PIXEL(image, 140, 0, edge);
    COMPARE_PIXEL(image, 0, 50, edge);
    COMPARE_PIXEL(image, 279, 50, edge);
    COMPARE_PIXEL(image, 140, 104, edge);
    COMPARE_PIXEL(image, 140, 3, ground);
    // Hover: inset, over the row's whole height.
    COMPARE_PIXEL(image, 5, 20, ground);
    COMPARE_PIXEL(image, 6, 20, hover);
    COMPARE_PIXEL(image, 273, 20, hover);
    COMPARE_PIXEL(image, 274, 20, ground);
    COMPARE_PIXEL(image, 140, 6, hover);
    COMPARE_PIXEL(image, 140, 33, hover);
    COMPARE_PIXEL(image, 140, 34, ground);
    // The line between the groups.
    COMPARE_PIXEL(image, 11, 66, ground);
    COMPARE_PIXEL(image, 12, 66, line);
    COMPARE_PIXEL(image, 267, 66, line);
    COMPARE_PIXEL(image, 268, 66, ground);
    COMPARE_PIXEL(image, 140, 65, ground);
    COMPARE_PIXEL(image, 140, 67, ground);
    // The check mark lies around x 22, in the colour of text.
    QColor strongest = ground;
    const QColor text = DesignColors::color(ColorRole::Text);
    for (int x = 15; x < 30; ++x) {
        for (int y = 75; y < 95; ++y) {
            const QColor pixel = image.pixelColor(x, y);
            if (std::abs(pixel.lightness() - text.lightness()) <
                std::abs(strongest.lightness() - text.lightness()))
                strongest = pixel;
        }
    }
    QVERIFY(std::abs(strongest.lightness() - text.lightness()) < 40);
}

void VantorelStyleTest::theMenusTextsHaveTheirColours()
{
    Menu menu;
    prepare(menu);
    const QImage image = Pixels::painted(menu);
    QVERIFY(isWrittenIn(ColorRole::Text, image, QRect(36, 8, 100, 24)));
    QVERIFY(isWrittenIn(ColorRole::TextSecondary, image, QRect(180, 8, 82, 24)));
    COMPARE_PIXEL(image, 264, 20, DesignColors::color(ColorRole::Menu));
    QVERIFY(isWrittenIn(ColorRole::TextDisabled, image, QRect(36, 36, 100, 24)));
}

void VantorelStyleTest::aDisabledRowIsNotShadedByTheMouse()
{
    const auto ground = [](QStyle::State state) {
        QImage image(280, 28, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QStyleOptionMenuItem option;
        option.rect = image.rect();
        option.state = state;
        QPainter painter(&image);
        QApplication::style()->drawControl(QStyle::CE_MenuItem, &option, &painter);
        return image.pixelColor(140, 4);
    };
    QCOMPARE(ground(QStyle::State_Selected), QColor(Qt::white));
    QVERIFY(ground(QStyle::State_Selected | QStyle::State_Enabled) != QColor(Qt::white));
}

void VantorelStyleTest::aMenusCornersAreRoundOnlyWhereWindowsAreTransparent_data()
{
    QTest::addColumn<bool>("isTransparent");
    QTest::newRow("transparent windows") << true;
    QTest::newRow("none") << false;
}

void VantorelStyleTest::aMenusCornersAreRoundOnlyWhereWindowsAreTransparent()
{
    QFETCH(bool, isTransparent);
    VantorelStyle::setTransparentWindows(isTransparent);
    Menu menu;
    prepare(menu);
    // In either case, for this may change while the menu is there.
    QVERIFY(menu.testAttribute(Qt::WA_TranslucentBackground));
    const QImage image = Pixels::painted(menu);
    QCOMPARE(image.pixelColor(0, 0).alpha(), isTransparent ? 0 : 255);
    QCOMPARE(image.pixelColor(279, 104).alpha(), isTransparent ? 0 : 255);
    QCOMPARE(image.pixelColor(140, 0).alpha(), 255);
}

void VantorelStyleTest::scrollBarsTakeNoRoom()
{
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    QWidget content;
    content.setFixedSize(contentSize);
    area.setWidget(&content);
    area.resize(300, 139);
    prepare(area);
    QVERIFY(area.verticalScrollBar()->isVisible() && area.horizontalScrollBar()->isVisible());
    QCOMPARE(area.viewport()->size(), area.size());
    area.takeWidget();
}

void VantorelStyleTest::theThumbLiesAtTheEdgeAndKeepsClearOfTheEnds_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("top");
    QTest::newRow("at the beginning") << 0 << 6;
    QTest::newRow("at the end") << 6805 << 93;
    QTest::newRow("in the middle") << 3402 << 49;
}

void VantorelStyleTest::theThumbLiesAtTheEdgeAndKeepsClearOfTheEnds()
{
    QFETCH(int, value);
    QFETCH(int, top);
    QScrollBar bar(Qt::Vertical);
    bar.resize(bar.sizeHint().width(), 139);
    bar.setRange(0, 6805);
    bar.setPageStep(139);
    bar.setValue(value);
    prepare(bar);
    const QColor white(255, 255, 255);
    const QImage image = Pixels::painted(bar, white);
    const QColor thumb = image.pixelColor(bar.width() - 7, top + 20);
    QVERIFY(thumb != white);
    COMPARE_PIXEL(image, bar.width() - 10, top + 20, thumb);
    COMPARE_PIXEL(image, bar.width() - 5, top + 20, thumb);
    COMPARE_PIXEL(image, bar.width() - 11, top + 20, white);
    COMPARE_PIXEL(image, bar.width() - 4, top + 20, white);
    COMPARE_PIXEL(image, bar.width() - 7, top - 1, white);
    COMPARE_PIXEL(image, bar.width() - 7, top + 3, thumb);
    COMPARE_PIXEL(image, bar.width() - 7, top + 36, thumb);
    COMPARE_PIXEL(image, bar.width() - 7, top + 40, white);
}

void VantorelStyleTest::theThumbIsAsLongAsThePartThatShows()
{
    QScrollBar bar(Qt::Horizontal);
    bar.resize(212, bar.sizeHint().height());
    bar.setRange(0, 100);
    bar.setPageStep(100);
    prepare(bar);
    const QColor white(255, 255, 255);
    const QImage image = Pixels::painted(bar, white);
    const int y = bar.height() - 7;
    QVERIFY(image.pixelColor(10, y) != white);
    QVERIFY(image.pixelColor(102, y) != white);
    COMPARE_PIXEL(image, 107, y, white);
}

void VantorelStyleTest::theThumbIsTranslucentGrey_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("thumb");
    QTest::newRow("light") << false << QColor(252, 253, 253) << QColor(196, 201, 205);
    QTest::newRow("light, over a line") << false << QColor(242, 243, 243) << QColor(191, 196, 200);
    QTest::newRow("dark") << true << QColor(27, 31, 36) << QColor(67, 75, 83);
}

void VantorelStyleTest::theThumbIsTranslucentGrey()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, ground);
    QFETCH(QColor, thumb);
    preferences_->setDark(isDark);
    QScrollBar bar(Qt::Vertical);
    bar.resize(bar.sizeHint().width(), 139);
    bar.setRange(0, 6805);
    bar.setPageStep(139);
    prepare(bar);
    COMPARE_PIXEL(Pixels::painted(bar, ground), bar.width() - 7, 30, thumb);
}

void VantorelStyleTest::aBarWithNothingToScrollIsEmpty()
{
    QScrollBar bar(Qt::Vertical);
    bar.resize(bar.sizeHint().width(), 139);
    bar.setRange(0, 0);
    prepare(bar);
    const QImage image = Pixels::painted(bar, Qt::white);
    for (int y = 0; y < bar.height(); ++y)
        COMPARE_PIXEL(image, bar.width() - 7, y, QColor(Qt::white));
}

void VantorelStyleTest::aPressBesideTheThumbTurnsThePage()
{
    QScrollBar bar(Qt::Vertical);
    bar.resize(bar.sizeHint().width(), 139);
    bar.setRange(0, 1000);
    bar.setPageStep(100);
    prepare(bar);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(2, 130));
    QCOMPARE(bar.value(), 100);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(2, 1));
    QCOMPARE(bar.value(), 0);
}

void VantorelStyleTest::theThumbIsTakenOverTheBarsWholeWidth()
{
    QScrollBar bar(Qt::Vertical);
    bar.resize(bar.sizeHint().width(), 139);
    bar.setRange(0, 1000);
    bar.setPageStep(100);
    prepare(bar);
    QTest::mousePress(&bar, Qt::LeftButton, {}, QPoint(1, 20));
    QVERIFY(bar.isSliderDown());
    QTest::mouseMove(&bar, QPoint(1, 138));
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, QPoint(1, 138));
    QCOMPARE(bar.value(), 1000);
}

void VantorelStyleTest::aToolTipIsNoWiderThanItsLimit()
{
    QWidget window;
    prepare(window);
    QToolTip::showText(QPoint(10, 10), QStringLiteral("many words after another ").repeated(20),
                       &window);
    QTRY_VERIFY(toolTip());
    QVERIFY2(toolTip()->width() <= 482, qPrintable(QString::number(toolTip()->width())));
    QVERIFY(toolTip()->width() > 300);
    QVERIFY(toolTip()->height() > 60);
    QToolTip::hideText();
    QTRY_VERIFY(!toolTip());
}

void VantorelStyleTest::aToolTipIsOnTheMenusGround()
{
    preferences_->setDark(true);
    VantorelStyle::applyTheme();
    QWidget window;
    prepare(window);
    QToolTip::showText(QPoint(10, 10), QStringLiteral("a tip"), &window);
    QTRY_VERIFY(toolTip());
    const QImage image = Pixels::painted(*toolTip());
    COMPARE_PIXEL(image, 3, 3, DesignColors::color(ColorRole::Menu));
    COMPARE_PIXEL(image, 0, 8, roleColor(ColorRole::EdgeControl, ColorRole::Menu));
    QToolTip::hideText();
    QTRY_VERIFY(!toolTip());
}

void VantorelStyleTest::controlsHaveTheirGrounds_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void VantorelStyleTest::controlsHaveTheirGrounds()
{
    QFETCH(bool, isDark);
    preferences_->setDark(isDark);
    VantorelStyle::applyTheme();
    QPushButton button;
    QComboBox selector;
    QLineEdit field;
    for (QWidget *control : {static_cast<QWidget *>(&button), static_cast<QWidget *>(&selector),
                             static_cast<QWidget *>(&field)}) {
        control->resize(100, 32);
        prepare(*control);
    }
    const QColor control = DesignColors::color(ColorRole::Control);
    COMPARE_PIXEL(Pixels::painted(button), 20, 16, control);
    COMPARE_PIXEL(Pixels::painted(button), 50, 0,
                  roleColor(ColorRole::EdgeControl, ColorRole::Control));
    COMPARE_PIXEL(Pixels::painted(button), 0, 0, QColor(Qt::transparent));
    COMPARE_PIXEL(Pixels::painted(selector), 40, 16, control);
    COMPARE_PIXEL(Pixels::painted(field), 60, 16, DesignColors::color(ColorRole::Surface));
    COMPARE_PIXEL(Pixels::painted(field), 60, 0,
                  roleColor(ColorRole::EdgeField, ColorRole::Surface));
    button.setDown(true);
    COMPARE_PIXEL(Pixels::painted(button), 20, 16, DesignColors::color(ColorRole::ControlPressed));
    button.setDown(false);
    button.setEnabled(false);
    COMPARE_PIXEL(Pixels::painted(button), 20, 16, QColor(Qt::transparent));
}

void VantorelStyleTest::theMouseChangesTheGround()
{
    const QColor white(255, 255, 255);
    const auto enabled = QStyle::State_Enabled;
    const auto hovered = enabled | QStyle::State_MouseOver;
    const auto pressed = hovered | QStyle::State_Sunken;
    const auto on = [&white](ColorRole role) {
        return Pixels::over(DesignColors::color(role), white);
    };
    const auto button = [](QStyle::State state) {
        return drawn(QStyle::PE_PanelButtonCommand, QStyleOptionButton(), state);
    };
    COMPARE_PIXEL(button(hovered), 20, 15, on(ColorRole::ControlHover));
    COMPARE_PIXEL(button(pressed), 20, 15, on(ColorRole::ControlPressed));
    const auto tool = [](QStyle::State state) {
        return drawn(QStyle::PE_PanelButtonTool, QStyleOptionToolButton(), state);
    };
    COMPARE_PIXEL(tool(enabled), 20, 15, white);
    COMPARE_PIXEL(tool(hovered), 20, 15, on(ColorRole::GhostHover));
    COMPARE_PIXEL(tool(pressed), 20, 15, on(ColorRole::GhostPressed));
    COMPARE_PIXEL(tool(enabled | QStyle::State_On), 20, 15, on(ColorRole::GhostPressed));
    COMPARE_PIXEL(tool(QStyle::State_MouseOver), 20, 15, white);
}

void VantorelStyleTest::framesAreLinesAlone()
{
    const QColor white(255, 255, 255);
    const auto on = [&white](ColorRole role) {
        return Pixels::over(DesignColors::color(role), white);
    };
    const QImage frame = drawn(QStyle::PE_Frame, QStyleOptionFrame(), QStyle::State_Enabled);
    COMPARE_PIXEL(frame, 0, 15, on(ColorRole::Edge));
    COMPARE_PIXEL(frame, 39, 29, on(ColorRole::Edge));
    COMPARE_PIXEL(frame, 1, 15, white);
    COMPARE_PIXEL(frame, 20, 15, white);
    const QImage focus =
        drawn(QStyle::PE_FrameFocusRect, QStyleOptionFocusRect(), QStyle::State_Enabled);
    COMPARE_PIXEL(focus, 20, 0, on(ColorRole::Focus));
    COMPARE_PIXEL(focus, 39, 15, on(ColorRole::Focus));
    COMPARE_PIXEL(focus, 0, 0, white); // its corners are round
    COMPARE_PIXEL(focus, 20, 15, white);
}

void VantorelStyleTest::theArrowPointsDown()
{
    const QImage arrow =
        drawn(QStyle::PE_IndicatorArrowDown, QStyleOption(), QStyle::State_Enabled);
    QRect ink;
    for (int y = 0; y < arrow.height(); ++y) {
        for (int x = 0; x < arrow.width(); ++x)
            ink |= arrow.pixelColor(x, y).lightness() < 200 ? QRect(x, y, 1, 1) : QRect();
    }
    QVERIFY(std::abs(ink.center().x() - 20) <= 1 && std::abs(ink.center().y() - 15) <= 1);
    QVERIFY(ink.width() >= 8 && ink.height() <= 7);
    QVERIFY(arrow.pixelColor(20, ink.bottom()).lightness() < 200);
    QVERIFY(arrow.pixelColor(20, ink.top()).lightness() > 200);
    QVERIFY(isWrittenIn(ColorRole::TextSecondary, arrow, arrow.rect()));
    QVERIFY(isWrittenIn(ColorRole::TextDisabled,
                        drawn(QStyle::PE_IndicatorArrowDown, QStyleOption(), QStyle::State()),
                        arrow.rect()));
}

void VantorelStyleTest::aDisabledSelectorHasNoGround_data()
{
    controlsHaveTheirGrounds_data();
}

void VantorelStyleTest::aDisabledSelectorHasNoGround()
{
    QFETCH(bool, isDark);
    preferences_->setDark(isDark);
    QComboBox selector;
    selector.resize(100, 32);
    selector.setEnabled(false);
    prepare(selector);
    const QImage image = Pixels::painted(selector, Qt::white);
    COMPARE_PIXEL(image, 40, 16, QColor(Qt::white));
    COMPARE_PIXEL(image, 40, 0,
                  Pixels::over(DesignColors::color(ColorRole::EdgeControl), Qt::white));
}

void VantorelStyleTest::aTextFieldWithoutFrameHasNoGround()
{
    QLineEdit field;
    field.setFrame(false);
    field.resize(100, 28);
    prepare(field);
    COMPARE_PIXEL(Pixels::painted(field), 60, 14, QColor(Qt::transparent));
}

void VantorelStyleTest::aTableHeadHasItsGroundAndLine()
{
    QTreeView view;
    QStandardItemModel model(1, 1);
    view.setModel(&model);
    view.resize(200, 100);
    prepare(view);
    const QImage image = Pixels::painted(*view.header());
    QVERIFY(view.header()->height() >= 24);
    COMPARE_PIXEL(image, 150, 5, DesignColors::color(ColorRole::SurfaceHead));
    COMPARE_PIXEL(image, 150, view.header()->height() - 1,
                  roleColor(ColorRole::Edge, ColorRole::SurfaceHead));
}

void VantorelStyleTest::everyPartOfTheFilePanelIsDarkInTheDark()
{
    preferences_->setDark(true);
    VantorelStyle::applyTheme();
    const Scratch scratch;
    QFileDialog panel(nullptr, QString(), QFile::decodeName(scratch.path()));
    panel.setOption(QFileDialog::DontUseNativeDialog);
    panel.resize(600, 400);
    prepare(panel);
    const QImage image = panel.grab().toImage();
    int bright = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            bright += image.pixelColor(x, y).lightness() > 130 ? 1 : 0;
    }
    // Texts and icons only.
    QVERIFY2(bright < image.width() * image.height() / 25, qPrintable(QString::number(bright)));
}

QTEST_MAIN(VantorelStyleTest)
#include "VantorelStyleTest.moc"
