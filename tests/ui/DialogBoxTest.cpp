#include "ui/DialogBox.h"

#include "platform/NotificationHub.h"
#include "ui/CautionIcon.h"
#include "ui/ColorProperties.h"
#include "ui/DialogButton.h"
#include "ui/DialogParts.h"
#include "ui/DialogScrim.h"
#include "ui/FocusRing.h"
#include "ui/PaintedWidget.h"
#include "ui/RunningDialog.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"
#include "ui/Typography.h"
#include "ui/WindowRegister.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

using namespace RunningDialog;

namespace {

using Numbers = QList<bool>;

const QString aTitle = QStringLiteral("Title");
const QString anInfo = QStringLiteral("Information");

/// A dialog with this many buttons, "1" and so on; the first is the default.
struct Dialog : DialogBox
{
    explicit Dialog(int buttons, const QString &text = anInfo) : DialogBox(aTitle, text)
    {
        for (int i = 1; i <= buttons; ++i)
            addButtonWithTitle(QString::number(i));
        activeButton(1);
    }
};

/// Is the main window as long as it lives.
struct Main : FramelessWindow
{
    explicit Main(const QRect &frame)
    {
        setGeometry(frame);
        WindowRegister::shared().setMainWindow(this);
    }
};

QString longText(int lines)
{
    QStringList text;
    for (int i = 1; i <= lines; ++i)
        text.append(QString::number(i));
    return text.join(QLatin1Char('\n'));
}

} // namespace

class DialogBoxTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void itsPartsStandInTheirPlaces();
    void aTallerTextGrowsItAndAShorterOneDoesNot();
    void aLongWordIsBroken();
    void nullTextsAreEmpty();
    void aLongTitleIsElidedAndHeardWhole();
    void itStandsOverTheMainWindowOrAnother();
    void itStandsOverTheFirstWindowWhereNoneIsMain();
    void itIsPushedUpFromTheScreensLowerEdge();
    void withoutAnyWindowItStandsInTheMiddle();
    void buttonsFillTheRowFromTheRight();
    void aVeryLongButtonTitleIsCutAndStartsTenFromTheLeft();
    void aVeryLongButtonTitleIsCutAtItsTail_data();
    void aVeryLongButtonTitleIsCutAtItsTail();
    void anAmpersandInATitleIsNoKey();
    void theDefaultButtonIsBlue();
    void anEarlierDefaultStaysUntilAnArrowMovesIt();
    void aDefaultBeyondTheLastButtonIsNone();
    void anImageIsShownAndANullOneChangesNothing();

    void keysAnswer_data();
    void keysAnswer();
    void keysMoveTheDefault_data();
    void keysMoveTheDefault();
    void returnPressesWhatAnArrowChose();
    void withoutADefaultReturnDoesNothing();
    void spaceDoesNothingWithOneOrThreeButtons();
    void withoutButtonsNoKeyButEscapeEndsIt();
    void withoutButtonsItsClosingAndTheApplicationsEndEndIt();
    void keysThatRepeatDoNothing();
    void modifiedKeysDoNotAnswer();
    void aClickAnswers();
    void buttonsNeverTakeTheFocusThemselves();
    void theFocusAndItsRingLieOnTheDefault();
    void theHintFollowsTheDefault();
    void theHintIsForTwoButtonsWithoutLink();

    void theLinkOpensAndEndsAsClosed();
    void aLinkWithoutAddressDoesNothing();
    void spaceRecordsTheLinkAndOpensNothing();

    void closingItsWindowEndsIt();
    void aDialogThatClosesItselfGoesWithTheFocus();
    void losingTheFocusDoesNotEndAnother();
    void theApplicationsEndEndsIt();
    void leavingTheLoopsEndsItAsClosed();
    void theFirstEndCounts();
    void aDialogThatHasEndedIsNotShown();
    void itIsHiddenAndNeverDeleted();
    void twoDialogsAreAnsweredOneAfterTheOther();
    void theEndOfTheOuterOneWaitsForTheInner();

    void aScrimLiesOverItsWindowMeanwhile();
    void theScrimFollowsItsWindow();
    void aWindowThatGoesTakesItsScrim();
    void itIsAModalDialogOverItsWindow();
    void aThemeChangeIsSeenAtOnce();
    void itIsLegibleWithoutPreferences();
    void aLargerFontLaysItOutAnew();
    void itIsHeardAsADialog();
    void answersStandInForPeople();

  private:
    ThemedPreferences preferences_;
};

void DialogBoxTest::initTestCase()
{
    PaintedWidget::useFontOf(13);
}

