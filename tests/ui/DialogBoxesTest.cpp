#include "ui/DialogBoxes.h"

#include "ui/CautionIcon.h"
#include "ui/DialogButton.h"
#include "ui/DialogParts.h"
#include "ui/FramelessWindow.h"
#include "ui/PaintedWidget.h"
#include "ui/RunningDialog.h"
#include "ui/ThemedPreferences.h"
#include "ui/WindowRegister.h"

#include <QTest>
#include <QUrl>

#include <functional>
#include <vector>

using namespace RunningDialog;

using Ask = std::function<int()>;
using Act = std::function<void(DialogBox &)>;
Q_DECLARE_METATYPE(Ask)
Q_DECLARE_METATYPE(Act)

namespace {

const QString title = QStringLiteral("Title");
const QString info = QStringLiteral("Information");
const QUrl url(QStringLiteral("https://example.org"));
const QString more = QStringLiteral("Read more");
const QString notAgain = QStringLiteral("Don't show again");

/// A factory as it is asked, and what it answers to each end. What answers nothing says 7.
struct Box
{
    const char *name;
    Ask ask;
    QStringList buttons;
    int active;
    std::vector<int> byButton;
    int cancelled;
    int closed;
};

constexpr int nothing = 7;

Ask silent(std::function<void()> ask)
{
    return [ask = std::move(ask)] {
        ask();
        return nothing;
    };
}

std::vector<Box> plainBoxes()
{
    const QString ok = QStringLiteral("OK");
    return {
        {"OK", silent([] { DialogBoxes::alertBoxDefault(title, info); }), {ok}, 1, {7}, 7, 7},
        {"with an image",
         silent([] { DialogBoxes::alertBoxDefault(title, info, CautionIcon::icon()); }),
         {ok},
         1,
         {7},
         7,
         7},
        {"with a button title",
         silent([] { DialogBoxes::alertBoxDefault(title, info, more); }),
         {more},
         1,
         {7},
         7,
         7},
        {"with a null button title",
         silent([] { DialogBoxes::alertBoxDefault(title, info, QString()); }),
         {ok},
         1,
         {7},
         7,
         7},
        {"with an empty button title",
         silent([] { DialogBoxes::alertBoxDefault(title, info, QStringLiteral("")); }),
         {QString()},
         1,
         {7},
         7,
         7},
        {"with a link",
         [] { return DialogBoxes::alertBoxDefault(title, info, url, more); },
         {ok, more},
         1,
         {0, 1},
         1,
         1},
        {"with a link and an image",
         [] { return DialogBoxes::alertBoxDefault(title, info, url, more, CautionIcon::icon()); },
         {ok, more},
         1,
         {0, 1},
         1,
         1},
        {"not again",
         [] { return DialogBoxes::alertBoxDefaultWithNotShowAgain(title, info); },
         {ok, notAgain},
         1,
         {0, 1},
         1,
         1},
    };
}

std::vector<Box> askingBoxes()
{
    const QStringList yesNo{QStringLiteral("Yes"), QStringLiteral("No")};
    const QStringList yesNoAgain = yesNo + QStringList(notAgain);
    const QString open = QStringLiteral("Open Preferences");
    const QString cancel = QStringLiteral("Cancel");
    const QStringList remove{QStringLiteral("No"), QStringLiteral("Yes"),
                             QStringLiteral("Yes and remove all related files")};
    return {
        {"yes, no, not again; yes",
         [] { return DialogBoxes::alertBoxYesNoWithNotShowAgain(title, info, true); },
         yesNoAgain,
         1,
         {0, 1, 2},
         -1,
         -1},
        {"yes, no, not again; no",
         [] { return DialogBoxes::alertBoxYesNoWithNotShowAgain(title, info, false); },
         yesNoAgain,
         2,
         {0, 1, 2},
         -1,
         -1},
        {"yes, no, not again over a window",
         [] { return DialogBoxes::alertBoxYesNoWithNotShowAgain(title, info, false, nullptr); },
         yesNoAgain,
         2,
         {0, 1, 2},
         -1,
         -1},
        {"preferences",
         [] { return DialogBoxes::alertBoxOpenPreferences(title, info, false); },
         {open, cancel},
         1,
         {1, 0},
         0,
         0},
        {"preferences, forced",
         [] { return DialogBoxes::alertBoxOpenPreferences(title, info, true); },
         {open},
         1,
         {1},
         0,
         0},
        {"retry",
         [] { return DialogBoxes::alertBoxRetry(title, info); },
         {QStringLiteral("Retry"), cancel},
         1,
         {1, 0},
         0,
         0},
        {"yes or no; yes",
         [] { return DialogBoxes::alertBoxYesNo(title, info, true); },
         yesNo,
         1,
         {1, 0},
         0,
         0},
        {"yes or no; no",
         [] { return DialogBoxes::alertBoxYesNo(title, info, false); },
         yesNo,
         2,
         {1, 0},
         0,
         0},
        {"yes or no over a window",
         [] { return DialogBoxes::alertBoxYesNo(title, info, true, nullptr); },
         yesNo,
         1,
         {1, 0},
         0,
         0},
        {"yes or no, stays",
         [] { return DialogBoxes::alertBoxYesNoSelfClosing(title, info, true, false); },
         yesNo,
         1,
         {1, 0},
         0,
         0},
        {"yes or no, closes itself",
         [] { return DialogBoxes::alertBoxYesNoSelfClosing(title, info, false, true); },
         yesNo,
         2,
         {1, 0},
         0,
         0},
        {"remove files",
         [] { return DialogBoxes::alertBoxRemoveFiles(title, info); },
         remove,
         1,
         {0, 1, 2},
         0,
         0},
    };
}

std::vector<Box> boxes()
{
    std::vector<Box> all = plainBoxes();
    const std::vector<Box> asking = askingBoxes();
    all.insert(all.end(), asking.begin(), asking.end());
    return all;
}

Act byKey(Qt::Key key)
{
    return [key](DialogBox &dialog) { press(dialog, key); };
}

void addRow(const Box &box, const char *end, const Act &act, int answer)
{
    QTest::addRow("%s: %s", box.name, end) << box.ask << box.buttons << box.active << act << answer;
}

} // namespace

class DialogBoxesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void everyEndOfEveryBoxHasItsAnswer_data();
    void everyEndOfEveryBoxHasItsAnswer();
    void onlyTheLinksButtonOpensTheLink();
    void anImageIsShownUnlessNull();
    void aWindowIsWhatTheBoxStandsOver();
    void onlyABoxThatClosesItselfGoesWithTheFocus();
    void spaceOnABoxWhoseDefaultIsNoAnswersYes();
    void textsMayBeNull();

  private:
    ThemedPreferences preferences_;
    QList<QUrl> opened_;
};

void DialogBoxesTest::initTestCase()
{
    PaintedWidget::useFontOf(13);
}

void DialogBoxesTest::init()
{
    opened_.clear();
    DialogBox::setUrlOpener([this](const QUrl &link) {
        opened_.append(link);
        return true;
    });
}

void DialogBoxesTest::cleanup()
{
    DialogBox::setUrlOpener({});
    QVERIFY(!QApplication::activeModalWidget());
}

void DialogBoxesTest::everyEndOfEveryBoxHasItsAnswer_data()
{
    QTest::addColumn<Ask>("ask");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<int>("active");
    QTest::addColumn<Act>("act");
    QTest::addColumn<int>("answer");
    for (const Box &box : boxes()) {
        for (std::size_t i = 0; i < box.byButton.size(); ++i)
            addRow(
                box, qPrintable(QStringLiteral("button %1").arg(i + 1)),
                [i](DialogBox &dialog) { click(dialog, qsizetype(i) + 1); }, box.byButton[i]);
        const std::size_t active = std::size_t(box.active);
        addRow(box, "Return", byKey(Qt::Key_Return), box.byButton[active - 1]);
        addRow(box, "Escape", byKey(Qt::Key_Escape), box.cancelled);
        addRow(
            box, "closed", [](DialogBox &dialog) { dialog.close(); }, box.closed);
        if (box.buttons.size() == 2)
            addRow(box, "Space", byKey(Qt::Key_Space), box.byButton[2 - active]);
    }
}

