#include "support/VTLDate.h"

#include "platform/LocalTime.h"

#include <QLocale>
#include <QTest>

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr std::int64_t autumn = 1668499951; ///< 15 Nov 2022 08:12:31 UTC
constexpr std::int64_t summer = 1657872000; ///< 15 Jul 2022 08:00:00 UTC
constexpr std::int64_t latest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t earliest = std::numeric_limits<std::int64_t>::min();

/// What is true of one local time zone, reckoned by hand. The zone itself comes from outside, in
/// TZ.
struct Zone
{
    const char *zone;
    std::int64_t autumnOffset;  ///< the true one, seconds east
    std::int64_t autumnCounted; ///< as localTimezoneOffsetInSeconds() weighs its digits
    std::int64_t summerOffset;
    std::int64_t summerCounted;
    const char *autumnText; ///< `autumn` on the wall there
    const char *summerText;
    const char *zeroText;
    std::int64_t dayStart; ///< of a day that is followed by another; with daylight saving, of one
    std::int64_t dayEnd;   ///< that has 23 or 25 hours
};

constexpr std::array zones = {
    Zone{"UTC0", 0, 0, 0, 0, "2022-11-15 08:12:31", "2022-07-15 08:00:00", "1970-01-01 00:00:00",
         1668470400, 1668556800},
    // Central Europe; 30 Oct 2022 has 25 hours
    Zone{"CET-1CEST,M3.5.0,M10.5.0/3", 3600, 3600, 7200, 7200, "2022-11-15 09:12:31",
         "2022-07-15 10:00:00", "1970-01-01 01:00:00", 1667080800, 1667170800},
    // India, with half an hour: "+0530" is 5 * 3600 + 3 * 600
    Zone{"IST-5:30", 19800, 19800, 19800, 19800, "2022-11-15 13:42:31", "2022-07-15 13:30:00",
         "1970-01-01 05:30:00", 1668450600, 1668537000},
    // New South Wales, where it is summer in November; 2 Oct 2022 has 23 hours
    Zone{"AEST-10AEDT,M10.1.0,M4.1.0/3", 39600, 39600, 36000, 36000, "2022-11-15 19:12:31",
         "2022-07-15 18:00:00", "1970-01-01 11:00:00", 1664632800, 1664715600},
    // Newfoundland, half an hour and daylight saving; 6 Nov 2022 has 25 hours
    Zone{"NST3:30NDT,M3.2.0,M11.1.0", -12600, -12600, -9000, -9000, "2022-11-15 04:42:31",
         "2022-07-15 05:30:00", "1969-12-31 20:30:00", 1667701800, 1667791800},
    // Nepal, with 45 minutes: "+0545" counts 5 * 3600 + 4 * 600 + 5 * 10
    Zone{"<+0545>-5:45", 20700, 20450, 20700, 20450, "2022-11-15 13:57:31", "2022-07-15 13:45:00",
         "1970-01-01 05:45:00", 1668449700, 1668536100},
    // The Chatham Islands, 45 minutes and daylight saving: "+1345" and "+1245"; 25 Sep 2022 has 23
    // hours
    Zone{"<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45", 49500, 49250, 45900, 45650,
         "2022-11-15 21:57:31", "2022-07-15 20:45:00", "1970-01-01 13:45:00", 1664018100,
         1664100900},
    // Eastern North America; 6 Nov 2022 has 25 hours
    Zone{"EST5EDT,M3.2.0,M11.1.0", -18000, -18000, -14400, -14400, "2022-11-15 03:12:31",
         "2022-07-15 04:00:00", "1969-12-31 19:00:00", 1667707200, 1667797200},
};

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

class VTLDateTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();

    // In every zone
    void aDateTextIsTheSameTimeStampEverywhere_data();
    void aDateTextIsTheSameTimeStampEverywhere();
    void theLocalOffsetIsThatOfTheMoment();
    void theLocalOffsetNowIsOneOfTheTwo();
    void theClockOfTheLogIsLocalWithMilliseconds();
    void aLocalOffsetThatIsWeighedWrongShiftsTheTimeStamp();
    void timeStampsAreShownInLocalTime();
    void theCalendarsDayCountsForTodayAndYesterday();
    void aDateTextWithoutAZoneIsReadAsUtc();
    void eachMonthHasItsName_data();
    void eachMonthHasItsName();

    // Zones
    void aZoneTextIsWeighedDigitByDigit_data();
    void aZoneTextIsWeighedDigitByDigit();
    void anAbbreviationBecomesANumericZone_data();
    void anAbbreviationBecomesANumericZone();

    // Date texts
    void aTextWithTooFewPartsIsTheLocalOffset_data();
    void aTextWithTooFewPartsIsTheLocalOffset();
    void aNullTextIsZero();
    void lenientTextsAreRead_data();
    void lenientTextsAreRead();
    void differentSeparatorsSideBySideHaveAnEmptyPartBetweenThem();
    void aSeparatorAtTheEndMakesTheSixthPart();
    void aBlankInFrontMakesAnEmptyFirstPart();
    void aYearBelowAHundredIsCountedFrom2000_data();
    void aYearBelowAHundredIsCountedFrom2000();
    void theOffsetIsAddedAsItIsGiven();
    void anUnknownMonthIsDecemberOfTheYearBefore();
    void figuresBeyondAllBoundsAreSurvived_data();
    void figuresBeyondAllBoundsAreSurvived();

    // Texts
    void aTimeStampIsFormattedInUtc_data();
    void aTimeStampIsFormattedInUtc();
    void aFormattedTextOf127BytesFitsAndALongerOneIsEmpty();
    void aTimeStampBeyondTheCalendarIsAnEmptyText();
    void whatIsNoTimeStampIsTwoDashes();
    void aDateIsShownInTheLocalesShortStyle();
    void agesAreShown_data();
    void agesAreShown();
    void anAgeOfMoreThanEightDaysIsADate();
    void anAgeIsReckonedFromNow();
    void intervalsHaveNames_data();
    void intervalsHaveNames();

  private:
    const Zone *zone_ = nullptr;
};

void VTLDateTest::initTestCase()
{
    const QByteArray name = qgetenv("TZ");
    const auto *const found = std::find_if(zones.begin(), zones.end(),
                                           [&name](const Zone &zone) { return name == zone.zone; });
    QVERIFY2(found != zones.end(), "TZ has to be one of the zones in this file, as ctest sets it");
    zone_ = found;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
}

void VTLDateTest::aDateTextIsTheSameTimeStampEverywhere_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<bool>("isSummer");
    QTest::newRow("numeric zone") << text("Tue, 15 Nov 2022 08:12:31 +0000") << false;
    QTest::newRow("no weekday, two digits of the year, abbreviation")
        << text("15 Nov 22 08:12:31 GMT") << false;
    QTest::newRow("east") << text("Tue, 15 Nov 2022 09:12:31 +0100") << false;
    QTest::newRow("east, by its abbreviation") << text("Tue, 15 Nov 2022 09:12:31 CET") << false;
    QTest::newRow("west") << text("Tue, 15 Nov 2022 03:12:31 -0500") << false;
    QTest::newRow("west, by its abbreviation") << text("15 Nov 2022 03:12:31 EST") << false;
    QTest::newRow("half an hour") << text("15 Nov 2022 13:42:31 +0530") << false;
    QTest::newRow("another day there") << text("Wed, 16 Nov 2022 00:12:31 +1600") << false;
    QTest::newRow("summer") << text("Fri, 15 Jul 2022 08:00:00 +0000") << true;
    QTest::newRow("summer time") << text("Fri, 15 Jul 2022 10:00:00 CEST") << true;
    QTest::newRow("an abbreviation means its offset, whatever the season")
        << text("Fri, 15 Jul 2022 09:00:00 CET") << true;
}

void VTLDateTest::aDateTextIsTheSameTimeStampEverywhere()
{
    QFETCH(QString, date);
    QFETCH(bool, isSummer);
    const std::int64_t offset = isSummer ? zone_->summerOffset : zone_->autumnOffset;
    QCOMPARE(VTLDate::timestampFromDateString(date, offset), isSummer ? summer : autumn);
}

void VTLDateTest::theLocalOffsetIsThatOfTheMoment()
{
    QCOMPARE(VTLDate::localTimezoneOffsetInSeconds(autumn), zone_->autumnCounted);
    QCOMPARE(VTLDate::localTimezoneOffsetInSeconds(summer), zone_->summerCounted);
}

void VTLDateTest::theLocalOffsetNowIsOneOfTheTwo()
{
    const std::int64_t offset = VTLDate::localTimezoneOffsetInSeconds();
    QVERIFY(offset == zone_->autumnCounted || offset == zone_->summerCounted);
}