void DialogBoxTest::cleanup()
{
    preferences_.setDark(false);
    UserDefaults::standard().remove(ThemeKeys::darkMode);
    DialogBox::setUrlOpener({});
    QVERIFY(!QApplication::activeModalWidget());
}

void DialogBoxTest::itsPartsStandInTheirPlaces()
{
    Dialog dialog(1);
    QCOMPARE(dialog.size(), QSize(440, 178));
    QCOMPARE(dialog.imageView()->geometry(), QRect(24, 24, 48, 48));
    QCOMPARE(dialog.titleTextfield()->geometry(), QRect(88, 24, 328, 20));
    QCOMPARE(dialog.titleTextfield()->text(), aTitle);
    QCOMPARE(dialog.infoTextfield()->geometry(), QRect(88, 52, 328, 60));
    QCOMPARE(dialog.infoTextfield()->text(), anInfo);
    QCOMPARE(dialog.findChild<DialogStrip *>()->geometry(), QRect(0, 132, 440, 46));
    QCOMPARE(dialog.imgLarge()->opacity(), 0.03);
}

void DialogBoxTest::aTallerTextGrowsItAndAShorterOneDoesNot()
{
    const Dialog fits(1, longText(3));
    QCOMPARE(fits.height(), 178);
    const Dialog grown(1, longText(6));
    QCOMPARE(grown.size(), QSize(440, 238));
    QCOMPARE(grown.infoTextfield()->geometry(), QRect(88, 52, 328, 120));
    QCOMPARE(grown.findChild<DialogStrip *>()->geometry(), QRect(0, 192, 440, 46));
    QCOMPARE(grown.buttonsArray().first()->frame().bottom(), 230);
    Dialog moved(1);
    moved.move(50, 60);
    moved.infoTextfield()->setText(longText(5));
    moved.resizeWindowHeight();
    QCOMPARE(moved.geometry(), QRect(50, 60, 440, 218));
    moved.infoTextfield()->setText(anInfo);
    moved.resizeWindowHeight();
    QCOMPARE(moved.geometry(), QRect(50, 60, 440, 218));
}

void DialogBoxTest::aLongWordIsBroken()
{
    const Dialog dialog(1, QString(1000, QLatin1Char('a')));
    QVERIFY(dialog.height() > 400);
    QCOMPARE(dialog.infoTextfield()->width(), 328);
}

void DialogBoxTest::nullTextsAreEmpty()
{
    DialogBox dialog;
    dialog.addButtonWithTitle(QStringLiteral("OK"));
    QCOMPARE(dialog.titleTextfield()->text(), QString());
    QCOMPARE(dialog.infoTextfield()->text(), QString());
    QCOMPARE(dialog.height(), 178);
    QCOMPARE(dialog.activeButton(), 0);
    QCOMPARE(dialog.clickedButton(), 0);
}

void DialogBoxTest::aLongTitleIsElidedAndHeardWhole()
{
    const QString text = QString(200, QLatin1Char('W'));
    DialogBox dialog(text, anInfo);
    dialog.windowDidLoad();
    QCOMPARE(dialog.titleTextfield()->width(), 328);
    QCOMPARE(dialog.accessibleName(), text);
    const QImage picture = PaintedWidget::of(dialog, Qt::white);
    COMPARE_COLOR(picture.pixelColor(418, 34), picture.pixelColor(418, 110));
}

void DialogBoxTest::itStandsOverTheMainWindowOrAnother()
{
    const Main main({100, 120, 500, 400});
    QCOMPARE(Dialog(1).geometry(), QRect(130, 160, 440, 178));
    QWidget other;
    other.setGeometry(150, 120, 500, 400);
    DialogBox dialog(aTitle, anInfo);
    dialog.setAboveWindow(&other);
    dialog.addButtonWithTitle(QStringLiteral("OK"));
    QCOMPARE(dialog.geometry(), QRect(180, 180, 440, 178));
}

void DialogBoxTest::itStandsOverTheFirstWindowWhereNoneIsMain()
{
    FramelessWindow first;
    first.setGeometry(100, 120, 500, 400);
    FramelessWindow second;
    second.setGeometry(200, 220, 500, 400);
    QCOMPARE(Dialog(1).geometry(), QRect(130, 180, 440, 178));
}

void DialogBoxTest::itIsPushedUpFromTheScreensLowerEdge()
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const Main main({100, screen.height() - 100, 500, 400});
    QCOMPARE(Dialog(1).geometry().bottom(), screen.bottom());
}

void DialogBoxTest::withoutAnyWindowItStandsInTheMiddle()
{
    QVERIFY(WindowRegister::shared().windows().empty());
    const Dialog dialog(1);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(dialog.pos(), QPoint((screen.width() - 440) / 2, (screen.height() - 178) / 2));
}

