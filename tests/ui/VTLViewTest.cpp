#include "ui/VTLView.h"

#include "Pixels.h"
#include "ThemedPreferences.h"
#include "ui/RoundedCorners.h"

#include <QTest>

#include <array>
#include <functional>

namespace {

const QString style = QStringLiteral("Mine");
const QColor red(255, 0, 0);
const QColor green(0, 255, 0);
const QColor blue(0, 0, 255);
const QColor yellow(255, 255, 0);
const QColor white(255, 255, 255);

QByteArray bytes(const QColor &color)
{
    return ColorProperties::archived({color.redF(), color.greenF(), color.blueF(), color.alphaF()});
}

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

QString key(const char *ending)
{
    return style + QLatin1Char('_') + QLatin1String(ending);
}

/// A view whose hooks are open, and that says how often it was drawn and dragged.
class OpenView : public VTLView
{
  public:
    using VTLView::VTLView;

    int drags = 0;
    int drawings = 0;
    QRect drawn;

  protected:
    void drawRect(QPainter &painter, const QRect &dirtyRect) override
    {
        ++drawings;
        drawn = dirtyRect;
        VTLView::drawRect(painter, dirtyRect);
    }
    void performWindowDrag() override { ++drags; }
};

/// Hears of the presses that its children leave to it.
class Below : public QWidget
{
  public:
    int presses = 0;

  protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

} // namespace

class VTLViewTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theWindowsGroundIsItsGradient_data();
    void theWindowsGroundIsItsGradient();
    void aViewWithoutNameDrawsNothing();
    void aStyleWithoutColoursDrawsNothing();
    void aPlainGroundIsFilledOverWhatIsBelow();
    void aGradientWithoutItsEndLeavesThePlainGround();
    void aGradientBeatsThePlainGround();
    void bordersLieAtTheirEdges();
    void bordersReplaceEachOtherWhereTheyMeet();
    void theGroundCoversTheBorders();
    void theTintLiesOverAllElse();
    void theTintFillsTheDirtyRectangleOnly();
    void aFlippedViewHasItsTopBelow();

    void theCacheIsBuiltByTheFirstDrawing();
    void aDrawingReadsNothingButTheCache();
    void aThemeChangeRebuildsAtTheNextDrawing();
    void twoThemeChangesBetweenDrawingsRebuildNothing();
    void anotherNameIsLookedUpAtTheNextDrawing();

    void aTrackingViewDrawsDarkWhileTheSidebarIsForced();
    void aViewThatDoesNotTrackStaysLight();
    void aChangeOfTheForceRebuildsAtOnce();
    void trackingThatWasBegunGoesOn();
    void aForcedViewStillRemembersTheRealTheme();

    void aStyleWithoutInactiveColourIgnoresTheMainWindow();
    void anInactiveColourIsTheTintWhileTheWindowIsNotMain();
    void becomingMainTakesTheInactiveTintAway();
    void aViewIsTakenForOneOfTheMainWindow();

    void whatChangesItsLookAsksForDrawing_data();
    void whatChangesItsLookAsksForDrawing();

    void aRadiusBelowOneChangesNothing_data();
    void aRadiusBelowOneChangesNothing();
    void aRadiusClipsTheViewAndItsChildrenUnderALine();
    void atTwiceTheScaleTheLineIsAsThickAndAsFine();
    void theLineKnowsNoTheme();
    void aLaterRadiusTakesThePlaceOfTheFirst();

    void aPressIsTakenAndMovesTheWindowIfAllowed_data();
    void aPressIsTakenAndMovesTheWindowIfAllowed();
    void otherButtonsGoToTheParent();
    void vibrancyIsAllowedWhereItIsDisabled();
    void aViewThatHasGoneHearsNothing();

  private:
    void setColors(const QHash<QString, QColor> &colors)
    {
        QVariantMap table;
        for (auto color = colors.begin(); color != colors.end(); ++color)
            table.insert(color.key(), bytes(*color));
        preferences_->setColors(table);
    }
    [[nodiscard]] QColor centre(VTLView &view) const
    {
        return Pixels::painted(view, white).pixelColor(view.rect().center());
    }
    static void forceSidebar(bool isForced)
    {
        UserDefaults::standard().setValue(ThemeKeys::forceDarkSidebar, isForced);
    }
    static void post(QLatin1String name) { NotificationHub::shared().post(name); }

