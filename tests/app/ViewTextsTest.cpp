#include "app/ViewTexts.h"

#include <QLocale>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double undefined = std::numeric_limits<double>::quiet_NaN();
constexpr double huge = std::numeric_limits<double>::max();

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

class ViewTextsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void countsAreGroupedAndInTheSingularForOne_data();
    void countsAreGroupedAndInTheSingularForOne();
    void theLocaleChangesNothing();
    void sizesAndWorkAreInWords_data();
    void sizesAndWorkAreInWords();
    void passesAreCounted();
    void thePercentageIsCut_data();
    void thePercentageIsCut();
    void theAmountNamesBothSizes();
    void theTimeRemainingIsInWords_data();
    void theTimeRemainingIsInWords();
    void theThroughputIsPerSecond_data();
    void theThroughputIsPerSecond();
    void theTimeElapsedIsInWords();
    void whatIsWipedIsANumberOrInALargeRunAShare_data();
    void whatIsWipedIsANumberOrInALargeRunAShare();
    void thePassFollowsTheCredit_data();
    void thePassFollowsTheCredit();
    void failuresComeFromTheResultText();
    void theEndIsToldInOneSentence();
    void aLogThatIsNotCompleteIsSaidWithItsReason();
    void theDropSaysHowManyComeAndJoin();
    void theDropViewNamesTheMethod();
};

void ViewTextsTest::countsAreGroupedAndInTheSingularForOne_data()
{
    QTest::addColumn<qint64>("count");
    QTest::addColumn<QString>("files");
    QTest::addColumn<QString>("folders");
    QTest::newRow("none") << qint64(0) << text("0 files") << text("No folders");
    QTest::newRow("one") << qint64(1) << text("1 file")
                         << text("1 folder, removed once it is empty");
    QTest::newRow("some") << qint64(248) << text("248 files")
                          << text("248 folders, removed once they are empty");
    QTest::newRow("a thousand") << qint64(1000) << text("1,000 files")
                                << text("1,000 folders, removed once they are empty");
    QTest::newRow("a million") << qint64(1'000'000) << text("1,000,000 files")
                               << text("1,000,000 folders, removed once they are empty");
}

void ViewTextsTest::countsAreGroupedAndInTheSingularForOne()
{
    QFETCH(qint64, count);
    QTEST(ViewTexts::files(count), "files");
    QTEST(ViewTexts::foldersToRemove(count), "folders");
}

void ViewTextsTest::theLocaleChangesNothing()
{
    QLocale::setDefault(QLocale(QLocale::German));
    const QString inGerman = ViewTexts::files(1'000'000) + ViewTexts::size(1.5e6);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(inGerman, text("1,000,000 files1.50 MB"));
}

void ViewTextsTest::sizesAndWorkAreInWords_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<qint64>("passes");
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("work");
    QTest::newRow("three passes") << 18.42e9 << qint64(3) << text("18.42 GB")
                                  << text("55.26 GB to write in 3 passes");
    QTest::newRow("35 passes") << 18.42e9 << qint64(35) << text("18.42 GB")
                               << text("644.70 GB to write in 35 passes");
    QTest::newRow("one pass") << 12.0 << qint64(1) << text("12 Bytes")
                              << text("12 Bytes to write in 1 pass");
    QTest::newRow("nothing") << 0.0 << qint64(3) << text("0 Bytes") << text("Nothing to write");
    QTest::newRow("a method that does nothing")
        << 12.0 << qint64(0) << text("12 Bytes") << text("Nothing to write");
    QTest::newRow("sizes that could not be read")
        << -2.0 << qint64(3) << text("0 Bytes") << text("Nothing to write");
    QTest::newRow("no number") << undefined << qint64(3) << text("0 Bytes")
                               << text("Nothing to write");
    QTest::newRow("beyond all bounds")
        << infinite << qint64(3) << text("0 Bytes") << text("Nothing to write");
    QTest::newRow("huge") << huge << qint64(3) << text("0 Bytes") << text("Nothing to write");
}

void ViewTextsTest::sizesAndWorkAreInWords()
{
    QFETCH(double, bytes);
    QFETCH(qint64, passes);
    QTEST(ViewTexts::size(bytes), "size");
    QTEST(ViewTexts::work(bytes, passes), "work");
}

void ViewTextsTest::passesAreCounted()
{
    QCOMPARE(ViewTexts::passes(1), text("1 pass"));
    QCOMPARE(ViewTexts::passes(3), text("3 passes"));
    QCOMPARE(ViewTexts::passes(0), text("0 passes"));
}

