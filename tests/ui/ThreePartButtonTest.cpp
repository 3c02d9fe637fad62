#include "ui/ButtonBlue.h"
#include "ui/ButtonRed.h"

#include "ui/ThemedPreferences.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace {

using Scene = std::function<void(QPainter &)>;

QImage drawn(const QSize &size, const Scene &scene, const QColor &ground = Qt::transparent)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    scene(painter);
    return image;
}

/// What the button shows itself, over this ground.
QImage shown(ThreePartButton &button)
{
    return drawn(
        button.size(), [&](QPainter &painter) { button.render(&painter, {}, {}, {}); }, Qt::white);
}

bool isAbout(const QColor &color, const QColor &expected)
{
    constexpr int tolerance = 2;
    return std::abs(color.red() - expected.red()) <= tolerance &&
           std::abs(color.green() - expected.green()) <= tolerance &&
           std::abs(color.blue() - expected.blue()) <= tolerance;
}

/// Left of the title, in the third row: the fill alone.
QColor fill(const QImage &image)
{
    return image.pixelColor(8, 3);
}

const QColor inactiveOnWhite(0x95, 0x9D, 0xA6); // #687480, 70 %

} // namespace

class ThreePartButtonTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void imagesAndMiddleWidthsAreThoseOfTheClass();
    void atRestItShowsTheNormalImage();
    void onlyWhilePressedItShowsTheHighlightedImage();
    void aDisabledButtonShowsTheInactiveImageWhateverItsState();
    void statesOtherThanRestAndPressedDrawNoImage();
    void theTitleIsWhiteAndFaintWhenDisabled();
    void aDisabledRedButtonsTitleIsPaintedFaint();
    void theTitleTakesItsPlaceInTheMiddleOfTheFrame();
    void itsNaturalHeightIsTheImages_data();
    void itsNaturalHeightIsTheImages();
    void aLargerSystemFontMakesItHigher();
    void isMomentaryAndHasNoBezel();
    void aClickIsToldOnce();
    void aPressThatLeavesTheButtonIsNoClick();
    void spaceAndReturnPress_data();
    void spaceAndReturnPress();
    void aKeyHeldDownPressesOnce();
    void returnWithModifiersIsLeftToTheWindow();
    void looksTheSameInBothThemes();
    void screenReadersSeeAButtonWithItsTitle();

  private:
    ThemedPreferences preferences_;
};

void ThreePartButtonTest::init()
{
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
}

void ThreePartButtonTest::imagesAndMiddleWidthsAreThoseOfTheClass()
{
    const ButtonBlue blue(QStringLiteral("Choose"));
    QCOMPARE(blue.imgNormal().mp.image, QStringLiteral("btn_blue"));
    QCOMPARE(blue.imgHigh().mp.image, QStringLiteral("btn_blue_hi"));
    QCOMPARE(blue.imgInactive().mp.image, QStringLiteral("btn_blue_in"));
    QCOMPARE(blue.imgNormal().mp.source.width(), 57.0);
    QCOMPARE(blue.imgNormal().lp.source.width(), 4.0);

    const ButtonRed red(QStringLiteral("Start"));
    QCOMPARE(red.imgNormal().mp.image, QStringLiteral("btn_red"));
    QCOMPARE(red.imgHigh().mp.image, QStringLiteral("btn_red_hi"));
    QCOMPARE(red.imgInactive().mp.image, QStringLiteral("btn_red_in"));
    QCOMPARE(red.imgNormal().mp.source.width(), 42.0);
    QCOMPARE(red.imgNormal().rp.source.width(), 4.0);
}

void ThreePartButtonTest::atRestItShowsTheNormalImage()
{
    ButtonRed button(QStringLiteral("Start"));
    button.resize(144, 40);

    QCOMPARE(button.imageSet(0), &button.imgNormal());
    QVERIFY(isAbout(fill(shown(button)), QColor(0xCF, 0x44, 0x3A)));
}

