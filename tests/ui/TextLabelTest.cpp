#include "ui/TextLabel.h"

#include "Pixels.h"
#include "ThemedPreferences.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

namespace {

const QString longName = QStringLiteral("client-database-export-with-correspondence.sql.gz");

int advance(const QString &text, TextStyle style = TextStyle::Body)
{
    return QFontMetrics(Typography::font(style)).horizontalAdvance(text);
}

/// The rectangle of all that is painted; nothing where nothing is.
QRect painted(TextLabel &label)
{
    const QImage image = Pixels::painted(label);
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

/// The strongest colour that a text leaves.
QColor ink(TextLabel &label)
{
    const QImage image = Pixels::painted(label);
    QColor strongest(Qt::transparent);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > strongest.alpha())
                strongest = image.pixelColor(x, y);
        }
    }
    return strongest;
}

} // namespace

class TextLabelTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { preferences_.reset(); }

    void aTextThatFitsIsShownWhole();
    void aTextThatDoesNotFitIsElidedAtItsEnd();
    void oneLineStandsInTheMiddleOfItsHeight();
    void textIsAlignedAsAsked();
    void aWrappingLabelTakesOneLineHeightALine();
    void aWrappingLabelBreaksALongName();
    void aWrappingLabelStartsAtTheTop();
    void theHintIsTheTextInItsStyle();
    void aLabelHasTheColourOfItsRoleAndTheme();
    void aDisabledLabelIsPale();
    void anElidedTextIsItsOwnToolTip();
    void aTextThatFitsHasNoToolTip();
    void anOwnToolTipIsKept();
    void markupIsShownAsItIs();
    void screenReadersGetTheWholeText();

  private:
    static QString toolTipOf(TextLabel &label);

    std::optional<ThemedPreferences> preferences_;
};

void TextLabelTest::init()
{
    preferences_.emplace();
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
}

void TextLabelTest::aTextThatFitsIsShownWhole()
{
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    label.resize(label.sizeHint());
    const QRect whole = painted(label);
    label.resize(label.width() + 50, label.height());
    QCOMPARE(painted(label), whole);
}

void TextLabelTest::aTextThatDoesNotFitIsElidedAtItsEnd()
{
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    label.resize(150, 20);
    TextLabel expected(TextStyle::Body);
    expected.setText(
        QFontMetrics(Typography::font(TextStyle::Body)).elidedText(longName, Qt::ElideRight, 150));
    QVERIFY(expected.text() != longName);
    expected.resize(label.size());
    QCOMPARE(Pixels::painted(label), Pixels::painted(expected));
    QVERIFY(painted(label).right() < 150);
}

void TextLabelTest::oneLineStandsInTheMiddleOfItsHeight()
{
    TextLabel label(TextStyle::Body);
    label.setText(QStringLiteral("H"));
    label.resize(40, 20);
    const QRect first = painted(label);
    QVERIFY(std::abs(first.center().y() - 10) <= 2);
    label.resize(40, 40);
    QCOMPARE(painted(label), first.translated(0, 10));
}

void TextLabelTest::textIsAlignedAsAsked()
{
    TextLabel label(TextStyle::Body);
    label.setText(QStringLiteral("H"));
    label.resize(100, 20);
    QVERIFY(painted(label).left() <= 2);
    label.setAlignment(Qt::AlignRight);
    QVERIFY(painted(label).right() >= 97);
    label.setAlignment(Qt::AlignHCenter);
    QVERIFY(std::abs(painted(label).center().x() - 50) <= 1);
}

void TextLabelTest::aWrappingLabelTakesOneLineHeightALine()
{
    TextLabel label(TextStyle::Description);
    label.setText(QStringLiteral("one two three"));
    QCOMPARE(label.heightForWidth(10), -1);
    label.setWraps(true);
    QVERIFY(label.sizePolicy().hasHeightForWidth());
    QCOMPARE(label.heightForWidth(1000), 18);
    QCOMPARE(label.heightForWidth(advance(QStringLiteral("three "), TextStyle::Description)), 54);
    label.setText(QStringLiteral("one\n\nthree"));
    QCOMPARE(label.heightForWidth(1000), 54);
    QCOMPARE(label.sizeHint().height(), 54);
}