void ViewTextsTest::thePercentageIsCut_data()
{
    QTest::addColumn<double>("done");
    QTest::addColumn<double>("total");
    QTest::addColumn<QString>("percent");
    QTest::newRow("nothing yet") << 0.0 << 100.0 << text("0 %");
    QTest::newRow("some") << 7.58 << 18.42 << text("41 %");
    QTest::newRow("a whole percentage stays whole") << 29.0 << 100.0 << text("29 %");
    QTest::newRow("a hair below the end") << 999'999.0 << 1'000'000.0 << text("99 %");
    QTest::newRow("the end") << 10.0 << 10.0 << text("100 %");
    QTest::newRow("beyond the end") << 11.0 << 10.0 << text("100 %");
    QTest::newRow("an empty total") << 0.0 << 0.0 << text("0 %");
    QTest::newRow("something of nothing") << 5.0 << 0.0 << text("0 %");
    QTest::newRow("a total of sizes that could not be read") << 5.0 << -3.0 << text("0 %");
    QTest::newRow("less than nothing") << -5.0 << 10.0 << text("0 %");
    QTest::newRow("no number") << undefined << 10.0 << text("0 %");
    QTest::newRow("of no number") << 5.0 << undefined << text("0 %");
    QTest::newRow("beyond all bounds") << infinite << 10.0 << text("100 %");
    QTest::newRow("of a total beyond all bounds") << 5.0 << infinite << text("0 %");
    QTest::newRow("half of the largest number") << huge / 2 << huge << text("50 %");
}

void ViewTextsTest::thePercentageIsCut()
{
    QFETCH(double, done);
    QFETCH(double, total);
    QTEST(ViewTexts::percent(done, total), "percent");
}

void ViewTextsTest::theAmountNamesBothSizes()
{
    QCOMPARE(ViewTexts::amount(7.58e9, 18.42e9), text("7.58 GB of 18.42 GB"));
    QCOMPARE(ViewTexts::amount(1.21e6, 4.02e12), text("1.21 MB of 4.02 TB"));
    QCOMPARE(ViewTexts::amount(undefined, -1), text("0 Bytes of 0 Bytes"));
}

void ViewTextsTest::theTimeRemainingIsInWords_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("words");
    QTest::newRow("minutes") << 245.0 << text("About 4 minutes");
    QTest::newRow("hours") << 7300.0 << text("About 2 hours");
    QTest::newRow("none yet") << infinite << text("--");
    QTest::newRow("undefined") << undefined << text("--");
    QTest::newRow("nothing remains") << 0.0 << text("--");
    QTest::newRow("huge") << huge << text("--");
}

void ViewTextsTest::theTimeRemainingIsInWords()
{
    QFETCH(double, seconds);
    QTEST(ViewTexts::timeRemaining(seconds), "words");
}

void ViewTextsTest::theThroughputIsPerSecond_data()
{
    QTest::addColumn<double>("bytesPerSecond");
    QTest::addColumn<QString>("words");
    QTest::newRow("none yet") << 0.0 << text("0 Bytes/s");
    QTest::newRow("megabytes") << 42.18e6 << text("42.18 MB/s");
    QTest::newRow("undefined") << undefined << text("0 Bytes/s");
    QTest::newRow("infinite") << infinite << text("0 Bytes/s");
}

void ViewTextsTest::theThroughputIsPerSecond()
{
    QFETCH(double, bytesPerSecond);
    QTEST(ViewTexts::throughput(bytesPerSecond), "words");
}

void ViewTextsTest::theTimeElapsedIsInWords()
{
    QCOMPARE(ViewTexts::elapsed(0), text("0 seconds"));
    QCOMPARE(ViewTexts::elapsed(185), text("about 3 minutes"));
    QCOMPARE(ViewTexts::elapsed(-5), text("0 seconds"));
}

