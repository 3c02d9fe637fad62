#include "support/FormatExpander.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <stdexcept>

namespace {

template <typename... Arguments> QString expanded(const char *format, const Arguments &...arguments)
{
    const FormatExpander::Expansion expansion = FormatExpander::expand(
        QString::fromUtf8(format), std::vector<FormatArgument>{FormatArgument(arguments)...});
    return expansion.problem.isEmpty() ? expansion.text : QStringLiteral("! ") + expansion.problem;
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

enum Plain { Third = 3 };
enum class Scoped : std::uint8_t { Last = 255 };

} // namespace

class FormatExpanderTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void whatIsNoDirectiveStands()
    {
        QCOMPARE(expanded(""), QString());
        QCOMPARE(expanded("plain, \xc3\xa9\xe6\xbc\xa2"), text("plain, \xc3\xa9\xe6\xbc\xa2"));
        QCOMPARE(expanded("100%% of it"), text("100% of it"));
        QCOMPARE(expanded("%%%%"), text("%%"));
        QCOMPARE(expanded("more than is asked for", 1, 2), text("more than is asked for"));
    }

    void wholeNumbersAreWritten()
    {
        QCOMPARE(expanded("%d %i", 7, -7), text("7 -7"));
        QCOMPARE(expanded("%ld", std::numeric_limits<std::int64_t>::min()),
                 text("-9223372036854775808"));
        QCOMPARE(expanded("%lu", std::numeric_limits<std::uint64_t>::max()),
                 text("18446744073709551615"));
        QCOMPARE(expanded("%d", std::numeric_limits<std::uint64_t>::max()),
                 text("18446744073709551615"));
        QCOMPARE(expanded("%hhd %lld %zu %jd", 300, 300, 300, 300), text("300 300 300 300"));
        QCOMPARE(expanded("%5d|%-5d|%05d|%+d|% d", 42, 42, 42, 42, 42),
                 text("   42|42   |00042|+42| 42"));
        QCOMPARE(expanded("%.4d", 42), text("0042"));
        QCOMPARE(expanded("%x %X %o %#x", 255, 255, 8, 255), text("ff FF 10 0xff"));
        QCOMPARE(expanded("%d %d %d", true, Third, Scoped::Last), text("1 3 255"));
    }

    /// As wide as it was given.
    void aNegativeNumberIsUnsignedInItsOwnWidth()
    {
        QCOMPARE(expanded("%u", -1), text("4294967295"));
        QCOMPARE(expanded("%x", std::int8_t(-1)), text("ff"));
        QCOMPARE(expanded("%u", std::int64_t(-1)), text("18446744073709551615"));
    }

    void fractionsAreWrittenInTheCLocale()
    {
        QCOMPARE(expanded("%f", 1.5), text("1.500000"));
        QCOMPARE(expanded("%.2f|%8.3f|%-8.1f|%+.0f", 2.345, 2.345, 2.345, 2.0),
                 text("2.35|   2.345|2.3     |+2"));
        QCOMPARE(expanded("%.0f bytes", 1e15), text("1000000000000000 bytes"));
        QCOMPARE(expanded("%e %g", 12345.0, 0.5), text("1.234500e+04 0.5"));
        QCOMPARE(expanded("%.1f", 3), text("3.0"));
        QCOMPARE(expanded("%.2f %.0f %.0f", 1.125, 0.5, 1.5), text("1.12 0 2")); // ties
        QCOMPARE(expanded("%08.2f|%-8.2f|% .1f|%+08.1f", -2.5, -2.5, 2.5, 2.5),
                 text("-0002.50|-2.50   | 2.5|+00002.5"));
        QCOMPARE(expanded("%E %G %F", 12345.0, 1e-10, -0.0), text("1.234500E+04 1E-10 -0.000000"));
        QCOMPARE(expanded("%08f", -std::numeric_limits<double>::infinity()), text("    -inf"));
        QCOMPARE(expanded("%.4096f", std::numeric_limits<double>::max()).size(), 309 + 1 + 4096);
        QCOMPARE(expanded("%f", std::numeric_limits<double>::infinity()), text("inf"));
    }