    std::optional<ThemedPreferences> preferences_;
    std::optional<OpenView> view_;
};

void VTLViewTest::init()
{
    preferences_.emplace();
    view_.emplace(style);
    view_->resize(40, 20);
}

void VTLViewTest::cleanup()
{
    view_.reset();
    preferences_.reset();
}

void VTLViewTest::theWindowsGroundIsItsGradient_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QColor>("above");
    QTest::addColumn<QColor>("below");
    QTest::newRow("light") << false << QColor(243, 245, 246) << QColor(230, 231, 231);
    QTest::newRow("dark") << true << QColor(39, 44, 49) << QColor(31, 36, 41);
}

void VTLViewTest::theWindowsGroundIsItsGradient()
{
    QFETCH(bool, isDark);
    QFETCH(QColor, above);
    QFETCH(QColor, below);
    preferences_->setDark(isDark);
    VTLView view(QStringLiteral("DefaultWindowView"));
    view.resize(20, 557);
    const QImage image = Pixels::painted(view);
    for (const int x : {0, 10, 19}) {
        COMPARE_PIXEL(image, x, 0, above);
        COMPARE_PIXEL(image, x, 556, below);
    }
    const QColor middle((above.red() + below.red()) / 2, (above.green() + below.green()) / 2,
                        (above.blue() + below.blue()) / 2);
    COMPARE_PIXEL(image, 10, 278, middle);
}

void VTLViewTest::aViewWithoutNameDrawsNothing()
{
    // Without a style the key would begin with its line.
    setColors({{QStringLiteral("_bg_light"), red}});
    VTLView view;
    view.resize(10, 10);
    COMPARE_PIXEL(Pixels::painted(view), 5, 5, QColor(Qt::transparent));
}

void VTLViewTest::aStyleWithoutColoursDrawsNothing()
{
    COMPARE_PIXEL(Pixels::painted(*view_), 5, 5, QColor(Qt::transparent));
    QVERIFY(view_->colorCache().isBuilt());
    QCOMPARE(view_->colorCache().count(), 0);
}

void VTLViewTest::aPlainGroundIsFilledOverWhatIsBelow()
{
    setColors({{key("bg_light"), withAlpha(red, 0.5)}});
    const QImage image = Pixels::painted(*view_, white);
    COMPARE_PIXEL(image, 0, 0, QColor(255, 127, 127));
    COMPARE_PIXEL(image, 39, 19, QColor(255, 127, 127));
}

void VTLViewTest::aGradientWithoutItsEndLeavesThePlainGround()
{
    setColors({{key("bg_light"), red}, {key("bggradstart_light"), green}});
    COMPARE_PIXEL(Pixels::painted(*view_), 5, 0, red);
    setColors({{key("bg_light"), red}, {key("bggradend_light"), green}});
    view_->changeToName(style);
    COMPARE_PIXEL(Pixels::painted(*view_), 5, 19, red);
}

void VTLViewTest::aGradientBeatsThePlainGround()
{
    setColors({{key("bg_light"), red},
               {key("bggradstart_light"), green},
               {key("bggradend_light"), green}});
    COMPARE_PIXEL(Pixels::painted(*view_), 5, 5, green);
}

void VTLViewTest::bordersLieAtTheirEdges()
{
    setColors({{key("tb_light"), red},
               {key("rb_light"), green},
               {key("bb_light"), blue},
               {key("lb_light"), yellow}});
    const QImage image = Pixels::painted(*view_);
    COMPARE_PIXEL(image, 20, 0, red);
    COMPARE_PIXEL(image, 39, 10, green);
    COMPARE_PIXEL(image, 20, 19, blue);
    COMPARE_PIXEL(image, 0, 10, yellow);
    for (const QPoint &inner : {QPoint(20, 1), QPoint(38, 10), QPoint(20, 18), QPoint(1, 10)})
        COMPARE_PIXEL(image, inner.x(), inner.y(), QColor(Qt::transparent));
}