void DialogBoxTest::buttonsFillTheRowFromTheRight()
{
    Dialog dialog(2);
    dialog.addButtonWithTitle(QStringLiteral("A somewhat longer one"));
    QCOMPARE(dialog.buttonsArray().at(0)->frame(), QRect(349, 139, 81, 32));
    QCOMPARE(dialog.buttonsArray().at(0)->geometry(), QRect(352, 141, 75, 28));
    QCOMPARE(dialog.buttonsArray().at(1)->frame(), QRect(268, 139, 81, 32));
    const DialogButton *third = dialog.buttonsArray().at(2);
    QVERIFY(third->frame().width() > 81);
    QCOMPARE(third->frame().right() + 1, 268);
    QCOMPARE(third->frame().size(), third->fittedSize());
    QCOMPARE(third->tag(), 3);
}

void DialogBoxTest::aVeryLongButtonTitleIsCutAndStartsTenFromTheLeft()
{
    DialogBox dialog(aTitle, anInfo);
    dialog.addButtonWithTitle(QString(200, QLatin1Char('W')));
    DialogButton *button = dialog.buttonsArray().first();
    QCOMPARE(button->frame(), QRect(10, 139, 420, 32));
    // The letters keep clear of the sides; a dot of the ellipsis stands at the right.
    const QImage picture = PaintedWidget::of(*button, Qt::white);
    for (int y = 5; y < button->height() - 5; ++y) {
        COMPARE_COLOR(picture.pixelColor(2, y), QColor(Qt::white));
        COMPARE_COLOR(picture.pixelColor(button->width() - 3, y), QColor(Qt::white));
    }
    dialog.addButtonWithTitle(QStringLiteral("No room"));
    QCOMPARE(dialog.buttonsArray().at(1)->frame(), QRect(10, 139, 0, 32));
    QVERIFY(dialog.buttonsArray().at(1)->size().isEmpty());
}

void DialogBoxTest::aVeryLongButtonTitleIsCutAtItsTail_data()
{
    QTest::addColumn<bool>("isDefault");
    QTest::newRow("the default") << true;
    QTest::newRow("another") << false;
}

void DialogBoxTest::aVeryLongButtonTitleIsCutAtItsTail()
{
    QFETCH(bool, isDefault);
    const QString title =
        QStringLiteral("Erase the client database export with all of its correspondence, the "
                       "notes beside it and whatever else was put there");
    DialogBox dialog(aTitle, anInfo);
    dialog.addButtonWithTitle(title);
    if (isDefault)
        dialog.activeButton(1);
    DialogButton *button = dialog.buttonsArray().first();
    const QFontMetricsF metrics(
        Typography::font(isDefault ? TextStyle::BodyStrong : TextStyle::BodyMedium));
    const auto paintedWhenCut = [&](Qt::TextElideMode mode) {
        DialogButton expected(metrics.elidedText(title, mode, button->width() - 8), 1, nullptr);
        expected.setFrame(button->frame());
        expected.setDefault(isDefault);
        return PaintedWidget::of(expected, Qt::white);
    };
    QVERIFY(metrics.horizontalAdvance(title) > button->width());

    const QImage picture = PaintedWidget::of(*button, Qt::white);

    QCOMPARE(picture, paintedWhenCut(Qt::ElideRight));
    QVERIFY(picture != paintedWhenCut(Qt::ElideMiddle));
}

void DialogBoxTest::anAmpersandInATitleIsNoKey()
{
    DialogBox dialog(aTitle, anInfo);
    dialog.addButtonWithTitle(QStringLiteral("Search && &Destroy"));
    QVERIFY(dialog.buttonsArray().first()->shortcut().isEmpty());
    QCOMPARE(dialog.buttonsArray().first()->text(), QStringLiteral("Search && &Destroy"));
}

void DialogBoxTest::theDefaultButtonIsBlue()
{
    Dialog dialog(2);
    const QPoint first(360, 146);
    const QPoint second(279, 146);
    const auto isBlue = [&dialog](const QPoint &at) {
        const QColor color = PaintedWidget::of(dialog, Qt::white).pixelColor(at);
        return color.blue() > color.red() + 60;
    };
    QVERIFY(isBlue(first));
    QVERIFY(!isBlue(second));
    dialog.selectNextButton(true);
    QVERIFY(!isBlue(first));
    QVERIFY(isBlue(second));
}

void DialogBoxTest::anEarlierDefaultStaysUntilAnArrowMovesIt()
{
    Dialog dialog(3);
    dialog.activeButton(2);
    QCOMPARE(dialog.activeButton(), 2);
    QCOMPARE(defaults(dialog), (Numbers{true, true, false}));
    dialog.selectNextButton(true);
    QCOMPARE(defaults(dialog), (Numbers{false, false, true}));
}