    void textsAreWritten()
    {
        QCOMPARE(expanded("%@ %s", text("one"), "two"), text("one two"));
        QCOMPARE(expanded("%s", QByteArray("bytes\0hidden", 12)), text("bytes"));
        QCOMPARE(expanded("[%-7s] [%7s] [%.2s]", "[INFO]", "[INFO]", "[INFO]"),
                 text("[[INFO] ] [ [INFO]] [[I]"));
        QCOMPARE(expanded("%c%c", 'V', 0x416), text("V\xd0\x96"));
        QCOMPARE(expanded("%@", text("100% %d %@")), text("100% %d %@"));
    }

    void anyObjectHasItsWords()
    {
        QCOMPARE(expanded("%@ %@ %@ %@", 7, 2.5, true, nullptr), text("7 2.5 true "));
        QCOMPARE(expanded("%@", std::runtime_error("no reason")), text("no reason"));
        const LoggedError cause{text("Disk on fire"), nullptr};
        QCOMPARE(expanded("%@", LoggedError{text("Cannot save"),
                                            std::make_shared<const LoggedError>(cause)}),
                 text("Disk on fire"));
    }

    void fieldsMayBeArguments()
    {
        QCOMPARE(expanded("%*d|%-*d|%.*f", 4, 7, 3, 7, 1, 2.25), text("   7|7  |2.2"));
        QCOMPARE(expanded("%*d|", -4, 7), text("7   |"));
        QCOMPARE(expanded("%.*f", -1, 2.25), text("2.250000"));
    }

    void argumentsMayBeNumbered()
    {
        QCOMPARE(expanded("%2$@ %1$@", "one", "two"), text("two one"));
        QCOMPARE(expanded("%2$05d", "one", 42), text("00042"));
    }

    void whatCannotBeExpandedIsSaid_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char *format, const char *problem) {
            QTest::newRow(format) << text(format) << text(problem);
        };
        row("%@ %@ %@", "an argument is missing");
        row("%3$@", "an argument is missing");
        row("%*f %d", "an argument is missing");
        row("50% sure", "an argument is no text"); // "% s"
        row("%s", "an argument is no text");
        row("%f %s", "an argument is no text");
        row("%d %d", "an argument is no whole number");
        row("%d %x", "an argument is no whole number");
        row("%d %c", "an argument is no character");
        row("%d %*d", "a width is no number");
        row("%5000d", "a field is too wide");
        row("%99999999999999999999d", "a field is too wide");
        row("%.5000f", "a field is too wide");
        row("%", "a directive is not known");
        row("half %5", "a directive is not known");
        row("%l", "a directive is not known");
        row("%y", "a directive is not known");
        row("%n", "a directive is not known");
        row("%\xc3\xa9", "a directive is not known");
    }
    void whatCannotBeExpandedIsSaid()
    {
        QFETCH(QString, format);
        QFETCH(QString, problem);
        const FormatExpander::Expansion expansion =
            FormatExpander::expand(format, {FormatArgument(7), FormatArgument(2.5)});
        QCOMPARE(expansion.problem, problem + QStringLiteral(": \"") + format + QLatin1Char('"'));
        QCOMPARE(expansion.text, QString());
    }

    void aNumberIsNoTextAndATextNoNumber()
    {
        QVERIFY(expanded("%d", "7").startsWith(QLatin1Char('!')));
        QVERIFY(expanded("%d", 7.0).startsWith(QLatin1Char('!')));
        QVERIFY(expanded("%f", "7").startsWith(QLatin1Char('!')));
        QVERIFY(expanded("%@", "7") == text("7"));
    }
};

QTEST_GUILESS_MAIN(FormatExpanderTest)
#include "FormatExpanderTest.moc"