void VTLViewTest::bordersReplaceEachOtherWhereTheyMeet()
{
    setColors({{key("tb_light"), withAlpha(red, 0.5)},
               {key("rb_light"), withAlpha(green, 0.5)},
               {key("bb_light"), withAlpha(blue, 0.5)},
               {key("lb_light"), withAlpha(yellow, 0.5)}});
    const QImage image = Pixels::painted(*view_, white);
    COMPARE_PIXEL(image, 0, 0, Pixels::over(withAlpha(yellow, 0.5), white));
    COMPARE_PIXEL(image, 0, 19, Pixels::over(withAlpha(yellow, 0.5), white));
    COMPARE_PIXEL(image, 39, 0, Pixels::over(withAlpha(green, 0.5), white));
    COMPARE_PIXEL(image, 39, 19, Pixels::over(withAlpha(green, 0.5), white));
}

void VTLViewTest::theGroundCoversTheBorders()
{
    setColors({{key("tb_light"), red}, {key("bg_light"), green}});
    COMPARE_PIXEL(Pixels::painted(*view_), 20, 0, green);
    setColors({{key("tb_light"), red}, {key("bg_light"), withAlpha(green, 0.5)}});
    view_->changeToName(style);
    COMPARE_PIXEL(Pixels::painted(*view_), 20, 0, Pixels::over(withAlpha(green, 0.5), red));
}

void VTLViewTest::theTintLiesOverAllElse()
{
    setColors({{key("tb_light"), red},
               {key("bggradstart_light"), white},
               {key("bggradend_light"), white},
               {key("tint_light"), withAlpha(blue, 0.5)}});
    COMPARE_PIXEL(Pixels::painted(*view_), 20, 0, QColor(127, 127, 255));
    COMPARE_PIXEL(Pixels::painted(*view_), 20, 10, QColor(127, 127, 255));
}

