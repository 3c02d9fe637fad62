#include "support/TimeFormatter.h"

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

} // namespace

class TimeFormatterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void eachRangeHasItsOwnWording_data();
    void eachRangeHasItsOwnWording();
    void onlyALeadingOneIsSingular_data();
    void onlyALeadingOneIsSingular();
    void whatIsNoDurationReadsZeroSeconds_data();
    void whatIsNoDurationReadsZeroSeconds();
    void yearsSaturate();
};

void TimeFormatterTest::eachRangeHasItsOwnWording_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("half a second") << 0.5 << QStringLiteral("0 seconds");
    QTest::newRow("just below a second") << justBelow(1.0) << QStringLiteral("0 seconds");
    QTest::newRow("a second") << 1.0 << QStringLiteral("1 second");
    QTest::newRow("two seconds") << 2.0 << QStringLiteral("2 seconds");
    QTest::newRow("nearly a minute") << 59.9 << QStringLiteral("59 seconds");
    QTest::newRow("just below a minute") << justBelow(60.0) << QStringLiteral("59 seconds");
    QTest::newRow("a minute") << 60.0 << QStringLiteral("about 1 minutes");
    QTest::newRow("two minutes") << 120.0 << QStringLiteral("about 2 minutes");
    QTest::newRow("a second below an hour") << 3599.0 << QStringLiteral("about 59 minutes");
    QTest::newRow("just below an hour") << justBelow(3600.0) << QStringLiteral("about 59 minutes");
    QTest::newRow("an hour") << 3600.0 << QStringLiteral("about 1 hours");
    QTest::newRow("nearly two hours") << 7199.0 << QStringLiteral("about 1 hours");
    QTest::newRow("just below a day") << justBelow(86400.0) << QStringLiteral("about 23 hours");
    QTest::newRow("a day") << 86400.0 << QStringLiteral("1 day");
    QTest::newRow("two days") << 172800.0 << QStringLiteral("2 days");
    QTest::newRow("one year is still counted in days") << 31536000.0 << QStringLiteral("365 days");
    QTest::newRow("just below five years") << justBelow(157680000.0) << QStringLiteral("1824 days");
    QTest::newRow("five years") << 157680000.0 << QStringLiteral("5 years");
    QTest::newRow("just below six years") << 189215999.0 << QStringLiteral("5 years");
    QTest::newRow("six years") << 189216000.0 << QStringLiteral("6 years");
}

void TimeFormatterTest::eachRangeHasItsOwnWording()
{
    QFETCH(double, seconds);
    QTEST(TimeFormatter::formatSeconds(seconds), "text");
}

void TimeFormatterTest::onlyALeadingOneIsSingular_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("one second and a bit") << 1.9 << QStringLiteral("1 second");
    QTest::newRow("ten seconds begin with a one, too") << 10.0 << QStringLiteral("10 seconds");
    QTest::newRow("one minute is not leading") << 61.0 << QStringLiteral("about 1 minutes");
    QTest::newRow("one hour is not leading") << 3661.0 << QStringLiteral("about 1 hours");
    QTest::newRow("nearly two days") << 172799.0 << QStringLiteral("1 day");
    QTest::newRow("ten days") << 864000.0 << QStringLiteral("10 days");
}

void TimeFormatterTest::onlyALeadingOneIsSingular()
{
    QFETCH(double, seconds);
    QTEST(TimeFormatter::formatSeconds(seconds), "text");
}

void TimeFormatterTest::whatIsNoDurationReadsZeroSeconds_data()
{
    QTest::addColumn<double>("seconds");
    QTest::newRow("nothing") << 0.0;
    QTest::newRow("negative") << -100.0;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("just above single precision") << std::nextafter(largestSingle, infinity);
    QTest::newRow("infinity") << infinity;
}

void TimeFormatterTest::whatIsNoDurationReadsZeroSeconds()
{
    QFETCH(double, seconds);
    QCOMPARE(TimeFormatter::formatSeconds(seconds), QStringLiteral("0 seconds"));
}

void TimeFormatterTest::yearsSaturate()
{
    QCOMPARE(TimeFormatter::formatSeconds(largestSingle), QStringLiteral("2147483647 years"));
}

QTEST_APPLESS_MAIN(TimeFormatterTest)
#include "TimeFormatterTest.moc"
