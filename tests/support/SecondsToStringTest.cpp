#include "support/SecondsToString.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largestSingle = 3.4028234663852886e38;

double justBelow(double seconds)
{
    return std::nextafter(seconds, 0.0);
}

QString shown(const QVariant &value)
{
    return SecondsToString().transformedValue(value).toString();
}

} // namespace

class SecondsToStringTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void eachRangeHasItsOwnWording_data();
    void eachRangeHasItsOwnWording();
    void exactlyNinetySecondsLackThePlural();
    void oneOfAUnitIsPluralToo_data();
    void oneOfAUnitIsPluralToo();
    void whatIsNoEstimateReadsAsDashes_data();
    void whatIsNoEstimateReadsAsDashes();
    void integersAreSecondsToo();
    void yearsSaturate();
};

void SecondsToStringTest::eachRangeHasItsOwnWording_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << QStringLiteral("--");
    QTest::newRow("just below a second") << justBelow(1.0) << QStringLiteral("--");
    QTest::newRow("a second") << 1.0 << QStringLiteral("About 5 seconds");
    QTest::newRow("nearly six seconds") << 5.9 << QStringLiteral("About 5 seconds");
    QTest::newRow("just below six seconds") << justBelow(6.0) << QStringLiteral("About 5 seconds");
    QTest::newRow("six seconds") << 6.0 << QStringLiteral("About 10 seconds");
    QTest::newRow("just below eleven seconds")
        << justBelow(11.0) << QStringLiteral("About 10 seconds");
    QTest::newRow("eleven seconds") << 11.0 << QStringLiteral("Less than a minute");
    QTest::newRow("a second below a minute") << 59.0 << QStringLiteral("Less than a minute");
    QTest::newRow("just below a minute") << justBelow(60.0) << QStringLiteral("Less than a minute");
    QTest::newRow("a minute") << 60.0 << QStringLiteral("About a minute");
    QTest::newRow("nearly ninety seconds") << 89.9 << QStringLiteral("About a minute");
    QTest::newRow("just below ninety seconds")
        << justBelow(90.0) << QStringLiteral("About a minute");
    QTest::newRow("a hundred seconds") << 100.0 << QStringLiteral("About 2 minutes");
    QTest::newRow("a second below two minutes") << 119.0 << QStringLiteral("About 2 minutes");
    QTest::newRow("two minutes") << 120.0 << QStringLiteral("About 2 minutes");
    QTest::newRow("just below three minutes")
        << justBelow(180.0) << QStringLiteral("About 2 minutes");
    QTest::newRow("three minutes") << 180.0 << QStringLiteral("About 3 minutes");
    QTest::newRow("just below an hour") << justBelow(3600.0) << QStringLiteral("About 59 minutes");
    QTest::newRow("two hours") << 7200.0 << QStringLiteral("About 2 hours");
    QTest::newRow("just below a day") << justBelow(86400.0) << QStringLiteral("About 23 hours");
    QTest::newRow("two days") << 172800.0 << QStringLiteral("About 2 days");
    QTest::newRow("one year is still counted in days")
        << 31536000.0 << QStringLiteral("About 365 days");
    QTest::newRow("just below five years")
        << justBelow(157680000.0) << QStringLiteral("About 1824 days");
    QTest::newRow("five years") << 157680000.0 << QStringLiteral("About 5 years");
}

void SecondsToStringTest::eachRangeHasItsOwnWording()
{
    QFETCH(double, seconds);
    QTEST(shown(seconds), "text");
}

void SecondsToStringTest::exactlyNinetySecondsLackThePlural()
{
    QCOMPARE(shown(90.0), QStringLiteral("About 2 minute"));
    QCOMPARE(shown(std::nextafter(90.0, 91.0)), QStringLiteral("About 2 minutes"));
    QCOMPARE(shown(90.5), QStringLiteral("About 2 minutes"));
}

void SecondsToStringTest::oneOfAUnitIsPluralToo_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("an hour") << 3600.0 << QStringLiteral("About 1 hours");
    QTest::newRow("nearly two hours") << 7199.0 << QStringLiteral("About 1 hours");
    QTest::newRow("a day") << 86400.0 << QStringLiteral("About 1 days");
}

void SecondsToStringTest::oneOfAUnitIsPluralToo()
{
    QFETCH(double, seconds);
    QTEST(shown(seconds), "text");
}

void SecondsToStringTest::whatIsNoEstimateReadsAsDashes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("no value") << QVariant();
    QTest::newRow("a null number") << QVariant(QMetaType::fromType<double>());
    QTest::newRow("negative") << QVariant(-100.0);
    QTest::newRow("minus infinity") << QVariant(-infinity);
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("just above single precision")
        << QVariant(std::nextafter(largestSingle, infinity));
    QTest::newRow("infinity") << QVariant(infinity);
}

void SecondsToStringTest::whatIsNoEstimateReadsAsDashes()
{
    QFETCH(QVariant, value);
    QCOMPARE(shown(value), QStringLiteral("--"));
}

void SecondsToStringTest::integersAreSecondsToo()
{
    QCOMPARE(shown(7), QStringLiteral("About 10 seconds"));
    QCOMPARE(shown(qint64(7200)), QStringLiteral("About 2 hours"));
}

void SecondsToStringTest::yearsSaturate()
{
    QCOMPARE(shown(largestSingle), QStringLiteral("About 2147483647 years"));
}

QTEST_APPLESS_MAIN(SecondsToStringTest)
#include "SecondsToStringTest.moc"