void ViewTextsTest::whatIsWipedIsANumberOrInALargeRunAShare_data()
{
    QTest::addColumn<qint64>("files");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<QString>("words");
    QTest::newRow("some of some") << qint64(102) << qint64(248) << text("102");
    QTest::newRow("none of some") << qint64(0) << qint64(999) << text("0");
    QTest::newRow("none of a thousand") << qint64(0) << qint64(1000) << text("0 of 1,000");
    QTest::newRow("none of a million") << qint64(0) << qint64(1'000'000) << text("0 of 1,000,000");
    QTest::newRow("many of a million")
        << qint64(123'456) << qint64(1'000'000) << text("123,456 of 1,000,000");
}

void ViewTextsTest::whatIsWipedIsANumberOrInALargeRunAShare()
{
    QFETCH(qint64, files);
    QFETCH(qint64, total);
    QTEST(ViewTexts::wiped(files, total), "words");
}

void ViewTextsTest::thePassFollowsTheCredit_data()
{
    QTest::addColumn<double>("credit");
    QTest::addColumn<double>("size");
    QTest::addColumn<int>("passes");
    QTest::addColumn<QString>("words");
    QTest::newRow("the first byte") << 0.0 << 300.0 << 3 << text("Pass 1 of 3");
    QTest::newRow("within the first") << 99.0 << 300.0 << 3 << text("Pass 1 of 3");
    QTest::newRow("the second begins") << 100.0 << 300.0 << 3 << text("Pass 2 of 3");
    QTest::newRow("the last") << 299.0 << 300.0 << 3 << text("Pass 3 of 3");
    QTest::newRow("all is written") << 300.0 << 300.0 << 3 << text("Pass 3 of 3");
    QTest::newRow("the file grew") << 900.0 << 300.0 << 3 << text("Pass 3 of 3");
    QTest::newRow("one pass") << 10.0 << 300.0 << 1 << text("Pass 1 of 1");
    QTest::newRow("the 23rd of 35") << 22.5 << 35.0 << 35 << text("Pass 23 of 35");
    QTest::newRow("an empty file") << 0.0 << 0.0 << 3 << text("Pass --");
    QTest::newRow("an unknown size") << 10.0 << -1.0 << 3 << text("Pass --");
    QTest::newRow("no method") << 10.0 << 300.0 << 0 << text("Pass --");
    QTest::newRow("no number") << undefined << 300.0 << 3 << text("Pass 1 of 3");
    QTest::newRow("a size that is no number") << 10.0 << undefined << 3 << text("Pass --");
    QTest::newRow("infinite credit") << infinite << 300.0 << 3 << text("Pass 3 of 3");
    QTest::newRow("infinite size") << 10.0 << infinite << 3 << text("Pass --");
}

void ViewTextsTest::thePassFollowsTheCredit()
{
    QFETCH(double, credit);
    QFETCH(double, size);
    QFETCH(int, passes);
    QTEST(ViewTexts::pass(ViewTexts::currentPass(credit, size, passes), passes), "words");
}

void ViewTextsTest::failuresComeFromTheResultText()
{
    QCOMPARE(ViewTexts::failures(text("1")), text("1 file could not be erased."));
    QCOMPARE(ViewTexts::failures(text("3")), text("3 files could not be erased."));
    // Result texts keep plain digits.
    QCOMPARE(ViewTexts::failures(text("12345")), text("12345 files could not be erased."));
}

void ViewTextsTest::theEndIsToldInOneSentence()
{
    QCOMPARE(ViewTexts::ending(text("18.40 GB in 245 files"), text("3")),
             text("Finished. 18.40 GB in 245 files. 3 failed."));
}

void ViewTextsTest::aLogThatIsNotCompleteIsSaidWithItsReason()
{
    QCOMPARE(ViewTexts::logProblem(text("No space left on device")),
             text("The log is not complete: No space left on device."));
    QCOMPARE(ViewTexts::logProblem(text("This is a folder, not a file.")),
             text("The log is not complete: This is a folder, not a file."));
}

void ViewTextsTest::theDropSaysHowManyComeAndJoin()
{
    QCOMPARE(ViewTexts::releaseToAdd(12), text("Release to add 12 items"));
    QCOMPARE(ViewTexts::releaseToAdd(1), text("Release to add 1 item"));
    QCOMPARE(ViewTexts::theyJoin(248), text("They join the 248 files already listed."));
    QCOMPARE(ViewTexts::alreadyInTheList(1), text("1 file is already in the list"));
    QCOMPARE(ViewTexts::alreadyInTheList(2000), text("2,000 files are already in the list"));
    QCOMPARE(ViewTexts::theyJoin(1), text("They join the 1 file already listed."));
    QCOMPARE(ViewTexts::theyJoin(0), text("Nothing is erased until you press Start."));
}

void ViewTextsTest::theDropViewNamesTheMethod()
{
    QCOMPARE(ViewTexts::methodLine(text("3-Pass DoD 5220.22-M (E)")),
             text("Wipe method: 3-Pass DoD 5220.22-M (E)"));
}

QTEST_APPLESS_MAIN(ViewTextsTest)
#include "ViewTextsTest.moc"
