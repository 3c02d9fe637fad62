#include "ui/DragVeil.h"

#include "ui/ColorProperties.h"
#include "ui/ControlPaint.h"
#include "ui/DesignColors.h"
#include "ui/PaintedWidget.h"
#include "ui/ThemedPreferences.h"

#include <QTest>

class DragVeilTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();

    void theCardStandsInTheUpperMiddle();
    void aFrameAVeilAndACardLieOverTheView();
    void theFrameFollowsTheLowerCorners();
    void itComesAndGoesSoftly();
    void withReducedMotionItIsThereAtOnce();
    void screenReadersGetItsTexts();
    void theShadowIsDarkestUnderItsBoxAndEndsWithinItsReach();

  private:
    ThemedPreferences preferences_;
};

void DragVeilTest::initTestCase()
{
    PaintedWidget::useFontOf(13);
}

void DragVeilTest::theCardStandsInTheUpperMiddle()
{
    QCOMPARE(DragVeil::cardRect({720, 520}, {320, 88}), QRect(200, 200, 320, 88));
    QCOMPARE(DragVeil::cardRect({920, 720}, {320, 88}), QRect(300, 300, 320, 88));
}

void DragVeilTest::aFrameAVeilAndACardLieOverTheView()
{
    for (const bool isDark : {false, true}) {
        preferences_.setDark(isDark);
        DragVeil veil;
        veil.resize(720, 520);
        veil.setPrefersReducedMotion([] { return true; });
        veil.setShown(true);
        const QColor ground(200, 40, 40);
        const QImage picture = PaintedWidget::of(veil, ground);
        const QColor focus = DesignColors::color(ColorRole::Focus);
        COMPARE_COLOR(picture.pixelColor(0, 260), focus);
        COMPARE_COLOR(picture.pixelColor(1, 260), focus);
        COMPARE_COLOR(picture.pixelColor(360, 1), focus);
        COMPARE_COLOR(picture.pixelColor(360, 518), focus);
        const auto stored = [isDark](const char16_t *style, const char *property) {
            return ColorProperties::color(ColorProperties::key(QString::fromUtf16(style),
                                                               QLatin1String(property), isDark))
                .value();
        };
        COMPARE_COLOR(picture.pixelColor(210, 210), stored(u"DefaultAlertView", "bg"));
        // Near the bottom the window's ground is at the end of its gradient.
        QColor window = stored(u"DefaultWindowView", "bggradend");
        window.setAlphaF(0.55F);
        const QColor veiled = PaintedWidget::over(DesignColors::color(ColorRole::Tint),
                                                  PaintedWidget::over(window, ground));
        QVERIFY2(PaintedWidget::isAbout(picture.pixelColor(30, 510), veiled, 3),
                 qPrintable(picture.pixelColor(30, 510).name() + veiled.name()));
    }
    preferences_.setDark(false);
}

void DragVeilTest::theFrameFollowsTheLowerCorners()
{
    DragVeil veil;
    veil.resize(720, 520);
    veil.setPrefersReducedMotion([] { return true; });
    veil.setShown(true);
    const auto lowerCorner = [&veil] {
        return PaintedWidget::of(veil, Qt::white).pixelColor(3, 516);
    };
    const QColor focus = DesignColors::color(ColorRole::Focus);
    QVERIFY(!PaintedWidget::isAbout(lowerCorner(), focus));
    veil.setCornerRadius(10);
    COMPARE_COLOR(lowerCorner(), focus);
    COMPARE_COLOR(PaintedWidget::of(veil, Qt::white).pixelColor(0, 0), focus);
}

void DragVeilTest::itComesAndGoesSoftly()
{
    DragVeil veil;
    veil.resize(720, 520);
    veil.setPrefersReducedMotion([] { return false; });
    const QColor focus = DesignColors::color(ColorRole::Focus);
    const auto frame = [&veil] { return PaintedWidget::of(veil, Qt::white).pixelColor(0, 260); };
    veil.setShown(true);
    QVERIFY(veil.isVisible());
    QVERIFY(!PaintedWidget::isAbout(frame(), focus));
    QTRY_VERIFY(PaintedWidget::isAbout(frame(), focus));
    veil.setShown(false);
    QVERIFY(veil.isVisible());
    QTRY_VERIFY(veil.isHidden());
}

void DragVeilTest::withReducedMotionItIsThereAtOnce()
{
    DragVeil veil;
    veil.resize(720, 520);
    veil.setPrefersReducedMotion([] { return true; });
    veil.setShown(true);
    COMPARE_COLOR(PaintedWidget::of(veil, Qt::white).pixelColor(0, 260),
                  DesignColors::color(ColorRole::Focus));
    veil.setShown(false);
    QVERIFY(veil.isHidden());
}

void DragVeilTest::screenReadersGetItsTexts()
{
    DragVeil veil;
    veil.setTexts(QStringLiteral("Release to add 5 items"), QStringLiteral("They join 1 file."));
    QCOMPARE(veil.accessibleDescription(),
             QStringLiteral("Release to add 5 items They join 1 file."));
}

void DragVeilTest::theShadowIsDarkestUnderItsBoxAndEndsWithinItsReach()
{
    constexpr int reach = 30; // three times half the blur
    QImage shadow(200 + 2 * reach + 20, 100 + 2 * reach, QImage::Format_ARGB32_Premultiplied);
    shadow.fill(Qt::transparent);
    QPainter painter(&shadow);
    ControlPaint::shadow(painter, QRectF(reach, reach, 200, 100), QColor(0, 0, 0, 127), 20, 0);
    painter.end();
    const auto opacity = [&shadow](int x, int y) { return shadow.pixelColor(x, y).alpha(); };
    QVERIFY(std::abs(opacity(100 + reach, 50 + reach) - 127) <= 1);
    // On the box's edge half of it.
    QVERIFY(std::abs(opacity(reach, 50 + reach) - 64) <= 3);
    QVERIFY(opacity(0, 50 + reach) <= 1);
    QCOMPARE(opacity(200 + 2 * reach, 50 + reach), 0);
}

QTEST_MAIN(DragVeilTest)
#include "DragVeilTest.moc"
