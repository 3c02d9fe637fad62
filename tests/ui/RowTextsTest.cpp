#include "ui/RowTexts.h"

#include <QTest>

using RowTexts::RowState;

Q_DECLARE_METATYPE(RowState)

class RowTextsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aNameIsShownAsText_data();
    void aNameIsShownAsText();
    void homeIsATilde_data();
    void homeIsATilde();
    void anUnknownSizeHasNoNumber_data();
    void anUnknownSizeHasNoNumber();
    void aRowSaysHowFarItIs_data();
    void aRowSaysHowFarItIs();
    void aRowIsSpokenInOneLine();
    void aNameKeepsItsDirectionToItself();
};

void RowTextsTest::aNameIsShownAsText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *title, const QByteArray &bytes, const QString &text) {
        QTest::newRow(title) << bytes << text;
    };
    row("plain", "notes.txt", QStringLiteral("notes.txt"));
    row("UTF-8", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", QStringLiteral(u"\u00E4\u20AC\U0001F600"));
    row("not UTF-8", "a\xFF\xFEz", QStringLiteral(u"a\uFFFD\uFFFDz"));
    row("cut UTF-8", "a\xE2\x82", QStringLiteral(u"a\uFFFD\uFFFD"));
    row("newline and tab", "a\nb\tc", QStringLiteral(u"a\uFFFDb\uFFFDc"));
    row("escape and delete", "\x1B[1m\x7F", QStringLiteral(u"\uFFFD[1m\uFFFD"));
    row("C1 control", "a\xC2\x9C", QStringLiteral(u"a\uFFFD"));
    row("line separator", "a\xE2\x80\xA8z", QStringLiteral(u"a\uFFFDz"));
    row("override",
        "invoice\xE2\x80\xAE"
        "fdp.exe",
        QStringLiteral(u"invoice\uFFFDfdp.exe"));
    row("end of an isolate", "a\xE2\x81\xA9z", QStringLiteral(u"a\uFFFDz"));
    row("joiner", "a\xE2\x80\x8Dz", QStringLiteral(u"a\u200Dz"));
    row("empty", "", QString());
}

void RowTextsTest::aNameIsShownAsText()
{
    QFETCH(QByteArray, bytes);
    QTEST(RowTexts::name(bytes), "text");
}

void RowTextsTest::homeIsATilde_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("home");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *title, const char *path, const char *home, const char *text) {
        QTest::newRow(title) << QByteArray(path) << QByteArray(home) << QString::fromUtf8(text);
    };
    row("below", "/home/ada/Documents", "/home/ada", "~/Documents");
    row("itself", "/home/ada", "/home/ada", "~");
    row("a home with a slash", "/home/ada/x", "/home/ada/", "~/x");
    row("a folder with a slash", "/home/ada/x/", "/home/ada", "~/x");
    row("another's", "/home/adam/x", "/home/ada", "/home/adam/x");
    row("above", "/home", "/home/ada", "/home");
    row("elsewhere", "/media/ada/Archive", "/home/ada", "/media/ada/Archive");
    row("root", "/", "/home/ada", "/");
    row("a home that is the root", "/etc", "/", "/etc");
    row("no home", "/home/ada", "", "/home/ada");
    row("control", "/home/ada/a\nb", "/home/ada",
        "~/a\xEF\xBF\xBD"
        "b");
}

void RowTextsTest::homeIsATilde()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, home);
    QTEST(RowTexts::folder(path, home), "text");
}

void RowTextsTest::anUnknownSizeHasNoNumber_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("unknown") << -1.0 << QStringLiteral("--");
    QTest::newRow("empty") << 0.0 << QStringLiteral("0 Bytes");
    QTest::newRow("some") << 1.62e9 << QStringLiteral("1.62 GB");
}

void RowTextsTest::anUnknownSizeHasNoNumber()
{
    QFETCH(double, bytes);
    QTEST(RowTexts::size(bytes), "text");
}

void RowTextsTest::aRowSaysHowFarItIs_data()
{
    QTest::addColumn<RowState>("state");
    QTest::addColumn<QString>("text");
    const QString error = QStringLiteral("Permission denied");
    const auto row = [](const char *title, const RowState &state, const char *text) {
        QTest::newRow(title) << state << QString::fromUtf8(text);
    };
    row("waiting", {0, false, 0, 0, {}}, "waiting");
    row("waiting, in another row's pass", {0, false, 2, 3, {}}, "waiting");
    row("in work", {0, true, 2, 3, {}}, "in work, pass 2 of 3");
    row("in work, pass unknown", {0, true, 0, 3, {}}, "in work");
    row("wiped", {1, false, 0, 0, {}}, "wiped");
    row("wiped just now", {1, true, 3, 3, {}}, "wiped");
    row("failed", {2, false, 0, 0, error}, "failed: Permission denied");
    row("failed without a reason", {2, false, 0, 0, {}}, "failed");
    row("another status", {7, false, 0, 0, error}, "failed: Permission denied");
}

void RowTextsTest::aRowSaysHowFarItIs()
{
    QFETCH(RowState, state);
    QTEST(RowTexts::state(state), "text");
}

void RowTextsTest::aRowIsSpokenInOneLine()
{
    QCOMPARE(
        RowTexts::spoken(QStringLiteral("50%1 off.txt"), QStringLiteral("~/Documents"),
                         QStringLiteral("4.10 KB"), {}),
        QStringLiteral(u"\u206850%1 off.txt\u2069, \u2068~/Documents\u2069, 4.10 KB, waiting"));
}

/// Hebrew letters between the marks are a piece of their own in a line from left to right.
void RowTextsTest::aNameKeepsItsDirectionToItself()
{
    const QString name = RowTexts::name("\xD7\x90\xD7\x91");
    QVERIFY(name.isRightToLeft());
    const QString isolated = RowTexts::isolated(name);
    QCOMPARE(isolated.front(), QChar(0x2068));
    QCOMPARE(isolated.back(), QChar(0x2069));
    QCOMPARE(isolated.sliced(1, name.size()), name);
}

QTEST_APPLESS_MAIN(RowTextsTest)
#include "RowTextsTest.moc"