void VTLDateTest::theClockOfTheLogIsLocalWithMilliseconds()
{
    using namespace std::chrono;
    const auto at = [](std::int64_t timestamp, int microsecond) {
        return system_clock::time_point(seconds(timestamp) + microseconds(microsecond));
    };
    const QByteArray clock = QByteArray(zone_->autumnText).mid(11);
    QCOMPARE(LocalTime::clock(at(autumn, 0)), clock + ".000");
    QCOMPARE(LocalTime::clock(at(autumn, 7999)), clock + ".007");
    QCOMPARE(LocalTime::clock(at(autumn, 999999)), clock + ".999");
    QCOMPARE(LocalTime::clock(at(summer, 10000)), QByteArray(zone_->summerText).mid(11) + ".010");
}

/// Kept on purpose: with 45 minutes the two are 250 seconds apart.
void VTLDateTest::aLocalOffsetThatIsWeighedWrongShiftsTheTimeStamp()
{
    const std::int64_t read = VTLDate::timestampFromDateString(
        text("Tue, 15 Nov 2022 08:12:31 +0000"), VTLDate::localTimezoneOffsetInSeconds(autumn));
    const bool has45Minutes = QByteArrayView(zone_->zone).contains(":45");
    QCOMPARE(read, has45Minutes ? autumn - 250 : autumn);
}

void VTLDateTest::timeStampsAreShownInLocalTime()
{
    QCOMPARE(VTLDate::unixTimeToDate(autumn, true), text(zone_->autumnText));
    QCOMPARE(VTLDate::unixTimeToDate(autumn, false), text(zone_->autumnText).chopped(3));
    QCOMPARE(VTLDate::unixTimeToDate(summer, true), text(zone_->summerText));
    QCOMPARE(VTLDate::unixTimeToDate(0, true), text(zone_->zeroText));
}

void VTLDateTest::theCalendarsDayCountsForTodayAndYesterday()
{
    const QString today = QStringLiteral("Today");
    const QString yesterday = QStringLiteral("Yesterday");
    const std::int64_t start = zone_->dayStart;
    const std::int64_t end = zone_->dayEnd;
    QCOMPARE(VTLDate::dateStringFromTimestamp(start, false, end - 1), today);
    QCOMPARE(VTLDate::dateStringFromTimestamp(end - 1, false, start), today);
    QCOMPARE(VTLDate::dateStringFromTimestamp(start - 1, false, start), yesterday);
    QCOMPARE(VTLDate::dateStringFromTimestamp(start, false, end), yesterday);
    QCOMPARE(VTLDate::dateStringFromTimestamp(end - 1, false, end), yesterday);
    const QString before = VTLDate::dateStringFromTimestamp(start - 1, false, end);
    QVERIFY2(before.endsWith(QLatin1String("/2022")), qUtf8Printable(before));
    const QString tomorrow = VTLDate::dateStringFromTimestamp(end, false, start);
    QVERIFY2(tomorrow.endsWith(QLatin1String("/2022")), qUtf8Printable(tomorrow));
}

void VTLDateTest::aDateTextWithoutAZoneIsReadAsUtc()
{
    QCOMPARE(VTLDate::timestampFromDateString(text("15 Nov 2022 08:12:31"), zone_->autumnOffset),
             autumn);
}

/// October is read as day 46 below: on each of its days a season begins or ends somewhere.
void VTLDateTest::eachMonthHasItsName_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<int>("dayOfTheYear");
    QTest::addColumn<bool>("isSummer");
    const auto row = [](const char *date, int dayOfTheYear, bool isSummer) {
        QTest::newRow(date) << text(date) << dayOfTheYear << isSummer;
    };
    row("1 Jan", 0, false);
    row("15 Jan", 14, false);
    row("15 Feb", 31 + 14, false);
    row("1 Mar", 31 + 28, false);
    row("15 Apr", 31 + 28 + 31 + 14, true);
    row("15 May", 31 + 28 + 31 + 30 + 14, true);
    row("15 Jun", 31 + 28 + 31 + 30 + 31 + 14, true);
    row("15 Jul", 31 + 28 + 31 + 30 + 31 + 30 + 14, true);
    row("15 Aug", 31 + 28 + 31 + 30 + 31 + 30 + 31 + 14, true);
    row("15 Sep", 31 + 28 + 31 + 30 + 31 + 30 + 31 + 31 + 14, true);
    row("15 Nov", 365 - 31 - 30 + 14, false);
    row("15 Dec", 365 - 31 + 14, false);
    row("31 Dec", 365 - 1, false);
}