void ThreePartButtonTest::onlyWhilePressedItShowsTheHighlightedImage()
{
    ButtonRed button(QStringLiteral("Start"));
    button.resize(144, 40);

    QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(70, 20));
    QCOMPARE(button.imageSet(1), &button.imgHigh());
    QVERIFY(isAbout(fill(shown(button)), QColor(0xA9, 0x32, 0x2A)));

    QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(70, 20));
    QVERIFY(isAbout(fill(shown(button)), QColor(0xCF, 0x44, 0x3A)));
}

void ThreePartButtonTest::aDisabledButtonShowsTheInactiveImageWhateverItsState()
{
    ButtonRed button(QStringLiteral("Start"));
    button.resize(144, 40);
    button.setEnabled(false);

    for (const int state : {0, 1, 2, -1})
        QCOMPARE(button.imageSet(state), &button.imgInactive());
    QVERIFY(isAbout(fill(shown(button)), inactiveOnWhite));
}

void ThreePartButtonTest::statesOtherThanRestAndPressedDrawNoImage()
{
    const ButtonBlue button(QStringLiteral("Choose"));

    for (const int state : {2, 3, -1}) {
        QCOMPARE(button.imageSet(state), nullptr);
        const QImage image = drawn(QSize(160, 32), [&](QPainter &painter) {
            button.drawInterior(painter, QRectF(0, 0, 160, 32), state);
        });
        QCOMPARE(fill(image).alpha(), 0);
        QCOMPARE(image.pixelColor(0, 16).alpha(), 0);
    }
}

void ThreePartButtonTest::theTitleIsWhiteAndFaintWhenDisabled()
{
    ButtonRed button(QStringLiteral("Start"));
    QCOMPARE(button.titleColor(), QColor(255, 255, 255, 255));

    button.setEnabled(false);
    QCOMPARE(button.titleColor().rgb(), QColor(Qt::white).rgb());
    QVERIFY(std::abs(button.titleColor().alphaF() - 0.3F) < 0.001F);
}

void ThreePartButtonTest::aDisabledRedButtonsTitleIsPaintedFaint()
{
    ButtonRed button(QStringLiteral("Start"));
    const auto strongest = [&] {
        const QImage image = drawn(QSize(144, 40), [&](QPainter &painter) {
            button.drawTitle(painter, QStringLiteral("IIIIII"), QRectF(0, 0, 144, 40));
        });
        int alpha = 0;
        for (int x = 0; x < image.width(); ++x)
            alpha = std::max(alpha, image.pixelColor(x, 20).alpha());
        return alpha;
    };

    QVERIFY(strongest() > 200);
    button.setEnabled(false);
    QVERIFY(strongest() > 50);
    QVERIFY(strongest() <= 77);
}

void ThreePartButtonTest::theTitleTakesItsPlaceInTheMiddleOfTheFrame()
{
    const ButtonBlue button(QStringLiteral("Done"));
    QRectF taken;

    drawn(QSize(200, 80), [&](QPainter &painter) {
        taken = button.drawTitle(painter, QStringLiteral("Done"), QRectF(20, 30, 160, 32));
    });

    QVERIFY(QRectF(20, 30, 160, 32).contains(taken));
    QVERIFY(std::abs(taken.center().x() - 100) <= 1);
    QVERIFY(std::abs(taken.center().y() - 46) <= 1);
}

void ThreePartButtonTest::itsNaturalHeightIsTheImages_data()
{
    QTest::addColumn<bool>("isBlue");
    QTest::addColumn<int>("height");
    QTest::newRow("blue") << true << 32;
    QTest::newRow("red") << false << 40;
}

void ThreePartButtonTest::itsNaturalHeightIsTheImages()
{
    QFETCH(const bool, isBlue);
    QFETCH(const int, height);

    const ButtonBlue blue(QStringLiteral("Choose"));
    const ButtonRed red(QStringLiteral("Start"));
    const ThreePartButton &button = isBlue ? static_cast<const ThreePartButton &>(blue) : red;

    QCOMPARE(button.sizeHint().height(), height);
}