void DialogBoxTest::aDefaultBeyondTheLastButtonIsNone()
{
    DialogBox dialog(aTitle, anInfo);
    dialog.activeButton(1);
    QCOMPARE(dialog.activeButton(), 1);
    dialog.addButtonWithTitle(QStringLiteral("OK"));
    dialog.activeButton(2);
    QCOMPARE(dialog.activeButton(), 2);
    dialog.activeButton(0);
    QCOMPARE(defaults(dialog), Numbers{false});
}

void DialogBoxTest::anImageIsShownAndANullOneChangesNothing()
{
    Dialog dialog(1);
    const QImage application = PaintedWidget::of(*dialog.imageView(), Qt::white);
    // The tile of the application's icon.
    QVERIFY(application.pixelColor(8, 24).lightness() < 120);
    dialog.image(QIcon());
    QCOMPARE(PaintedWidget::of(*dialog.imageView(), Qt::white), application);
    for (const bool isDark : {false, true}) {
        preferences_.setDark(isDark);
        dialog.image(CautionIcon::icon());
        const QImage caution = PaintedWidget::of(*dialog.imageView(), Qt::white);
        COMPARE_COLOR(caution.pixelColor(14, 40), DesignColors::color(ColorRole::WarnIcon));
        COMPARE_COLOR(caution.pixelColor(1, 1), QColor(Qt::white));
    }
}

void DialogBoxTest::keysAnswer_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("code");
    QTest::newRow("Return") << 1 << Qt::Key_Return << 1000;
    QTest::newRow("Return, of three") << 3 << Qt::Key_Return << 1000;
    QTest::newRow("Enter") << 2 << Qt::Key_Enter << 1000;
    QTest::newRow("Space presses the other one") << 2 << Qt::Key_Space << 1001;
    QTest::newRow("Escape") << 2 << Qt::Key_Escape << -1;
    QTest::newRow("Escape, without a button") << 0 << Qt::Key_Escape << -1;
}

void DialogBoxTest::keysAnswer()
{
    QFETCH(int, buttons);
    QFETCH(Qt::Key, key);
    Dialog dialog(buttons);
    whenActive([key](DialogBox &running) { press(running, key); });
    QTEST(dialog.runModal(), "code");
    QVERIFY(dialog.isHidden());
}

void DialogBoxTest::keysMoveTheDefault_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Numbers>("once");
    QTest::addColumn<Numbers>("twice");
    const Numbers second{false, true, false};
    const Numbers third{false, false, true};
    QTest::newRow("Left") << Qt::Key_Left << second << third;
    QTest::newRow("Up") << Qt::Key_Up << second << third;
    QTest::newRow("Tab") << Qt::Key_Tab << second << third;
    QTest::newRow("Right") << Qt::Key_Right << third << second;
    QTest::newRow("Down") << Qt::Key_Down << third << second;
    QTest::newRow("Shift+Tab") << Qt::Key_Backtab << third << second;
}

void DialogBoxTest::keysMoveTheDefault()
{
    QFETCH(Qt::Key, key);
    QFETCH(Numbers, once);
    QFETCH(Numbers, twice);
    Dialog dialog(3);
    whenActive([&](DialogBox &running) {
        const auto modifiers = key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
        press(running, key, modifiers);
        QCOMPARE(defaults(running), once);
        press(running, key, modifiers);
        QCOMPARE(defaults(running), twice);
        press(running, key, modifiers);
        QCOMPARE(defaults(running), (Numbers{true, false, false}));
        press(running, Qt::Key_Escape);
    });
    QCOMPARE(dialog.runModal(), -1);
}

void DialogBoxTest::returnPressesWhatAnArrowChose()
{
    Dialog dialog(3);
    whenActive([](DialogBox &running) {
        press(running, Qt::Key_Right);
        press(running, Qt::Key_Return);
    });
    QCOMPARE(dialog.runModal(), 1002);
    QCOMPARE(dialog.clickedButton(), 3);
}

void DialogBoxTest::withoutADefaultReturnDoesNothing()
{
    DialogBox dialog(aTitle, anInfo);
    dialog.addButtonWithTitle(QStringLiteral("OK"));
    whenActive([](DialogBox &running) {
        press(running, Qt::Key_Return);
        press(running, Qt::Key_Left);
        QVERIFY(running.isVisible());
        press(running, Qt::Key_Escape);
    });
    QCOMPARE(dialog.runModal(), -1);
}