void VTLDateTest::eachMonthHasItsName()
{
    QFETCH(QString, date);
    QFETCH(int, dayOfTheYear);
    QFETCH(bool, isSummer);
    constexpr std::int64_t newYear = 1640995200; // 1 Jan 2022 00:00:00 UTC
    const std::int64_t offset = isSummer ? zone_->summerOffset : zone_->autumnOffset;
    QCOMPARE(VTLDate::timestampFromDateString(date + text(" 2022 12:34:56 +0000"), offset),
             newYear + dayOfTheYear * 86400 + 12 * 3600 + 34 * 60 + 56);
}

void VTLDateTest::aZoneTextIsWeighedDigitByDigit_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<std::int64_t>("seconds");
    const auto row = [](const char *zone, std::int64_t seconds) {
        QTest::newRow(*zone == 0 ? "empty" : zone) << text(zone) << seconds;
    };
    row("", 0);
    row("+0000", 0);
    row("-0100", -3600);
    row("0100", 3600);
    row("+0530", 19800);
    row("+0545", 20450);
    row("-0330", -12600);
    row("+1345", 49250);
    row("-1200", -43200);
    row("+9999", 9 * 36000 + 9 * 3600 + 9 * 600 + 90);
    row("1", 36000);
    row("12", 36000 + 2 * 3600);
    row("053", 5 * 3600 + 3 * 600);
    row("053099", 5 * 3600 + 3 * 600);
    row("10100", 3600);              // five characters: the first stands for a sign
    row("+1", -5 * 36000 + 3600);    // "+" is five characters before "0"
    row("+1:00", 36000 + 10 * 3600); // ":" is ten behind it
    row("-1:00", -(36000 + 10 * 3600));
    row("+01:00", -5 * 36000 + 600 + 10 * 10); // six characters: no sign
    row("CET", 3600);
    row("CEST", 7200);
    row("EST", -18000);
    row("GMT", 0);
    row("IST", 21000);  // by way of "+0550"
    row("NST", -13800); // "-0350"
    row("XYZ", 0);
    row("-100", -3 * 36000 + 3600); // four characters: no sign, and "-" is three before "0"
    row("GMT+10", 23 * 36000 + 29 * 3600 + 36 * 600 - 5 * 10); // it too
    row("AB10", 17 * 36000 + 18 * 3600 + 600); // counts as numeric, since it ends with 0
    QTest::newRow("null") << QString() << std::int64_t(0);
    QTest::newRow("beyond Latin") << QString(QChar(0x416)) << std::int64_t(0);
}

void VTLDateTest::aZoneTextIsWeighedDigitByDigit()
{
    QFETCH(QString, zone);
    QFETCH(std::int64_t, seconds);
    QCOMPARE(VTLDate::timezoneToSeconds(zone), seconds);
}

void VTLDateTest::anAbbreviationBecomesANumericZone_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<QString>("numeric");
    const auto row = [](const char *zone, const char *numeric) {
        QTest::newRow(*zone == 0 ? "empty" : zone) << text(zone) << text(numeric);
    };
    // RFC 822
    row("UT", "+0000");
    row("GMT", "+0000");
    row("EST", "-0500");
    row("EDT", "-0400");
    row("CST", "-0600");
    row("CDT", "-0500");
    row("MST", "-0700");
    row("MDT", "-0600");
    row("PST", "-0800");
    row("PDT", "-0700");
    // the rest of the world
    row("UTC", "+0000");
    row("WET", "+0000");
    row("WEST", "+0100");
    row("BST", "+0100");
    row("CET", "+0100");
    row("CEST", "+0200");
    row("EET", "+0200");
    row("EEST", "+0300");
    row("MSK", "+0300");
    row("SAST", "+0200");
    row("EAT", "+0300");
    row("PKT", "+0500");
    row("WIB", "+0700");
    row("HKT", "+0800");
    row("AWST", "+0800");
    row("JST", "+0900");
    row("KST", "+0900");
    row("AEST", "+1000");
    row("AEDT", "+1100");
    row("NZST", "+1200");
    row("NZDT", "+1300");
    row("AKST", "-0900");
    row("HST", "-1000");
    row("SST", "-1100");
    row("AST", "-0400");
    row("BRT", "-0300");
    row("ADT", "-0300");
    row("AKDT", "-0800");
    row("ART", "-0300");
    row("BRST", "-0200");
    row("CAT", "+0200");
    row("CLST", "-0300");
    row("CLT", "-0400");
    row("COT", "-0500");
    row("GST", "+0400");
    row("HDT", "-0900");
    row("ICT", "+0700");
    row("IDT", "+0300");
    row("MEST", "+0200");
    row("MET", "+0100");
    row("MSD", "+0400");
    row("PET", "-0500");
    row("PHT", "+0800");
    row("SGT", "+0800");
    row("TRT", "+0300");
    row("WAT", "+0100");
    row("WIT", "+0900");
    row("WITA", "+0800");
    // hundredths of an hour
    row("IST", "+0550");
    row("IRST", "+0350");
    row("NPT", "+0575");
    row("ACST", "+0950");
    row("ACDT", "+1050");
    row("NST", "-0350");
    row("NDT", "-0250");
    // as they are
    row("+0530", "+0530");
    row("ABC0", "ABC0");
    // exact case, and no other meaning
    row("gmt", "+0000");
    row("cet", "+0000");
    row("Cet", "+0000");
    row("CHST", "+0000");
    row("ChST", "+1000");
    row("CETX", "+0000");
    row("Z", "+0000");
    row("", "+0000");
    row("+0545", "+0000"); // ends with no 0, and is no abbreviation
    QTest::newRow("null") << QString() << QStringLiteral("+0000");
}

