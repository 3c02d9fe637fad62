#include "support/NumberText.h"

#include <QTest>

#include <cstdint>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class NumberTextTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void thirtyTwoBitsTruncateAndSaturate_data();
    void thirtyTwoBitsTruncateAndSaturate();
    void sixtyFourBitsTruncateAndSaturate_data();
    void sixtyFourBitsTruncateAndSaturate();
    void twoDecimalsComeFromTheExactValue_data();
    void twoDecimalsComeFromTheExactValue();
    void theLargestShownValueIsTheLargestSinglePrecisionOne();
    void theLongestTextHasAllItsDigits();
};

void NumberTextTest::thirtyTwoBitsTruncateAndSaturate_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<std::int32_t>("expected");
    QTest::newRow("a fraction is cut off") << 2.9 << 2;
    QTest::newRow("a negative fraction is cut off towards zero") << -2.9 << -2;
    QTest::newRow("the largest integer") << 2147483647.0 << INT32_MAX;
    QTest::newRow("a fraction above the largest integer") << 2147483647.5 << INT32_MAX;
    QTest::newRow("one above the largest integer") << 2147483648.0 << INT32_MAX;
    QTest::newRow("the smallest integer") << -2147483648.0 << INT32_MIN;
    QTest::newRow("one above the smallest integer") << -2147483647.0 << INT32_MIN + 1;
    QTest::newRow("one below the smallest integer") << -2147483649.0 << INT32_MIN;
    QTest::newRow("infinity") << infinity << INT32_MAX;
    QTest::newRow("minus infinity") << -infinity << INT32_MIN;
    QTest::newRow("not a number") << notANumber << 0;
}

void NumberTextTest::thirtyTwoBitsTruncateAndSaturate()
{
    QFETCH(double, value);
    QTEST(NumberText::truncatedTo32Bits(value), "expected");
}

void NumberTextTest::sixtyFourBitsTruncateAndSaturate_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("a fraction is cut off") << 99.9 << qint64(99);
    QTest::newRow("a negative fraction is cut off towards zero") << -99.9 << qint64(-99);
    QTest::newRow("beyond 32 bits") << 4294967296.0 << qint64(4294967296);
    QTest::newRow("the largest double below the end")
        << 9223372036854774784.0 << qint64(9223372036854774784);
    QTest::newRow("the first double above the end") << 9223372036854775808.0 << qint64(INT64_MAX);
    QTest::newRow("the smallest integer") << -9223372036854775808.0 << qint64(INT64_MIN);
    QTest::newRow("far below the smallest integer") << -1e300 << qint64(INT64_MIN);
    QTest::newRow("infinity") << infinity << qint64(INT64_MAX);
    QTest::newRow("minus infinity") << -infinity << qint64(INT64_MIN);
    QTest::newRow("not a number") << notANumber << qint64(0);
}

void NumberTextTest::sixtyFourBitsTruncateAndSaturate()
{
    QFETCH(double, value);
    QFETCH(qint64, expected);
    QCOMPARE(qint64(NumberText::truncatedTo64Bits(value)), expected);
}

void NumberTextTest::twoDecimalsComeFromTheExactValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a tie goes down to the even digit") << 1.125 << QStringLiteral("1.12");
    QTest::newRow("a tie goes up to the even digit") << 1.375 << QStringLiteral("1.38");
    QTest::newRow("a decimal tie that is stored a little lower") << 1.005 << QStringLiteral("1.00");
    QTest::newRow("a decimal tie that is stored a little higher")
        << 8.345 << QStringLiteral("8.35");
    QTest::newRow("a carry adds a digit") << 999.996 << QStringLiteral("1000.00");
    QTest::newRow("zeros are kept") << 3.0 << QStringLiteral("3.00");
    QTest::newRow("negative") << -0.5 << QStringLiteral("-0.50");
}

void NumberTextTest::twoDecimalsComeFromTheExactValue()
{
    QFETCH(double, value);
    QTEST(NumberText::withTwoDecimals(value), "expected");
}

void NumberTextTest::theLargestShownValueIsTheLargestSinglePrecisionOne()
{
    QVERIFY(NumberText::largestShown == 3.4028234663852886e38);
}

void NumberTextTest::theLongestTextHasAllItsDigits()
{
    const QString longest = NumberText::withTwoDecimals(-std::numeric_limits<double>::max());
    QCOMPARE(longest.size(), qsizetype(1 + 309 + 3));
    QVERIFY(longest.startsWith(QLatin1String("-179769313486231570814")));
    QVERIFY(longest.endsWith(QLatin1String("368.00")));
}

QTEST_APPLESS_MAIN(NumberTextTest)
#include "NumberTextTest.moc"
