#include "support/BytesFormatter.h"

#include <QLocale>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largestSingle = 3.4028234663852886e38;

} // namespace

class BytesFormatterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void smallCountsAreWholeBytes_data();
    void smallCountsAreWholeBytes();
    void exactlyOneThousandStaysInBytes();
    void exactlyOneThousandOfAUnitStaysInThatUnit_data();
    void exactlyOneThousandOfAUnitStaysInThatUnit();
    void theStepIsDecimal();
    void everyUnitIsReachedAboveOneThousandOfTheOneBefore_data();
    void everyUnitIsReachedAboveOneThousandOfTheOneBefore();
    void scaledCountsHaveTwoDecimals_data();
    void scaledCountsHaveTwoDecimals();
    void beyondTheLastUnitTheValueIsNotScaledBack_data();
    void beyondTheLastUnitTheValueIsNotScaledBack();
    void whatCannotBeACountReadsZeroBytes_data();
    void whatCannotBeACountReadsZeroBytes();
    void theLargestSinglePrecisionValueIsStillShown();
    void negativeCountsStayInBytesAndSaturate_data();
    void negativeCountsStayInBytesAndSaturate();
    void theDesktopsLocaleDoesNotMatter();
};

void BytesFormatterTest::smallCountsAreWholeBytes_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << QStringLiteral("0 Bytes");
    QTest::newRow("minus nothing") << -0.0 << QStringLiteral("0 Bytes");
    QTest::newRow("one byte is plural, too") << 1.0 << QStringLiteral("1 Bytes");
    QTest::newRow("a fraction is cut off") << 5.99 << QStringLiteral("5 Bytes");
    QTest::newRow("just below one thousand") << 999.0 << QStringLiteral("999 Bytes");
    QTest::newRow("a fraction below one thousand") << 999.99 << QStringLiteral("999 Bytes");
}

void BytesFormatterTest::smallCountsAreWholeBytes()
{
    QFETCH(double, bytes);
    QTEST(BytesFormatter::formatBytes(bytes), "text");
}

void BytesFormatterTest::exactlyOneThousandStaysInBytes()
{
    QCOMPARE(BytesFormatter::formatBytes(1000.0), QStringLiteral("1000 Bytes"));
    QCOMPARE(BytesFormatter::formatBytes(1000.5), QStringLiteral("1.00 KB"));
    QCOMPARE(BytesFormatter::formatBytes(1001.0), QStringLiteral("1.00 KB"));
}

void BytesFormatterTest::exactlyOneThousandOfAUnitStaysInThatUnit_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("a thousand kilobytes") << 1e6 << QStringLiteral("1000.00 KB");
    QTest::newRow("a thousand megabytes") << 1e9 << QStringLiteral("1000.00 MB");
    QTest::newRow("a thousand gigabytes") << 1e12 << QStringLiteral("1000.00 GB");
    QTest::newRow("a thousand terabytes") << 1e15 << QStringLiteral("1000.00 TB");
    QTest::newRow("a thousand petabytes") << 1e18 << QStringLiteral("1000.00 PB");
    QTest::newRow("a thousand exabytes") << 1e21 << QStringLiteral("1000.00 EB");
    QTest::newRow("a thousand zettabytes") << 1e24 << QStringLiteral("1000.00 ZB");
}

void BytesFormatterTest::exactlyOneThousandOfAUnitStaysInThatUnit()
{
    QFETCH(double, bytes);
    QTEST(BytesFormatter::formatBytes(bytes), "text");
}

void BytesFormatterTest::theStepIsDecimal()
{
    QCOMPARE(BytesFormatter::formatBytes(1024.0), QStringLiteral("1.02 KB"));
    QCOMPARE(BytesFormatter::formatBytes(1048576.0), QStringLiteral("1.05 MB"));
}

void BytesFormatterTest::everyUnitIsReachedAboveOneThousandOfTheOneBefore_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("kilobytes") << 1.5e3 << QStringLiteral("1.50 KB");
    QTest::newRow("megabytes") << 1.5e6 << QStringLiteral("1.50 MB");
    QTest::newRow("gigabytes") << 1.5e9 << QStringLiteral("1.50 GB");
    QTest::newRow("terabytes") << 1.5e12 << QStringLiteral("1.50 TB");
    QTest::newRow("petabytes") << 1.5e15 << QStringLiteral("1.50 PB");
    QTest::newRow("exabytes") << 1.5e18 << QStringLiteral("1.50 EB");
    QTest::newRow("zettabytes") << 1.5e21 << QStringLiteral("1.50 ZB");
    QTest::newRow("yottabytes") << 1.5e24 << QStringLiteral("1.50 YB");
}