void VTLDateTest::anAbbreviationBecomesANumericZone()
{
    QFETCH(QString, zone);
    QFETCH(QString, numeric);
    QCOMPARE(VTLDate::iso8601TimezoneFromString(zone), numeric);
}

void VTLDateTest::aTextWithTooFewPartsIsTheLocalOffset_data()
{
    QTest::addColumn<QString>("date");
    for (const char *date : {"", "15 Nov 2022", "Tue, 15 Nov 2022", "15 Nov 2022 08:12", ",", ", ",
                             "15      Nov      2022", "a:b:c:d:e"})
        QTest::newRow(*date == 0 ? "empty" : date) << text(date);
}

void VTLDateTest::aTextWithTooFewPartsIsTheLocalOffset()
{
    QFETCH(QString, date);
    QVERIFY(!date.isNull());
    QCOMPARE(VTLDate::timestampFromDateString(date, 7200), std::int64_t(7200));
    QCOMPARE(VTLDate::timestampFromDateString(date, -1), std::int64_t(-1));
}

void VTLDateTest::aNullTextIsZero()
{
    QCOMPARE(VTLDate::timestampFromDateString(QString(), 7200), std::int64_t(0));
}

void VTLDateTest::lenientTextsAreRead_data()
{
    QTest::addColumn<QString>("date");
    QTest::newRow("runs of blanks") << text("Tue,   15  Nov   2022 08:12:31     +0000");
    QTest::newRow("no blank behind the comma") << text("Tue,15 Nov 2022 08:12:31 +0000");
    QTest::newRow("an empty weekday") << text(", 15 Nov 2022 08:12:31 +0000");
    QTest::newRow("blanks instead of colons") << text("15 Nov 2022 08 12 31 +0000");
    QTest::newRow("colons instead of blanks") << text("15:Nov:2022:08:12:31:+0000");
    QTest::newRow("letters behind the digits") << text("15x Nov 2022nd 08h:12m:31.5s +0000");
    QTest::newRow("a sign") << text("+15 Nov +2022 +08:12:31 +0000");
    QTest::newRow("a blank at the end: an empty zone") << text("15 Nov 2022 08:12:31 ");
    QTest::newRow("more behind the zone") << text("15 Nov 2022 08:12:31 +0000 (GMT)");
    QTest::newRow("an unknown zone") << text("15 Nov 2022 08:12:31 XYZ");
    QTest::newRow("more commas") << text("Tue, 15 Nov 2022 08:12:31 +0000 , GMT, later");
    QTest::newRow("a comma behind all else") << text("15 Nov 2022 08:12:31 +0000 (GMT),");
    QTest::newRow("a comma counts wherever it is") << text("12 Dec 2012 01:02:03 -0500 is past, 15 "
                                                           "Nov 2022 08:12:31 +0000");
    QTest::newRow("second 91") << text("15 Nov 2022 08:11:91 +0000");
    QTest::newRow("day 46 of October") << text("46 Oct 2022 08:12:31 +0000");
    QTest::newRow("a year below 100, in three digits") << text("15 Nov 022 08:12:31 +0000");
    QTest::newRow("only blanks behind a comma, which then parts nothing")
        << text("15 Nov 2022 08:12:31 +0000 ,  ");
    QTest::newRow("an empty zone between two separators") << text("15 Nov 2022 08:12:31 :EST");
    QTest::newRow("beyond ASCII") << text("Tu\xE9, 15 Nov 2022 08:12:31 +0000");
}