void DialogBoxTest::spaceDoesNothingWithOneOrThreeButtons()
{
    for (const int buttons : {1, 3}) {
        Dialog dialog(buttons);
        whenActive([](DialogBox &running) {
            press(running, Qt::Key_Space);
            QVERIFY(running.isVisible());
            QCOMPARE(running.activeButton(), 1);
            press(running, Qt::Key_Escape);
        });
        QCOMPARE(dialog.runModal(), -1);
    }
}

void DialogBoxTest::withoutButtonsNoKeyButEscapeEndsIt()
{
    Dialog dialog(0);
    whenActive([](DialogBox &running) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Left,
                                  Qt::Key_Right, Qt::Key_Tab}) {
            press(running, key);
            QVERIFY(running.isVisible());
        }
        press(running, Qt::Key_Escape);
    });
    QCOMPARE(dialog.runModal(), -1);
    QCOMPARE(dialog.clickedButton(), -1);
}

void DialogBoxTest::withoutButtonsItsClosingAndTheApplicationsEndEndIt()
{
    Dialog closed(0);
    whenActive([](DialogBox &running) { running.windowHandle()->close(); });
    QCOMPARE(closed.runModal(), 0);
    QVERIFY(closed.isHidden());
    Dialog ended(0);
    whenActive([](DialogBox &) {
        NotificationHub::shared().post(NotificationName::applicationWillTerminate);
    });
    QCOMPARE(ended.runModal(), 0);
    QVERIFY(ended.isHidden());
}

void DialogBoxTest::keysThatRepeatDoNothing()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape,
                                  Qt::Key_Left, Qt::Key_Tab})
            hold(key);
        QVERIFY(running.isVisible());
        QCOMPARE(running.activeButton(), 1);
        press(running, Qt::Key_Return);
    });
    QCOMPARE(dialog.runModal(), 1000);
}

void DialogBoxTest::modifiedKeysDoNotAnswer()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) {
        press(running, Qt::Key_Return, Qt::ControlModifier);
        press(running, Qt::Key_Space, Qt::ShiftModifier);
        QVERIFY(running.isVisible());
        press(running, Qt::Key_Enter, Qt::KeypadModifier);
    });
    QCOMPARE(dialog.runModal(), 1000);
}

void DialogBoxTest::aClickAnswers()
{
    for (int number = 1; number <= 3; ++number) {
        Dialog dialog(3);
        whenActive([number](DialogBox &running) { click(running, number); });
        QCOMPARE(dialog.runModal(), 999 + number);
        QCOMPARE(dialog.clickedButton(), number);
    }
}

void DialogBoxTest::buttonsNeverTakeTheFocusThemselves()
{
    Dialog dialog(3);
    for (const DialogButton *button : dialog.buttonsArray())
        QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    whenActive([](DialogBox &running) {
        const QWidget *other = running.buttonsArray().at(2);
        QTest::mousePress(running.windowHandle(), Qt::LeftButton, {}, other->geometry().center());
        QTest::mouseRelease(running.windowHandle(), Qt::LeftButton, {}, QPoint(2, 2));
        QVERIFY(running.isVisible());
        QCOMPARE(QApplication::focusWidget(), running.buttonsArray().first());
        press(running, Qt::Key_Escape);
    });
    dialog.runModal();
}

void DialogBoxTest::theFocusAndItsRingLieOnTheDefault()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) {
        const FocusRing *ring = FocusRing::install(&running);
        QTRY_VERIFY(ring->isVisible());
        QTRY_COMPARE(ring->geometry(), QRect(348, 137, 83, 36));
        press(running, Qt::Key_Left);
        QCOMPARE(QApplication::focusWidget(), running.buttonsArray().at(1));
        QTRY_COMPARE(ring->geometry(), QRect(267, 137, 83, 36));
        press(running, Qt::Key_Escape);
    });
    dialog.runModal();
}

void DialogBoxTest::theHintFollowsTheDefault()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) {
        const TextLabel *hint = running.hintTextfield();
        QVERIFY(hint->isVisible());
        QCOMPARE(hint->geometry().topLeft(), QPoint(24, 147));
        QVERIFY(hint->geometry().right() < running.buttonsArray().at(1)->x());
        QCOMPARE(hint->text(), QStringLiteral("Return: 1  ·  Space: 2"));
        press(running, Qt::Key_Left);
        QCOMPARE(hint->text(), QStringLiteral("Return: 2  ·  Space: 1"));
        press(running, Qt::Key_Space);
    });
    QCOMPARE(dialog.runModal(), 1000);
}