void DialogBoxesTest::everyEndOfEveryBoxHasItsAnswer()
{
    QFETCH(Ask, ask);
    QFETCH(QStringList, buttons);
    QFETCH(int, active);
    QFETCH(Act, act);
    whenActive([&](DialogBox &dialog) {
        QCOMPARE(dialog.title(), title);
        QCOMPARE(dialog.info(), info);
        QStringList shown;
        for (const DialogButton *button : dialog.buttonsArray())
            shown.append(button->text());
        QCOMPARE(shown, buttons);
        QCOMPARE(dialog.activeButton(), active);
        QVERIFY(dialog.buttonsArray().at(active - 1)->isDefault());
        act(dialog);
    });
    QTEST(ask(), "answer");
}

void DialogBoxesTest::onlyTheLinksButtonOpensTheLink()
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
        whenActive(byKey(key));
        QCOMPARE(DialogBoxes::alertBoxDefault(title, info, url, more), key != Qt::Key_Return);
        QCOMPARE(opened_, QList<QUrl>());
    }
    whenActive([](DialogBox &dialog) { click(dialog, 2); });
    QVERIFY(DialogBoxes::alertBoxDefault(title, info, url, more));
    QCOMPARE(opened_, QList<QUrl>{url});
}

void DialogBoxesTest::anImageIsShownUnlessNull()
{
    const auto iconOf = [](QImage &picture) {
        return [&picture](DialogBox &dialog) {
            picture = PaintedWidget::of(*dialog.imageView(), Qt::white);
            press(dialog, Qt::Key_Return);
        };
    };
    QImage usual;
    whenActive(iconOf(usual));
    DialogBoxes::alertBoxDefault(title, info);
    QImage caution;
    whenActive(iconOf(caution));
    DialogBoxes::alertBoxDefault(title, info, CautionIcon::icon());
    QVERIFY(caution != usual);
    QImage shown;
    whenActive(iconOf(shown));
    DialogBoxes::alertBoxDefault(title, info, QIcon());
    QCOMPARE(shown, usual);
    whenActive(iconOf(shown));
    DialogBoxes::alertBoxDefault(title, info, url, more, CautionIcon::icon());
    QCOMPARE(shown, caution);
    whenActive(iconOf(shown));
    DialogBoxes::alertBoxDefault(title, info, url, more, QIcon());
    QCOMPARE(shown, usual);
}

void DialogBoxesTest::aWindowIsWhatTheBoxStandsOver()
{
    FramelessWindow main;
    main.setGeometry(50, 50, 500, 400);
    WindowRegister::shared().setMainWindow(&main);
    FramelessWindow other;
    other.setGeometry(150, 120, 500, 400);
    QRect frame;
    const auto look = [&frame](DialogBox &dialog) {
        frame = dialog.geometry();
        press(dialog, Qt::Key_Escape);
    };
    whenActive(look);
    DialogBoxes::alertBoxYesNo(title, info, true, &other);
    QCOMPARE(frame.topLeft(), QPoint(180, 180));
    whenActive(look);
    DialogBoxes::alertBoxYesNoWithNotShowAgain(title, info, true, &other);
    QCOMPARE(frame.topLeft(), QPoint(180, 180));
    whenActive(look);
    DialogBoxes::alertBoxYesNo(title, info, true);
    QCOMPARE(frame.topLeft(), QPoint(80, 90));
}

void DialogBoxesTest::onlyABoxThatClosesItselfGoesWithTheFocus()
{
    whenActive([](DialogBox &dialog) { dialog.windowDidResignKey(); });
    QVERIFY(!DialogBoxes::alertBoxYesNoSelfClosing(title, info, true, true));
    whenActive([](DialogBox &dialog) {
        dialog.windowDidResignKey();
        QVERIFY(dialog.isVisible());
        press(dialog, Qt::Key_Return);
    });
    QVERIFY(DialogBoxes::alertBoxYesNoSelfClosing(title, info, true, false));
}

void DialogBoxesTest::spaceOnABoxWhoseDefaultIsNoAnswersYes()
{
    whenActive(byKey(Qt::Key_Space));
    QVERIFY(DialogBoxes::alertBoxYesNo(title, info, false));
}

void DialogBoxesTest::textsMayBeNull()
{
    whenActive([](DialogBox &dialog) {
        QCOMPARE(dialog.height(), 178);
        press(dialog, Qt::Key_Return);
    });
    DialogBoxes::alertBoxDefault(QString(), QString());
}

QTEST_MAIN(DialogBoxesTest)
#include "DialogBoxesTest.moc"