void VTLDateTest::lenientTextsAreRead()
{
    QFETCH(QString, date);
    QCOMPARE(VTLDate::timestampFromDateString(date, zone_->autumnOffset), autumn);
}

/// The second is empty, so 0, and "31" is taken for the zone: 3 * 36000 + 1 * 3600.
void VTLDateTest::differentSeparatorsSideBySideHaveAnEmptyPartBetweenThem()
{
    for (const char *date : {"15 Nov 2022 08:12: 31 +0000", "15 Nov 2022 08:12 :31 +0000",
                             "15 Nov 2022 08:12::31 +0000"})
        QCOMPARE(VTLDate::timestampFromDateString(text(date), zone_->autumnOffset),
                 autumn - 31 - 111600);
}

/// Enough for a date, with second 0.
void VTLDateTest::aSeparatorAtTheEndMakesTheSixthPart()
{
    for (const char *date : {"15 Nov 2022 08:12:", "15 Nov 2022 08:12 ", "15 Nov 2022 08:12   "})
        QCOMPARE(VTLDate::timestampFromDateString(text(date), zone_->autumnOffset), autumn - 31);
}

/// Day 0 of an unknown month of 2000, so 30 Nov 1999, and 2022 hours, 8 minutes and 12 seconds: 22
/// Feb 2000 06:08:12. "31" is taken for the zone.
void VTLDateTest::aBlankInFrontMakesAnEmptyFirstPart()
{
    constexpr std::int64_t february = 951199692;
    for (const char *date : {" 15 Nov 2022 08:12:31", "   15 Nov 2022 08:12:31 +0000"})
        QCOMPARE(VTLDate::timestampFromDateString(text(date), zone_->autumnOffset),
                 february - 111600);
}

void VTLDateTest::aYearBelowAHundredIsCountedFrom2000_data()
{
    QTest::addColumn<QString>("year");
    QTest::addColumn<std::int64_t>("newYear");
    // 1 Jan of the year, 00:00:00 UTC: 365 days a year and the leap days between it and 1970
    const auto row = [](const char *year, std::int64_t years, std::int64_t leapDays) {
        QTest::newRow(*year == 0 ? "empty" : year)
            << text(year) << (years * 365 + leapDays) * std::int64_t(86400);
    };
    row("0", 30, 7);    // 2000; 1972 to 1996
    row("00", 30, 7);   // 2000
    row("", 30, 7);     // 2000
    row("9", 39, 10);   // 2009; 2000, 2004, 2008 too
    row("99", 129, 32); // 2099; up to 2096
    row("-1", 29, 7);   // 1999
    // itself; 468 years that 4 divides, but for 15 centuries that 400 does not
    row("100", -1870, -(468 - 15));
    row("1999", 29, 7);
    row("2100", 130, 32);
}

void VTLDateTest::aYearBelowAHundredIsCountedFrom2000()
{
    QFETCH(QString, year);
    QFETCH(std::int64_t, newYear);
    const QString date = QStringLiteral("1:Jan:%1:00:00:00:+0000").arg(year);
    QCOMPARE(VTLDate::timestampFromDateString(date, zone_->autumnOffset), newYear);
}

/// It need not be the local one: what is added is all that is done with it.
void VTLDateTest::theOffsetIsAddedAsItIsGiven()
{
    const QString date = text("Tue, 15 Nov 2022 08:12:31 +0000");
    for (const std::int64_t offset : {std::int64_t(0), std::int64_t(-1), std::int64_t(1'000'000)})
        QCOMPARE(VTLDate::timestampFromDateString(date, zone_->autumnOffset + offset),
                 autumn + offset);
}

void VTLDateTest::anUnknownMonthIsDecemberOfTheYearBefore()
{
    // 15 Dec 2021 08:12:31 UTC; the offset is the one of that date
    constexpr std::int64_t december = 1639555951;
    for (const char *month : {"nov", "NOV", "November", "", "13", "xyz"}) {
        const QString date = QStringLiteral("15:%1:2022:08:12:31:+0000").arg(text(month));
        QCOMPARE(VTLDate::timestampFromDateString(date, zone_->autumnOffset), december);
    }
}