void DialogBoxTest::theHintIsForTwoButtonsWithoutLink()
{
    QVERIFY(Dialog(1).hintTextfield()->isHidden());
    QVERIFY(!Dialog(2).hintTextfield()->isHidden());
    QVERIFY(Dialog(3).hintTextfield()->isHidden());
    Dialog dialog(1);
    dialog.addInfoButtonWithUrl(QUrl(QStringLiteral("https://example.org")), aTitle);
    QVERIFY(dialog.hintTextfield()->isHidden());
}

void DialogBoxTest::theLinkOpensAndEndsAsClosed()
{
    QList<QUrl> opened;
    DialogBox::setUrlOpener([&opened](const QUrl &url) {
        opened.append(url);
        return true;
    });
    Dialog dialog(1);
    const QUrl url(QStringLiteral("https://example.org/a?b#c"));
    dialog.addInfoButtonWithUrl(url, QStringLiteral("More"));
    QCOMPARE(dialog.htmlLink(), url);
    whenActive([](DialogBox &running) { click(running, 2); });
    QCOMPARE(dialog.runModal(), 0);
    QCOMPARE(dialog.clickedButton(), 0);
    QCOMPARE(opened, QList<QUrl>{url});
}

void DialogBoxTest::aLinkWithoutAddressDoesNothing()
{
    bool isOpened = false;
    DialogBox::setUrlOpener([&isOpened](const QUrl &) { return isOpened = true; });
    Dialog dialog(1);
    dialog.addInfoButtonWithUrl(QUrl(), QStringLiteral("More"));
    whenActive([](DialogBox &running) {
        click(running, 2);
        QVERIFY(running.isVisible());
        press(running, Qt::Key_Return);
    });
    QCOMPARE(dialog.runModal(), 1000);
    QVERIFY(!isOpened);
}

void DialogBoxTest::spaceRecordsTheLinkAndOpensNothing()
{
    bool isOpened = false;
    DialogBox::setUrlOpener([&isOpened](const QUrl &) { return isOpened = true; });
    Dialog dialog(1);
    dialog.addInfoButtonWithUrl(QUrl(QStringLiteral("https://example.org")), aTitle);
    whenActive([](DialogBox &running) { press(running, Qt::Key_Space); });
    QCOMPARE(dialog.runModal(), 1001);
    QCOMPARE(dialog.clickedButton(), 2);
    QVERIFY(!isOpened);
}

void DialogBoxTest::closingItsWindowEndsIt()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) { running.windowHandle()->close(); });
    QCOMPARE(dialog.runModal(), 0);
    QVERIFY(dialog.isHidden());
}

void DialogBoxTest::aDialogThatClosesItselfGoesWithTheFocus()
{
    Dialog dialog(2);
    dialog.setSelfClosing(true);
    whenActive([](DialogBox &running) {
        // Another window comes to the front.
        Dialog second(1);
        whenActive([](DialogBox &inner) { press(inner, Qt::Key_Return); });
        QCOMPARE(second.runModal(), 1000);
        QVERIFY(running.isHidden());
    });
    QCOMPARE(dialog.runModal(), 0);
    for (const auto handler : {&DialogBox::windowDidResignKey, &DialogBox::windowDidResignMain}) {
        Dialog other(1);
        other.setSelfClosing(true);
        whenActive([handler](DialogBox &running) { (running.*handler)(); });
        QCOMPARE(other.runModal(), 0);
    }
}

void DialogBoxTest::losingTheFocusDoesNotEndAnother()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) {
        running.windowDidResignKey();
        running.windowDidResignMain();
        QVERIFY(running.isVisible());
        press(running, Qt::Key_Return);
    });
    QCOMPARE(dialog.runModal(), 1000);
}

void DialogBoxTest::theApplicationsEndEndsIt()
{
    Dialog dialog(2);
    whenActive([](DialogBox &) {
        NotificationHub::shared().post(NotificationName::applicationWillTerminate);
    });
    QCOMPARE(dialog.runModal(), 0);
    QVERIFY(dialog.isHidden());
}

void DialogBoxTest::leavingTheLoopsEndsItAsClosed()
{
    Dialog dialog(2);
    int code = -2;
    QTimer::singleShot(0, qApp, [&] { code = dialog.runModal(); });
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(-1); });
    QCOMPARE(QCoreApplication::exec(), -1);
    QCOMPARE(code, 0);
    QVERIFY(dialog.isHidden());
}

void DialogBoxTest::theFirstEndCounts()
{
    Dialog dialog(2);
    dialog.setSelfClosing(true);
    whenActive([](DialogBox &running) {
        press(running, Qt::Key_Return);
        running.cancel();
        running.spaceClicked();
        running.buttonPressed(running.buttonsArray().at(1));
        running.windowWillClose();
    });
    QCOMPARE(dialog.runModal(), 1000);
    QCOMPARE(dialog.clickedButton(), 1);
}

