#include "support/PercentageToString.h"

#include <QLocale>
#include <QTest>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

QString shown(const QVariant &value)
{
    return PercentageToString().transformedValue(value).toString();
}

} // namespace

class PercentageToStringTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theIntegerPartIsShown_data();
    void theIntegerPartIsShown();
    void whatIsNoPercentageReadsZero_data();
    void whatIsNoPercentageReadsZero();
    void valuesOutOfRangeSaturate();
    void integersLoseNoDigits();
    void theDesktopsLocaleDoesNotMatter();
};

void PercentageToStringTest::theIntegerPartIsShown_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << QVariant(0) << QStringLiteral("0 %");
    QTest::newRow("an integer") << QVariant(42) << QStringLiteral("42 %");
    QTest::newRow("a whole double") << QVariant(42.0) << QStringLiteral("42 %");
    QTest::newRow("nearly a hundred is cut off") << QVariant(99.9) << QStringLiteral("99 %");
    QTest::newRow("a single is cut off, too") << QVariant(99.9F) << QStringLiteral("99 %");
    QTest::newRow("less than one") << QVariant(0.99) << QStringLiteral("0 %");
    QTest::newRow("less than minus one is cut off towards zero")
        << QVariant(-1.9) << QStringLiteral("-1 %");
    QTest::newRow("between minus one and zero") << QVariant(-0.9) << QStringLiteral("0 %");
    QTest::newRow("more than a hundred") << QVariant(250) << QStringLiteral("250 %");
}

void PercentageToStringTest::theIntegerPartIsShown()
{
    QFETCH(QVariant, value);
    QTEST(shown(value), "text");
}

void PercentageToStringTest::whatIsNoPercentageReadsZero_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no value") << QVariant();
    QTest::newRow("a null number") << QVariant(QMetaType::fromType<double>());
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("infinity") << QVariant(infinity);
    QTest::newRow("minus infinity") << QVariant(-infinity);
}

void PercentageToStringTest::whatIsNoPercentageReadsZero()
{
    QFETCH(QVariant, value);
    QCOMPARE(shown(value), QStringLiteral("0 %"));
}

void PercentageToStringTest::valuesOutOfRangeSaturate()
{
    QCOMPARE(shown(1e30), QStringLiteral("9223372036854775807 %"));
    QCOMPARE(shown(-1e30), QStringLiteral("-9223372036854775808 %"));
}

void PercentageToStringTest::integersLoseNoDigits()
{
    QCOMPARE(shown(qint64(9007199254740993)), QStringLiteral("9007199254740993 %"));
}

void PercentageToStringTest::theDesktopsLocaleDoesNotMatter()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString text = shown(1234567);
    QLocale::setDefault(before);
    QCOMPARE(text, QStringLiteral("1234567 %"));
}

QTEST_APPLESS_MAIN(PercentageToStringTest)
#include "PercentageToStringTest.moc"