void VTLDateTest::figuresBeyondAllBoundsAreSurvived_data()
{
    QTest::addColumn<QString>("date");
    QTest::addColumn<std::int64_t>("read");
    const QString nines(40, QLatin1Char('9'));
    // 15 Nov of the largest year of 32 bits, and of the smallest plus 2000
    QTest::newRow("year") << QStringLiteral("15 Nov %1 08:12:31 +0000").arg(nines)
                          << std::int64_t(67767976229501551);
    QTest::newRow("year before all") << QStringLiteral("15 Nov -%1 08:12:31 +0000").arg(nines)
                                     << std::int64_t(-67768037426476049);
    // what the system cannot reckon counts as -1, less the offset, which is added
    constexpr std::int64_t nineNines = 9 * 36000 + 9 * 3600 + 9 * 600 + 90;
    QTest::newRow("all") << QStringLiteral("%1 Nov %1 %1:%1:%1 +9999").arg(nines)
                         << zone_->autumnOffset - nineNines - 1;
    QTest::newRow("all negative") << QStringLiteral("-%1 Nov -%1 -%1:-%1:-%1 -9999").arg(nines)
                                  << zone_->autumnOffset + nineNines - 1;
}

void VTLDateTest::figuresBeyondAllBoundsAreSurvived()
{
    QFETCH(QString, date);
    QFETCH(std::int64_t, read);
    QCOMPARE(VTLDate::timestampFromDateString(date, zone_->autumnOffset), read);
    // The sum wraps round rather than being undefined; the sanitizers look on.
    QCOMPARE(VTLDate::timestampFromDateString(QStringLiteral("15 Nov 2022 08:12:31"), latest),
             earliest + (autumn - zone_->autumnOffset - 1));
}

void VTLDateTest::aTimeStampIsFormattedInUtc_data()
{
    QTest::addColumn<std::int64_t>("timestamp");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("formatted");
    const auto row = [](std::int64_t timestamp, const char *format, const char *formatted) {
        QTest::addRow("%s of %lld", format, static_cast<long long>(timestamp))
            << timestamp << text(format) << text(formatted);
    };
    row(autumn, "%a, %d %b %Y %H:%M:%S %z", "Tue, 15 Nov 2022 08:12:31 +0000");
    row(autumn, "%A %B %p", "Tuesday November AM");
    row(autumn, "%Z", "GMT");
    row(autumn, "", "");
    row(autumn, "100%%", "100%");
    row(0, "%Y-%m-%d %H:%M:%S", "1970-01-01 00:00:00");
    row(-1, "%Y-%m-%d %H:%M:%S", "1969-12-31 23:59:59");
    row(253402300800, "%Y-%m-%d", "10000-01-01");
}

void VTLDateTest::aTimeStampIsFormattedInUtc()
{
    QFETCH(std::int64_t, timestamp);
    QFETCH(QString, format);
    QFETCH(QString, formatted);
    QCOMPARE(VTLDate::convertTimestamp(timestamp, format), formatted);
}

void VTLDateTest::aFormattedTextOf127BytesFitsAndALongerOneIsEmpty()
{
    const QString longest(127, QLatin1Char('x'));
    QCOMPARE(VTLDate::convertTimestamp(autumn, longest), longest);
    QCOMPARE(VTLDate::convertTimestamp(autumn, longest + QLatin1Char('x')), QString());
    QCOMPARE(VTLDate::convertTimestamp(autumn, text("%1000000000d")), QString());
    // Bytes count, not characters.
    const QString wide(64, QChar(0xE9));
    QCOMPARE(VTLDate::convertTimestamp(autumn, wide), QString());
    QCOMPARE(VTLDate::convertTimestamp(autumn, wide.chopped(1)), wide.chopped(1));
}

void VTLDateTest::aTimeStampBeyondTheCalendarIsAnEmptyText()
{
    for (const std::int64_t timestamp : {latest, earliest}) {
        QCOMPARE(VTLDate::convertTimestamp(timestamp, text("%Y")), QString());
        QCOMPARE(VTLDate::unixTimeToDate(timestamp, true), QString());
    }
    QCOMPARE(VTLDate::dateStringFromTimestamp(latest, true, autumn), QString());
    QCOMPARE(VTLDate::localTimezoneOffsetInSeconds(latest), std::int64_t(0));
}