void VTLViewTest::theTintFillsTheDirtyRectangleOnly()
{
    setColors({{key("bg_light"), white}, {key("tint_light"), withAlpha(blue, 0.5)}});
    QImage image(view_->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QRect part(10, 5, 8, 6);
    view_->render(&image, part.topLeft(), part, QWidget::RenderFlags());
    QCOMPARE(view_->drawn, part);
    COMPARE_PIXEL(image, 10, 5, QColor(127, 127, 255));
    COMPARE_PIXEL(image, 9, 5, QColor(Qt::transparent));
}

void VTLViewTest::aFlippedViewHasItsTopBelow()
{
    setColors({{key("tb_light"), red}, {key("bb_light"), blue}});
    QVERIFY(!view_->isFlipped());
    view_->setViewIsflipped(true);
    QVERIFY(view_->isFlipped());
    QImage image = Pixels::painted(*view_);
    COMPARE_PIXEL(image, 20, 0, blue);
    COMPARE_PIXEL(image, 20, 19, red);

    setColors({{key("bggradstart_light"), white}, {key("bggradend_light"), QColor(0, 0, 0)}});
    view_->changeToName(style);
    view_->resize(40, 400);
    image = Pixels::painted(*view_);
    COMPARE_PIXEL(image, 20, 399, white);
    COMPARE_PIXEL(image, 20, 0, QColor(0, 0, 0));
}

void VTLViewTest::theCacheIsBuiltByTheFirstDrawing()
{
    preferences_->setDark(true);
    setColors({{key("bg_dark"), red}});
    QVERIFY(!view_->colorCache().isBuilt());
    QVERIFY(!view_->lastMode());
    COMPARE_PIXEL(Pixels::painted(*view_), 5, 5, red);
    QVERIFY(view_->colorCache().isBuilt());
    QVERIFY(view_->lastMode());
    QCOMPARE(view_->colorCache().color(QLatin1String("bgcolor")), std::optional(red));
}

void VTLViewTest::aDrawingReadsNothingButTheCache()
{
    setColors({{key("bg_light"), red}});
    QCOMPARE(centre(*view_), red);
    setColors({{key("bg_light"), green}});
    QCOMPARE(centre(*view_), red);
}

void VTLViewTest::aThemeChangeRebuildsAtTheNextDrawing()
{
    setColors({{key("bg_light"), red}, {key("bg_dark"), green}});
    QCOMPARE(centre(*view_), red);
    preferences_->setDark(true);
    QVERIFY(!view_->lastMode());
    QCOMPARE(centre(*view_), green);
    QVERIFY(view_->lastMode());
}

void VTLViewTest::twoThemeChangesBetweenDrawingsRebuildNothing()
{
    setColors({{key("bg_light"), red}, {key("bg_dark"), blue}});
    QCOMPARE(centre(*view_), red);
    setColors({{key("bg_light"), green}, {key("bg_dark"), blue}});
    preferences_->setDark(true);
    preferences_->setDark(false);
    QCOMPARE(centre(*view_), red);
}

void VTLViewTest::anotherNameIsLookedUpAtTheNextDrawing()
{
    setColors({{key("bg_light"), red}, {QStringLiteral("Other_bg_light"), green}});
    QCOMPARE(centre(*view_), red);
    view_->changeToName(QStringLiteral("Other"));
    QCOMPARE(view_->name(), QStringLiteral("Other"));
    QVERIFY(!view_->colorCache().isBuilt());
    QCOMPARE(centre(*view_), green);
}

void VTLViewTest::aTrackingViewDrawsDarkWhileTheSidebarIsForced()
{
    setColors({{key("bg_light"), red}, {key("bg_dark"), green}});
    forceSidebar(true);
    view_->setTrackForceDarkSidebarAppearance(true);
    QCOMPARE(centre(*view_), green);
}

void VTLViewTest::aViewThatDoesNotTrackStaysLight()
{
    setColors({{key("bg_light"), red}, {key("bg_dark"), green}});
    forceSidebar(true);
    QCOMPARE(centre(*view_), red);
}

void VTLViewTest::aChangeOfTheForceRebuildsAtOnce()
{
    setColors({{key("bg_light"), red}, {key("bg_dark"), green}});
    view_->setTrackForceDarkSidebarAppearance(true);
    QCOMPARE(centre(*view_), red);
    forceSidebar(true);
    QCOMPARE(view_->colorCache().color(QLatin1String("bgcolor")), std::optional(green));
    forceSidebar(false);
    QCOMPARE(view_->colorCache().color(QLatin1String("bgcolor")), std::optional(red));
    UserDefaults::standard().setValue(QStringLiteral("another key"), 1);
    QCOMPARE(centre(*view_), red);
}

void VTLViewTest::trackingThatWasBegunGoesOn()
{
    setColors({{key("bg_light"), red}});
    view_->setTrackForceDarkSidebarAppearance(true);
    view_->setTrackForceDarkSidebarAppearance(false);
    QCOMPARE(centre(*view_), red);
    setColors({{key("bg_light"), green}, {key("bg_dark"), blue}});
    forceSidebar(true);
    // Built anew, because it still hears of the force; light, because it no longer obeys it.
    QCOMPARE(centre(*view_), green);
}

void VTLViewTest::aForcedViewStillRemembersTheRealTheme()
{
    setColors({{key("bg_dark"), green}});
    forceSidebar(true);
    view_->setTrackForceDarkSidebarAppearance(true);
    QCOMPARE(centre(*view_), green);
    QVERIFY(!view_->lastMode());
    setColors({{key("bg_dark"), blue}});
    preferences_->setDark(true);
    QCOMPARE(centre(*view_), blue);
    QVERIFY(view_->lastMode());
}

void VTLViewTest::aStyleWithoutInactiveColourIgnoresTheMainWindow()
{
    setColors({{key("bg_light"), red}});
    QCOMPARE(centre(*view_), red);
    QVERIFY(!view_->hasKeyColor());
    post(NotificationName::windowDidResignMain);
    QVERIFY(view_->isMainWindow());
    QVERIFY(view_->colorCache().isBuilt());
}

void VTLViewTest::anInactiveColourIsTheTintWhileTheWindowIsNotMain()
{
    setColors({{key("bg_light"), red},
               {key("tint_light"), withAlpha(green, 0.5)},
               {key("bg_light_inactive"), blue}});
    QCOMPARE(centre(*view_), Pixels::over(withAlpha(green, 0.5), red));
    QVERIFY(view_->hasKeyColor());
    post(NotificationName::windowDidResignMain);
    QVERIFY(!view_->isMainWindow());
    QVERIFY(!view_->colorCache().isBuilt());
    QCOMPARE(centre(*view_), blue);
}

void VTLViewTest::becomingMainTakesTheInactiveTintAway()
{
    setColors({{key("bg_light"), red}, {key("bg_light_inactive"), blue}});
    QCOMPARE(centre(*view_), red);
    post(NotificationName::windowDidResignMain);
    QCOMPARE(centre(*view_), blue);
    post(NotificationName::windowDidBecomeMain);
    QVERIFY(view_->isMainWindow());
    QCOMPARE(centre(*view_), red);
}

void VTLViewTest::aViewIsTakenForOneOfTheMainWindow()
{
    setColors({{key("bg_light"), red}, {key("bg_light_inactive"), blue}});
    QVERIFY(view_->isMainWindow());
    // Nobody ever tells a view that its window is not the main one; before a drawing it would not
    // even listen.
    post(NotificationName::windowDidResignMain);
    QVERIFY(view_->isMainWindow());
    QCOMPARE(centre(*view_), red);
    post(NotificationName::windowDidBecomeMain);
    QCOMPARE(centre(*view_), red);
}

void VTLViewTest::whatChangesItsLookAsksForDrawing_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("another style") << 0;
    QTest::newRow("the window becomes main") << 1;
    QTest::newRow("the window is no longer main") << 2;
    QTest::newRow("the dark sidebar is forced") << 3;
    QTest::newRow("its top is below") << 4;
}

