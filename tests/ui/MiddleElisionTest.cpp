#include "ui/MiddleElision.h"

#include <QApplication>
#include <QFontMetrics>
#include <QTest>

namespace {

QFontMetrics metrics()
{
    return QFontMetrics(QApplication::font());
}

QString elided(const QString &text, int width)
{
    return MiddleElision::elided(text, metrics(), width);
}

constexpr QChar ellipsis(0x2026);

} // namespace

class MiddleElisionTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void whatFitsStaysWhole();
    void asManyCharactersAsFitStay();
    void beginningAndEndAreEquallyLong();
    void whatFitsNowhereIsAnEllipsis();
    void charactersOfSeveralCodePointsStayWhole();
};

void MiddleElisionTest::whatFitsStaysWhole()
{
    const QString text = QStringLiteral("notes.txt");
    QCOMPARE(elided(text, metrics().horizontalAdvance(text)), text);
    QCOMPARE(elided(QString(), 0), QString());
}

void MiddleElisionTest::asManyCharactersAsFitStay()
{
    const QString text(255, QLatin1Char('m'));
    for (const int width : {100, 101, 137, 280}) {
        const QString shown = elided(text, width);
        QVERIFY(metrics().horizontalAdvance(shown) <= width);
        QVERIFY(metrics().horizontalAdvance(shown + QLatin1Char('m')) > width);
    }
}

void MiddleElisionTest::beginningAndEndAreEquallyLong()
{
    QString text;
    for (int number = 100; number < 185; ++number)
        text += QString::number(number);
    for (int width = 60; width < 200; ++width) {
        const QString shown = elided(text, width);
        const qsizetype before = shown.indexOf(ellipsis);
        const qsizetype behind = shown.size() - before - 1;
        QVERIFY(before == behind || before == behind + 1);
        QVERIFY(text.startsWith(shown.first(before)) && text.endsWith(shown.last(behind)));
    }
}

void MiddleElisionTest::whatFitsNowhereIsAnEllipsis()
{
    QCOMPARE(elided(QStringLiteral("notes.txt"), 0), QString(ellipsis));
}

void MiddleElisionTest::charactersOfSeveralCodePointsStayWhole()
{
    const QString character = QStringLiteral(u"e\u0301\u0323");
    const QString text = character.repeated(40);
    for (int width = 20; width < 60; ++width) {
        QString shown = elided(text, width);
        shown.remove(ellipsis);
        QCOMPARE(shown, character.repeated(shown.size() / character.size()));
    }
}

QTEST_MAIN(MiddleElisionTest)
#include "MiddleElisionTest.moc"