void TextLabelTest::aWrappingLabelBreaksALongName()
{
    TextLabel label(TextStyle::Body);
    label.setWraps(true);
    label.setText(longName);
    label.resize(100, label.heightForWidth(100));
    QVERIFY(label.height() >= 60);
    QVERIFY(painted(label).right() < 100);
    QVERIFY(painted(label).bottom() >= label.height() - 20);
}

void TextLabelTest::aWrappingLabelStartsAtTheTop()
{
    TextLabel label(TextStyle::Description);
    label.setWraps(true);
    label.setText(QStringLiteral("H"));
    label.resize(40, 54);
    QVERIFY(painted(label).bottom() < 18);
}

void TextLabelTest::theHintIsTheTextInItsStyle()
{
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    QCOMPARE(label.sizeHint(), QSize(advance(longName) + 1, 20));
    QCOMPARE(label.minimumSizeHint(), QSize(0, 20));
    label.setStyle(TextStyle::Heading);
    QCOMPARE(label.style(), TextStyle::Heading);
    QCOMPARE(label.sizeHint(), QSize(advance(longName, TextStyle::Heading) + 1, 28));
}

void TextLabelTest::aLabelHasTheColourOfItsRoleAndTheme()
{
    TextLabel label(TextStyle::Result, ColorRole::Bad);
    label.setText(QStringLiteral("III"));
    label.resize(label.sizeHint());
    QVERIFY(Pixels::areNear(ink(label), QColor(0xB3, 0x26, 0x1E), 2));
    preferences_->setDark(true);
    QVERIFY(Pixels::areNear(ink(label), QColor(0xFF, 0x91, 0x88), 2));
    label.setRole(ColorRole::Text);
    QCOMPARE(label.role(), ColorRole::Text);
    QVERIFY(Pixels::areNear(ink(label), QColor(0xE8, 0xEC, 0xEF), 2));
}

void TextLabelTest::aDisabledLabelIsPale()
{
    TextLabel label(TextStyle::Result, ColorRole::Bad);
    label.setText(QStringLiteral("III"));
    label.resize(label.sizeHint());
    label.setEnabled(false);
    QVERIFY(Pixels::areNear(ink(label), QColor(0x8B, 0x95, 0x9E), 2));
}

QString TextLabelTest::toolTipOf(TextLabel &label)
{
    QToolTip::hideText();
    label.show();
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), label.mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(&label, &event);
    // A tip on its way out still has its text.
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

void TextLabelTest::anElidedTextIsItsOwnToolTip()
{
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    label.resize(100, 20);
    QCOMPARE(toolTipOf(label), longName);
}

void TextLabelTest::aTextThatFitsHasNoToolTip()
{
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    label.resize(label.sizeHint());
    QCOMPARE(toolTipOf(label), QString());
    TextLabel wrapping(TextStyle::Body);
    wrapping.setWraps(true);
    wrapping.setText(longName);
    wrapping.resize(50, 100);
    QCOMPARE(toolTipOf(wrapping), QString());
}

void TextLabelTest::anOwnToolTipIsKept()
{
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    label.setToolTip(QStringLiteral("its own"));
    label.resize(100, 20);
    QCOMPARE(toolTipOf(label), QStringLiteral("its own"));
}

void TextLabelTest::markupIsShownAsItIs()
{
    TextLabel label(TextStyle::Body);
    label.setText(QStringLiteral("<b>a</b>"));
    label.resize(label.sizeHint());
    QVERIFY(painted(label).width() > advance(QStringLiteral("<b>a")));
}

void TextLabelTest::screenReadersGetTheWholeText()
{
    TextLabel label(TextStyle::Body);
    label.setText(longName);
    label.resize(100, 20);
    const QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(reader);
    QCOMPARE(reader->text(QAccessible::Name), longName);
}

QTEST_MAIN(TextLabelTest)
#include "TextLabelTest.moc"
