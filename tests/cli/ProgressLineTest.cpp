#include "cli/ProgressLine.h"

#include "platform/StandardStreams.h"

#include <QTest>

#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

ProgressLine::State half(const QString &file)
{
    return {0.5, 1500000, 90, file};
}

} // namespace

class ProgressLineTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void showsBarPercentThroughputTimeAndFile()
    {
        QCOMPARE(
            ProgressLine::text(half(QStringLiteral("notes.txt")), 120),
            QStringLiteral("[##########----------] 50 %  1.50 MB/s  About 2 minute  notes.txt"));
    }

    void theBarFillsFromTheLeft_data()
    {
        QTest::addColumn<double>("fraction");
        QTest::addColumn<QString>("start");
        QTest::newRow("nothing") << 0.0 << QStringLiteral("[--------------------] 0 %  ");
        QTest::newRow("just below a step")
            << 0.0499 << QStringLiteral("[--------------------] 4 %  ");
        QTest::newRow("one step") << 0.05 << QStringLiteral("[#-------------------] 5 %  ");
        QTest::newRow("not quite all") << 0.9999 << QStringLiteral("[###################-] 99 %  ");
        QTest::newRow("all") << 1.0 << QStringLiteral("[####################] 100 %  ");
        QTest::newRow("more than all") << 1.5 << QStringLiteral("[####################] 100 %  ");
        QTest::newRow("less than nothing")
            << -0.5 << QStringLiteral("[--------------------] 0 %  ");
        QTest::newRow("infinite") << infinity << QStringLiteral("[####################] 100 %  ");
    }
    void theBarFillsFromTheLeft()
    {
        QFETCH(double, fraction);
        QFETCH(QString, start);

        const QString line = ProgressLine::text({fraction, 0, 0, {}}, 120);

        QVERIFY2(line.startsWith(start), qPrintable(line));
    }

    void figuresThatAreNoneAreShownAllTheSame_data()
    {
        QTest::addColumn<double>("bytesPerSecond");
        QTest::addColumn<double>("secondsRemaining");
        QTest::addColumn<QString>("end");
        QTest::newRow("nothing yet") << 0.0 << infinity << QStringLiteral("  0 Bytes/s  --  f");
        QTest::newRow("nothing of nothing")
            << 0.0 << notANumber << QStringLiteral("  0 Bytes/s  --  f");
        QTest::newRow("infinitely fast") << infinity << 0.0 << QStringLiteral("  0 Bytes/s  --  f");
        QTest::newRow("not a number at all")
            << notANumber << -infinity << QStringLiteral("  0 Bytes/s  --  f");
    }
    void figuresThatAreNoneAreShownAllTheSame()
    {
        QFETCH(double, bytesPerSecond);
        QFETCH(double, secondsRemaining);
        QFETCH(QString, end);

        const QString line =
            ProgressLine::text({0, bytesPerSecond, secondsRemaining, QStringLiteral("f")}, 120);

        QCOMPARE(line, QStringLiteral("[--------------------] 0 %") + end);
    }

    void theFilesNameIsCutFirst()
    {
        const QString whole = ProgressLine::text(half(QStringLiteral("abcdefghij")), 200);

        QCOMPARE(ProgressLine::text(half(QStringLiteral("abcdefghij")), int(whole.size()) + 1),
                 whole);
        QCOMPARE(ProgressLine::text(half(QStringLiteral("abcdefghij")), int(whole.size())),
                 whole.chopped(1));
    }

    void noWidthIsEverExceeded_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("narrow letters") << QString(300, QLatin1Char('x'));
        QTest::newRow("wide characters") << QString(300, QChar(0x6F22));
        QTest::newRow("wide after narrow") << QStringLiteral("x") + QString(300, QChar(0x6F22));
        QTest::newRow("combining marks")
            << QString(QStringLiteral("e") + QChar(0x0301)).repeated(300);
        QTest::newRow("outside the basic plane") << QStringLiteral("\U0001F525").repeated(300);
    }
    void noWidthIsEverExceeded()
    {
        QFETCH(QString, file);

        for (int columns = 0; columns <= 200; ++columns) {
            const QString line = ProgressLine::text(half(file), columns);
            const int width = StandardStreams::columnsOf(line);
            QVERIFY2(width <= std::max(columns - 1, 0), qPrintable(line));
            // At most the half of a wide character stays free.
            QVERIFY2(width >= columns - 2, qPrintable(line));
            QVERIFY(line.isEmpty() || !line.back().isHighSurrogate());
        }
    }

    void aWideCharacterTakesTwoColumns()
    {
        const QString figures = ProgressLine::text(half({}), 200);
        const QString wide(2, QChar(0x6F22));

        QCOMPARE(ProgressLine::text(half(wide), int(figures.size()) + 5), figures + wide);
        QCOMPARE(ProgressLine::text(half(wide), int(figures.size()) + 4), figures + wide.first(1));
        QCOMPARE(ProgressLine::text(half(wide), int(figures.size()) + 3), figures + wide.first(1));
        QCOMPARE(ProgressLine::text(half(wide), int(figures.size()) + 2), figures);
    }

    void theFractionGoesByBytes()
    {
        QCOMPARE(ProgressLine::fraction(25, 100, 3, 4), 0.25);
        QCOMPARE(ProgressLine::fraction(0, 100, 3, 4), 0.0);
    }

    void withoutBytesTheFractionGoesByFiles()
    {
        QCOMPARE(ProgressLine::fraction(0, 0, 3, 4), 0.75);
        QCOMPARE(ProgressLine::fraction(0, -2, 1, 4), 0.25);
    }

    void theFractionStaysBetweenNothingAndAll_data()
    {
        QTest::addColumn<double>("bytesWritten");
        QTest::addColumn<double>("totalBytes");
        QTest::addColumn<double>("filesDone");
        QTest::addColumn<double>("totalFiles");
        QTest::addColumn<double>("expected");
        QTest::newRow("nothing at all") << 0.0 << 0.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("a little too much") << 100.0001 << 100.0 << 0.0 << 0.0 << 1.0;
        QTest::newRow("below zero") << -1.0 << 100.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("not a number written") << notANumber << 100.0 << 0.0 << 0.0 << 0.0;
        QTest::newRow("not a number in all") << 1.0 << notANumber << 0.0 << 0.0 << 0.0;
        QTest::newRow("infinite parts") << infinity << infinity << 0.0 << 0.0 << 0.0;
        QTest::newRow("infinitely much in all") << 1.0 << infinity << 0.0 << 0.0 << 0.0;
    }
    void theFractionStaysBetweenNothingAndAll()
    {
        QFETCH(double, bytesWritten);
        QFETCH(double, totalBytes);
        QFETCH(double, filesDone);
        QFETCH(double, totalFiles);
        QFETCH(double, expected);

        QCOMPARE(ProgressLine::fraction(bytesWritten, totalBytes, filesDone, totalFiles), expected);
    }
};

QTEST_GUILESS_MAIN(ProgressLineTest)
#include "ProgressLineTest.moc"