void DialogBoxTest::aDialogThatHasEndedIsNotShown()
{
    Dialog dialog(1);
    NotificationHub::shared().post(NotificationName::applicationWillTerminate);
    QCOMPARE(dialog.runModal(), 0);
    QVERIFY(!dialog.windowHandle() || !dialog.windowHandle()->isVisible());
}

void DialogBoxTest::itIsHiddenAndNeverDeleted()
{
    QPointer<Dialog> dialog = new Dialog(1);
    whenActive([](DialogBox &running) { running.close(); });
    QCOMPARE(dialog->runModal(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(dialog);
    QVERIFY(!dialog->testAttribute(Qt::WA_QuitOnClose));
    delete dialog;
}

void DialogBoxTest::twoDialogsAreAnsweredOneAfterTheOther()
{
    const Main main({100, 120, 500, 400});
    Dialog outer(2);
    whenActive([](DialogBox &running) {
        Dialog inner(3);
        whenActive([](DialogBox &second) {
            QCOMPARE(second.title(), aTitle);
            click(second, 3);
        });
        QCOMPARE(inner.runModal(), 1002);
        QVERIFY(running.isVisible());
        running.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&running));
        press(running, Qt::Key_Space);
    });
    QCOMPARE(outer.runModal(), 1001);
}

void DialogBoxTest::theEndOfTheOuterOneWaitsForTheInner()
{
    Dialog outer(1);
    int inside = -2;
    whenActive([&inside](DialogBox &) {
        Dialog inner(1);
        whenActive([](DialogBox &) {
            NotificationHub::shared().post(NotificationName::applicationWillTerminate);
        });
        inside = inner.runModal();
    });
    QCOMPARE(outer.runModal(), 0);
    QCOMPARE(inside, 0);
}

void DialogBoxTest::aScrimLiesOverItsWindowMeanwhile()
{
    Main main({100, 120, 500, 400});
    main.show();
    const QColor before = PaintedWidget::of(main, Qt::white).pixelColor(250, 380);
    Dialog dialog(1);
    whenActive([&](DialogBox &running) {
        const auto *scrim = main.findChild<DialogScrim *>();
        QVERIFY(scrim);
        QCOMPARE(scrim->geometry(), main.rect());
        COMPARE_COLOR(PaintedWidget::of(main, Qt::white).pixelColor(250, 380),
                      PaintedWidget::over(DesignColors::color(ColorRole::Scrim), before));
        // A second dialog darkens the first one, and not the window once more.
        Dialog second(1);
        whenActive([&](DialogBox &inner) {
            QCOMPARE(main.findChildren<DialogScrim *>().size(), 1);
            QVERIFY(running.findChild<DialogScrim *>());
            press(inner, Qt::Key_Return);
        });
        second.runModal();
        QVERIFY(!running.findChild<DialogScrim *>());
        running.closeWindow();
    });
    dialog.runModal();
    QVERIFY(!main.findChild<DialogScrim *>());
    COMPARE_COLOR(PaintedWidget::of(main, Qt::white).pixelColor(250, 380), before);
}

void DialogBoxTest::theScrimFollowsItsWindow()
{
    Main main({100, 120, 500, 400});
    main.show();
    Dialog dialog(1);
    whenActive([&main](DialogBox &running) {
        main.resize(600, 500);
        QCOMPARE(main.findChild<DialogScrim *>()->size(), QSize(600, 500));
        press(running, Qt::Key_Return);
    });
    dialog.runModal();
}

void DialogBoxTest::aWindowThatGoesTakesItsScrim()
{
    auto main = std::make_unique<Main>(QRect(100, 120, 500, 400));
    main->show();
    Dialog dialog(1);
    whenActive([&main](DialogBox &running) {
        main.reset();
        press(running, Qt::Key_Return);
    });
    QCOMPARE(dialog.runModal(), 1000);
}