void VTLViewTest::whatChangesItsLookAsksForDrawing()
{
    QFETCH(int, change);
    setColors({{key("bg_light"), red}, {key("bg_light_inactive"), blue}});
    view_->setTrackForceDarkSidebarAppearance(true);
    view_->show();
    QVERIFY(QTest::qWaitForWindowExposed(&*view_));
    QTRY_VERIFY(view_->drawings > 0);
    QCoreApplication::processEvents();
    const int before = view_->drawings;
    const std::array<std::function<void()>, 5> changes{
        [this] { view_->changeToName(QStringLiteral("Other")); },
        [] { post(NotificationName::windowDidBecomeMain); },
        [] { post(NotificationName::windowDidResignMain); }, [] { forceSidebar(true); },
        [this] { view_->setViewIsflipped(true); }};
    changes.at(std::size_t(change))();
    QTRY_VERIFY(view_->drawings > before);
}

void VTLViewTest::aRadiusBelowOneChangesNothing_data()
{
    QTest::addColumn<int>("radius");
    QTest::newRow("none") << 0;
    QTest::newRow("below zero") << -3;
}

void VTLViewTest::aRadiusBelowOneChangesNothing()
{
    QFETCH(int, radius);
    view_->setCornerRadius(radius);
    QCOMPARE(view_->cornerRadius(), 0);
    QVERIFY(!view_->graphicsEffect());
    view_->setCornerRadius(6);
    const QGraphicsEffect *effect = view_->graphicsEffect();
    view_->setCornerRadius(radius);
    QCOMPARE(view_->cornerRadius(), 6);
    QCOMPARE(view_->graphicsEffect(), effect);
}

void VTLViewTest::aRadiusClipsTheViewAndItsChildrenUnderALine()
{
    setColors({{key("bg_light"), red}});
    QWidget window;
    window.resize(60, 40);
    view_->setParent(&window);
    view_->setGeometry(10, 10, 40, 20);
    view_->setCornerRadius(6);
    QCOMPARE(view_->cornerRadius(), 6);
    VTLView child(QStringLiteral("Child"), &*view_);
    setColors({{key("bg_light"), red}, {QStringLiteral("Child_bg_light"), green}});
    child.setGeometry(0, 0, 20, 20);
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(white);
    window.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    view_->setParent(nullptr);

    for (const QPoint &corner : {QPoint(10, 10), QPoint(49, 10), QPoint(10, 29), QPoint(49, 29)})
        COMPARE_PIXEL(image, corner.x(), corner.y(), white);
    COMPARE_PIXEL(image, 20, 20, green);
    COMPARE_PIXEL(image, 40, 20, red);
    COMPARE_PIXEL(image, 20, 10, QColor(0, 204, 0));
    COMPARE_PIXEL(image, 10, 20, QColor(0, 204, 0));
    COMPARE_PIXEL(image, 40, 10, QColor(204, 0, 0));
    COMPARE_PIXEL(image, 49, 20, QColor(204, 0, 0));
    COMPARE_PIXEL(image, 48, 20, red);
    COMPARE_PIXEL(image, 40, 29, QColor(204, 0, 0));
    COMPARE_PIXEL(image, 50, 20, white);
}