void VTLDateTest::whatIsNoTimeStampIsTwoDashes()
{
    for (const std::int64_t timestamp : {std::int64_t(0), std::int64_t(-1), earliest}) {
        QCOMPARE(VTLDate::dateStringFromTimestamp(timestamp, true, autumn), text("--"));
        QCOMPARE(VTLDate::dateStringShortStyleFromTimestamp(timestamp, autumn), text("--"));
    }
    QVERIFY(VTLDate::dateStringFromTimestamp(1, true, autumn) != text("--"));
}

void VTLDateTest::aDateIsShownInTheLocalesShortStyle()
{
    constexpr std::int64_t later = autumn + 10 * 86400;
    const QString clock = text(zone_->autumnText).mid(11, 5);
    QCOMPARE(VTLDate::dateStringFromTimestamp(autumn, false, later), text("15/11/2022"));
    QCOMPARE(VTLDate::dateStringFromTimestamp(autumn, true, later), text("15/11/2022 ") + clock);
    QCOMPARE(VTLDate::dateStringFromTimestamp(autumn, true, autumn), text("Today ") + clock);
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(VTLDate::dateStringFromTimestamp(autumn, false, later), text("15.11.22"));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
}

void VTLDateTest::agesAreShown_data()
{
    QTest::addColumn<std::int64_t>("age");
    QTest::addColumn<QString>("shown");
    const auto row = [](std::int64_t age, const char *shown) {
        QTest::addRow("%lld seconds", static_cast<long long>(age)) << age << text(shown);
    };
    row(-1000000, "0 seconds");
    row(-1, "0 seconds");
    row(0, "0 seconds");
    row(1, "1 second");
    row(2, "2 seconds");
    row(59, "59 seconds");
    row(60, "1 minute");
    row(119, "1 minute");
    row(120, "2 minutes");
    row(3599, "59 minutes");
    row(3600, "1 hour");
    row(7199, "1 hour");
    row(7200, "2 hours");
    row(86399, "23 hours");
    row(86400, "1 day");
    row(172799, "1 day");
    row(172800, "2 days");
    row(691199, "7 days");
    row(691200, "8 days");
}

void VTLDateTest::agesAreShown()
{
    QFETCH(std::int64_t, age);
    QFETCH(QString, shown);
    QCOMPARE(VTLDate::dateStringShortStyleFromTimestamp(autumn - age, autumn), shown);
}

void VTLDateTest::anAgeOfMoreThanEightDaysIsADate()
{
    QCOMPARE(VTLDate::dateStringShortStyleFromTimestamp(autumn, autumn + 691201),
             text("15/11/2022"));
}

void VTLDateTest::anAgeIsReckonedFromNow()
{
    // 119 and 120 would be at the mercy of the clock.
    const std::int64_t now = VTLDate::currentTimestamp();
    QCOMPARE(VTLDate::dateStringShortStyleFromTimestamp(now - 90), text("1 minute"));
    QCOMPARE(VTLDate::dateStringFromTimestamp(now - 20 * 86400, false),
             VTLDate::dateStringFromTimestamp(now - 20 * 86400, false, now));
}

void VTLDateTest::intervalsHaveNames_data()
{
    QTest::addColumn<std::int64_t>("minutes");
    QTest::addColumn<QString>("name");
    const auto row = [](std::int64_t minutes, const char *name) {
        QTest::addRow("%lld minutes", static_cast<long long>(minutes)) << minutes << text(name);
    };
    row(earliest, "Manual");
    row(-1, "Manual");
    row(0, "Manual");
    row(1, "1 minute");
    row(2, "2 minutes");
    row(59, "59 minutes");
    row(60, "1 hour");
    row(119, "1 hour");
    row(120, "2 hours");
    row(1439, "23 hours");
    row(1440, "1 day");
    row(2880, "2 days");
    row(10079, "6 days");
    row(10080, "1 week");
    row(20160, "2 weeks");
    row(40319, "3 weeks");
    row(40320, "--");
    row(latest, "--");
}

void VTLDateTest::intervalsHaveNames()
{
    QFETCH(std::int64_t, minutes);
    QFETCH(QString, name);
    QCOMPARE(VTLDate::stringFromMinutes(minutes), name);
}

QTEST_GUILESS_MAIN(VTLDateTest)
#include "VTLDateTest.moc"