void DialogBoxTest::itIsAModalDialogOverItsWindow()
{
    Main main({100, 120, 500, 400});
    main.show();
    Dialog dialog(1);
    whenActive([&main](DialogBox &running) {
        QCOMPARE(running.windowHandle()->transientParent(), main.windowHandle());
        QCOMPARE(running.windowModality(), Qt::ApplicationModal);
        QCOMPARE(running.windowType(), Qt::Dialog);
        QVERIFY(running.windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(WindowRegister::shared().mainWindow(), &main);
        press(running, Qt::Key_Return);
    });
    dialog.runModal();
    // A window that is out of sight must not take the dialog with it.
    main.hide();
    Dialog alone(1);
    whenActive([](DialogBox &running) {
        QVERIFY(!running.windowHandle()->transientParent());
        press(running, Qt::Key_Return);
    });
    alone.runModal();
}

void DialogBoxTest::aThemeChangeIsSeenAtOnce()
{
    const auto ground = [](bool isDark) {
        return ColorProperties::color(ColorProperties::key(QStringLiteral("DefaultAlertView"),
                                                           QLatin1String("bg"), isDark))
            .value();
    };
    Dialog dialog(1);
    whenActive([&](DialogBox &running) {
        COMPARE_COLOR(PaintedWidget::of(running, Qt::white).pixelColor(40, 110), ground(false));
        preferences_.setDark(true);
        UserDefaults::standard().setValue(ThemeKeys::darkMode, true);
        NotificationHub::shared().post(NotificationName::colorThemeChanged);
        COMPARE_COLOR(PaintedWidget::of(running, Qt::white).pixelColor(40, 110), ground(true));
        QCOMPARE(running.imgLarge()->opacity(), 0.01);
        press(running, Qt::Key_Return);
    });
    dialog.runModal();
}

void DialogBoxTest::itIsLegibleWithoutPreferences()
{
    const UserDefaults::Replacement empty;
    Dialog dialog(1);
    whenActive([](DialogBox &running) {
        const QImage picture = PaintedWidget::of(running, Qt::magenta);
        COMPARE_COLOR(picture.pixelColor(40, 110), QColor(231, 231, 231));
        COMPARE_COLOR(picture.pixelColor(40, 132), QColor(199, 199, 199));
        COMPARE_COLOR(picture.pixelColor(40, 150), QColor(222, 222, 222));
        press(running, Qt::Key_Return);
    });
    QCOMPARE(dialog.runModal(), 1000);
}

void DialogBoxTest::aLargerFontLaysItOutAnew()
{
    Dialog dialog(2, longText(4));
    QCOMPARE(dialog.size(), QSize(440, 198));
    dialog.show();
    PaintedWidget::useFontOf(26);
    QTRY_COMPARE(dialog.size(), QSize(704, 317));
    QCOMPARE(dialog.titleTextfield()->geometry(), QRect(141, 38, 525, 32));
    QCOMPARE(dialog.infoTextfield()->geometry(), QRect(141, 83, 525, 128));
    QCOMPARE(dialog.buttonsArray().at(0)->frame(), QRect(558, 255, 130, 51));
    QCOMPARE(dialog.buttonsArray().at(1)->frame(), QRect(428, 255, 130, 51));
    PaintedWidget::useFontOf(13);
    QTRY_COMPARE(dialog.size(), QSize(440, 198));
    dialog.hide();
}

void DialogBoxTest::itIsHeardAsADialog()
{
    Dialog dialog(2);
    whenActive([](DialogBox &running) {
        QAccessibleInterface *heard = QAccessible::queryAccessibleInterface(&running);
        QCOMPARE(heard->role(), QAccessible::Dialog);
        QVERIFY(heard->state().modal);
        QCOMPARE(heard->text(QAccessible::Name), aTitle);
        QCOMPARE(heard->text(QAccessible::Description), anInfo);
        for (DialogButton *button : running.buttonsArray()) {
            QAccessibleInterface *each = QAccessible::queryAccessibleInterface(button);
            QCOMPARE(each->role(), QAccessible::Button);
            QCOMPARE(each->text(QAccessible::Name), button->text());
        }
        QVERIFY(
            QAccessible::queryAccessibleInterface(running.buttonsArray().first())->state().focused);
        press(running, Qt::Key_Return);
    });
    dialog.runModal();
}

void DialogBoxTest::answersStandInForPeople()
{
    DialogBox::Answers answers({1001, -1});
    Dialog first(2);
    QCOMPARE(first.runModal(), 1001);
    QCOMPARE(Dialog(1, QStringLiteral("Second")).runModal(), -1);
    QCOMPARE(Dialog(3).runModal(), 0);
    QCOMPARE(answers.asked().size(), std::size_t(3));
    QCOMPARE(answers.asked().at(0).title, aTitle);
    QCOMPARE(answers.asked().at(0).buttons,
             (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
    QCOMPARE(answers.asked().at(0).activeButton, 1);
    QCOMPARE(answers.asked().at(1).info, QStringLiteral("Second"));
    {
        DialogBox::Answers inner({1000});
        QCOMPARE(Dialog(1).runModal(), 1000);
        QCOMPARE(inner.asked().size(), std::size_t(1));
    }
    QCOMPARE(answers.asked().size(), std::size_t(3));
    QVERIFY(!first.windowHandle() || !first.windowHandle()->isVisible());
}

QTEST_MAIN(DialogBoxTest)
#include "DialogBoxTest.moc"