void VTLViewTest::atTwiceTheScaleTheLineIsAsThickAndAsFine()
{
    setColors({{key("bg_light"), red}});
    QWidget window;
    window.resize(60, 40);
    view_->setParent(&window);
    view_->setGeometry(10, 10, 40, 20);
    view_->setCornerRadius(6);
    QImage image(window.size() * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(white);
    window.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    view_->setParent(nullptr);

    const QColor line(204, 0, 0);
    for (const int first : {20, 21, 58, 59}) {
        COMPARE_PIXEL(image, 60, first, line);
        COMPARE_PIXEL(image, first == 58 || first == 59 ? first + 40 : first, 40, line);
    }
    for (const QPoint &inner : {QPoint(60, 22), QPoint(60, 57), QPoint(22, 40), QPoint(97, 40)})
        COMPARE_PIXEL(image, inner.x(), inner.y(), red);
    for (const QPoint &outer : {QPoint(60, 19), QPoint(60, 60), QPoint(19, 40), QPoint(100, 40),
                                QPoint(20, 20), QPoint(99, 20), QPoint(20, 59), QPoint(99, 59)})
        COMPARE_PIXEL(image, outer.x(), outer.y(), white);
}

void VTLViewTest::theLineKnowsNoTheme()
{
    preferences_->setDark(true);
    setColors({{key("bg_dark"), white}});
    QWidget window;
    window.resize(40, 20);
    view_->setParent(&window);
    view_->setCornerRadius(6);
    QImage image(window.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(blue);
    window.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    view_->setParent(nullptr);
    COMPARE_PIXEL(image, 20, 0, QColor(204, 204, 204));
    COMPARE_PIXEL(image, 20, 1, white);
}

void VTLViewTest::aLaterRadiusTakesThePlaceOfTheFirst()
{
    view_->setCornerRadius(6);
    view_->setCornerRadius(9);
    QCOMPARE(view_->cornerRadius(), 9);
    const auto *corners = dynamic_cast<const RoundedCorners *>(view_->graphicsEffect());
    QVERIFY(corners);
    QCOMPARE(corners->radius(), 9);
}

void VTLViewTest::aPressIsTakenAndMovesTheWindowIfAllowed_data()
{
    QTest::addColumn<bool>("isAllowed");
    QTest::newRow("allowed") << true;
    QTest::newRow("not allowed") << false;
}

void VTLViewTest::aPressIsTakenAndMovesTheWindowIfAllowed()
{
    QFETCH(bool, isAllowed);
    Below below;
    view_->setParent(&below);
    view_->setAllowDraggingWindow(isAllowed);
    QCOMPARE(view_->allowDraggingWindow(), isAllowed);
    QTest::mousePress(&*view_, Qt::LeftButton);
    view_->setParent(nullptr);
    QCOMPARE(below.presses, 0);
    QCOMPARE(view_->drags, int(isAllowed));
}

void VTLViewTest::otherButtonsGoToTheParent()
{
    Below below;
    view_->setParent(&below);
    view_->setAllowDraggingWindow(true);
    QTest::mousePress(&*view_, Qt::RightButton);
    view_->setParent(nullptr);
    QCOMPARE(below.presses, 1);
    QCOMPARE(view_->drags, 0);
}

void VTLViewTest::vibrancyIsAllowedWhereItIsDisabled()
{
    QVERIFY(!view_->allowsVibrancy());
    view_->setDisableVibrancy(true);
    QVERIFY(view_->allowsVibrancy());
    QVERIFY(view_->disableVibrancy());
}

void VTLViewTest::aViewThatHasGoneHearsNothing()
{
    setColors({{key("bg_light_inactive"), blue}});
    int builds = 0;
    struct Counting : VTLView
    {
        explicit Counting(int *count) : VTLView(::style), builds(count) {}
        void buildColorsForDarkMode(bool isDark) override
        {
            ++*builds;
            VTLView::buildColorsForDarkMode(isDark);
        }
        int *builds;
    };
    auto view = std::make_unique<Counting>(&builds);
    view->setTrackForceDarkSidebarAppearance(true);
    view->buildColorCacheForDarkMode(false);
    forceSidebar(true);
    QCOMPARE(builds, 2);
    view.reset();
    post(NotificationName::windowDidBecomeMain);
    forceSidebar(false);
    QCOMPARE(builds, 2);
}

QTEST_MAIN(VTLViewTest)
#include "VTLViewTest.moc"