void BytesFormatterTest::everyUnitIsReachedAboveOneThousandOfTheOneBefore()
{
    QFETCH(double, bytes);
    QTEST(BytesFormatter::formatBytes(bytes), "text");
}

void BytesFormatterTest::scaledCountsHaveTwoDecimals_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("rounded up") << 1536000.0 << QStringLiteral("1.54 MB");
    QTest::newRow("rounded down") << 12344000.0 << QStringLiteral("12.34 MB");
    QTest::newRow("an exact tie goes to the even digit") << 1125.0 << QStringLiteral("1.12 KB");
    QTest::newRow("three digits before the point") << 999990000.0 << QStringLiteral("999.99 MB");
    QTest::newRow("rounding up does not change the unit")
        << 999999.0 << QStringLiteral("1000.00 KB");
    QTest::newRow("just above a thousand kilobytes") << 1000001.0 << QStringLiteral("1.00 MB");
}

void BytesFormatterTest::scaledCountsHaveTwoDecimals()
{
    QFETCH(double, bytes);
    QTEST(BytesFormatter::formatBytes(bytes), "text");
}

void BytesFormatterTest::beyondTheLastUnitTheValueIsNotScaledBack_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("the last unit's own range") << 9e26 << QStringLiteral("900.00 YB");
    QTest::newRow("one step beyond") << 2e27 << QStringLiteral("2.00 YB");
    QTest::newRow("ten to the thirtieth") << 1e30 << QStringLiteral("1000.00 YB");
    QTest::newRow("two steps beyond") << 2e30 << QStringLiteral("2.00 YB");
    QTest::newRow("three steps beyond") << 2e33 << QStringLiteral("2.00 YB");
}

void BytesFormatterTest::beyondTheLastUnitTheValueIsNotScaledBack()
{
    QFETCH(double, bytes);
    QTEST(BytesFormatter::formatBytes(bytes), "text");
}

void BytesFormatterTest::whatCannotBeACountReadsZeroBytes_data()
{
    QTest::addColumn<double>("bytes");
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinity") << infinity;
    QTest::newRow("just above single precision") << std::nextafter(largestSingle, infinity);
    QTest::newRow("the largest double") << std::numeric_limits<double>::max();
}

void BytesFormatterTest::whatCannotBeACountReadsZeroBytes()
{
    QFETCH(double, bytes);
    QCOMPARE(BytesFormatter::formatBytes(bytes), QStringLiteral("0 Bytes"));
}

void BytesFormatterTest::theLargestSinglePrecisionValueIsStillShown()
{
    QCOMPARE(BytesFormatter::formatBytes(largestSingle), QStringLiteral("340.28 YB"));
}

void BytesFormatterTest::negativeCountsStayInBytesAndSaturate_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("minus five") << -5.0 << QStringLiteral("-5 Bytes");
    QTest::newRow("a fraction is cut off towards zero") << -5.9 << QStringLiteral("-5 Bytes");
    QTest::newRow("less than one byte") << -0.5 << QStringLiteral("0 Bytes");
    QTest::newRow("minus one million") << -1e6 << QStringLiteral("-1000000 Bytes");
    QTest::newRow("below 32 bits") << -1e12 << QStringLiteral("-2147483648 Bytes");
    QTest::newRow("minus infinity") << -infinity << QStringLiteral("-2147483648 Bytes");
}

void BytesFormatterTest::negativeCountsStayInBytesAndSaturate()
{
    QFETCH(double, bytes);
    QTEST(BytesFormatter::formatBytes(bytes), "text");
}

void BytesFormatterTest::theDesktopsLocaleDoesNotMatter()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString text = BytesFormatter::formatBytes(1536000.0);
    const QString negative = BytesFormatter::formatBytes(-1e6);
    QLocale::setDefault(before);
    QCOMPARE(text, QStringLiteral("1.54 MB"));
    QCOMPARE(negative, QStringLiteral("-1000000 Bytes"));
}

QTEST_APPLESS_MAIN(BytesFormatterTest)
#include "BytesFormatterTest.moc"
