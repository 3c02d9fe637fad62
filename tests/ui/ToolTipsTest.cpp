#include "ui/ToolTips.h"

#include <QApplication>
#include <QFontMetrics>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

namespace {

constexpr int widest = 480;

QString joined(const QString &shown)
{
    return QString(shown).remove(QLatin1Char('\n'));
}

} // namespace

class ToolTipsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aShortTextStaysAsItIs_data();
    void aShortTextStaysAsItIs();
    void aLongTextIsBrokenBetweenItsWords();
    void aLongNameIsBrokenAnywhere();
    void givenLinesStay();
    void nothingIsTakenForRichText_data();
    void nothingIsTakenForRichText();
    void aTipIsShownAndHidden();
};

void ToolTipsTest::aShortTextStaysAsItIs_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("a name") << QStringLiteral("Tax return 2023 - final.pdf");
    QTest::newRow("signs") << QStringLiteral("3 < 4 & 5 > 4");
    QTest::newRow("blanks around") << QStringLiteral("  a  ");
}

void ToolTipsTest::aShortTextStaysAsItIs()
{
    QFETCH(QString, text);
    QCOMPARE(ToolTips::shownText(text), text);
}

void ToolTipsTest::aLongTextIsBrokenBetweenItsWords()
{
    const QString text = QStringLiteral("many words one after the other ").repeated(9).trimmed();
    const QStringList lines = ToolTips::shownText(text).split(QLatin1Char('\n'));
    QVERIFY(lines.size() > 1);
    const QFontMetrics metrics(QToolTip::font());
    for (const QString &line : lines) {
        QVERIFY(metrics.horizontalAdvance(line.trimmed()) <= widest);
        QVERIFY(QStringLiteral("many words one after the other")
                    .split(QLatin1Char(' '))
                    .contains(line.trimmed().section(QLatin1Char(' '), -1)));
    }
    QCOMPARE(joined(lines.join(QString())), text);
}

void ToolTipsTest::aLongNameIsBrokenAnywhere()
{
    const QString name(255, QLatin1Char('w'));
    const QStringList lines = ToolTips::shownText(name).split(QLatin1Char('\n'));
    QVERIFY(lines.size() > 1);
    for (const QString &line : lines)
        QVERIFY(QFontMetrics(QToolTip::font()).horizontalAdvance(line) <= widest);
    QCOMPARE(lines.join(QString()), name);
}

void ToolTipsTest::givenLinesStay()
{
    const QString text = QStringLiteral("one\n\nthree");
    QCOMPARE(ToolTips::shownText(text), text);
}

void ToolTipsTest::nothingIsTakenForRichText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("a tag") << QStringLiteral("<b>bold.txt");
    QTest::newRow("an entity") << QStringLiteral("a&lt;b");
    QTest::newRow("a comparison") << QStringLiteral("a < b & c > d");
    QTest::newRow("a picture") << QStringLiteral("<img src='/etc/passwd'>");
    QTest::newRow("a tag behind a name") << QStringLiteral("a.txt <i>");
}

void ToolTipsTest::nothingIsTakenForRichText()
{
    QFETCH(QString, text);
    QVERIFY(Qt::mightBeRichText(text));
    const QString shown = ToolTips::shownText(text);
    QVERIFY(!Qt::mightBeRichText(shown));
    QCOMPARE(QString(shown).remove(QChar(0x200B)), text);
}

void ToolTipsTest::aTipIsShownAndHidden()
{
    QWidget widget;
    widget.show();
    ToolTips::show(widget.mapToGlobal(QPoint(1, 1)), QStringLiteral("<b>a"), &widget);
    QVERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QStringLiteral(u"<\u200Bb>a"));
    ToolTips::show(widget.mapToGlobal(QPoint(1, 1)), QString(), &widget);
    QTRY_VERIFY(!QToolTip::isVisible());
}

QTEST_MAIN(ToolTipsTest)
#include "ToolTipsTest.moc"