void ThreePartButtonTest::aLargerSystemFontMakesItHigher()
{
    QFont font = QApplication::font();
    font.setPixelSize(18);
    QApplication::setFont(font);

    ButtonBlue button(QStringLiteral("Done"));
    button.resize(button.sizeHint());

    QCOMPARE(button.height(), int(std::lround(32.0 * 18 / 13)));
    // The corner is as small as before, the fill reaches both edges.
    const QImage image = shown(button);
    QVERIFY(isAbout(image.pixelColor(0, 0), Qt::white));
    QVERIFY(isAbout(image.pixelColor(8, button.height() - 2), QColor(0x2D, 0x6A, 0xB8)));
}

void ThreePartButtonTest::isMomentaryAndHasNoBezel()
{
    const ButtonBlue button(QStringLiteral("Done"));

    QVERIFY(!button.isCheckable());
    QVERIFY(button.isFlat());
}

void ThreePartButtonTest::aClickIsToldOnce()
{
    ButtonBlue button(QStringLiteral("Done"));
    button.resize(96, 32);
    const QSignalSpy clicks(&button, &ButtonBlue::clicked);

    QTest::mouseClick(&button, Qt::LeftButton);

    QCOMPARE(clicks.count(), 1);
}

void ThreePartButtonTest::aPressThatLeavesTheButtonIsNoClick()
{
    ButtonRed button(QStringLiteral("Start"));
    button.resize(144, 40);
    const QSignalSpy clicks(&button, &ButtonRed::clicked);

    QTest::mousePress(&button, Qt::LeftButton, {}, QPoint(70, 20));
    QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(70, 200));

    QCOMPARE(clicks.count(), 0);
}

void ThreePartButtonTest::spaceAndReturnPress_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::newRow("space") << Qt::Key_Space << Qt::NoModifier;
    QTest::newRow("return") << Qt::Key_Return << Qt::NoModifier;
    QTest::newRow("enter on the keypad") << Qt::Key_Enter << Qt::KeypadModifier;
}

void ThreePartButtonTest::spaceAndReturnPress()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifier, modifier);
    ButtonBlue button(QStringLiteral("Done"));
    const QSignalSpy clicks(&button, &ButtonBlue::clicked);

    QTest::keyClick(&button, key, modifier);
    QCOMPARE(clicks.count(), 1);

    button.setEnabled(false);
    QTest::keyClick(&button, key, modifier);
    QCOMPARE(clicks.count(), 1);
}

void ThreePartButtonTest::aKeyHeldDownPressesOnce()
{
    ButtonRed button(QStringLiteral("Start"));
    const QSignalSpy clicks(&button, &ButtonRed::clicked);

    for (const int key : {int(Qt::Key_Return), int(Qt::Key_Space)}) {
        QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(&button, &repeated);
        QKeyEvent released(QEvent::KeyRelease, key, Qt::NoModifier, QString(), true);
        QApplication::sendEvent(&button, &released);
    }

    QCOMPARE(clicks.count(), 0);
}

void ThreePartButtonTest::returnWithModifiersIsLeftToTheWindow()
{
    ButtonBlue button(QStringLiteral("Done"));
    const QSignalSpy clicks(&button, &ButtonBlue::clicked);

    QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::ControlModifier);
    QApplication::sendEvent(&button, &event);

    QCOMPARE(clicks.count(), 0);
    QVERIFY(!event.isAccepted());
}

void ThreePartButtonTest::looksTheSameInBothThemes()
{
    ButtonBlue button(QStringLiteral("Done"));
    button.resize(96, 32);

    const QImage light = shown(button);
    preferences_.setDark(true);
    const QImage dark = shown(button);
    preferences_.setDark(false);

    QCOMPARE(dark, light);
}

void ThreePartButtonTest::screenReadersSeeAButtonWithItsTitle()
{
    ButtonRed button(QStringLiteral("Start"));

    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&button);

    QVERIFY(seen);
    QCOMPARE(seen->role(), QAccessible::PushButton);
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Start"));
}

QTEST_MAIN(ThreePartButtonTest)
#include "ThreePartButtonTest.moc"
