#include "app/run/RunTexts.h"

#include "app/run/EraseRun.h"
#include "app/run/Items.h"

#include <QLocale>
#include <QTest>

class RunTextsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void whatWasWipedIsBytesAndFiles_data();
    void whatWasWipedIsBytesAndFiles();
    void howManyFailedIsANumber();
    void theTimeElapsedIsInWords_data();
    void theTimeElapsedIsInWords();
    void aFailureIsTheItemsText();
    void aFileThatAStoppedRunDidNotComeToSaysSo();
    void aFileThatWentWithItsFolderSaysSo();
    void aHiddenFileThatWasNotQueuedSaysSo();
};

void RunTextsTest::whatWasWipedIsBytesAndFiles_data()
{
    QTest::addColumn<double>("bytes");
    QTest::addColumn<qint64>("files");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << qint64(0) << QStringLiteral("0 Bytes in 0 files");
    QTest::newRow("one file is plural, too")
        << 12.0 << qint64(1) << QStringLiteral("12 Bytes in 1 files");
    QTest::newRow("megabytes") << 1'540'000.0 << qint64(12)
                               << QStringLiteral("1.54 MB in 12 files");
    QTest::newRow("many files are not grouped")
        << 5.0 << qint64(1'000'000) << QStringLiteral("5 Bytes in 1000000 files");
}

void RunTextsTest::whatWasWipedIsBytesAndFiles()
{
    QFETCH(double, bytes);
    QFETCH(qint64, files);
    QTEST(RunTexts::wipedFiles(bytes, files), "text");
    QLocale::setDefault(QLocale(QLocale::German));
    const QString inGerman = RunTexts::wipedFiles(bytes, files);
    QLocale::setDefault(QLocale::c());
    QCOMPARE(inGerman, RunTexts::wipedFiles(bytes, files));
}

void RunTextsTest::howManyFailedIsANumber()
{
    QCOMPARE(RunTexts::failedFiles(0), QStringLiteral("0"));
    QCOMPARE(RunTexts::failedFiles(1'234'567), QStringLiteral("1234567"));
}

void RunTextsTest::theTimeElapsedIsInWords_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << 0.0 << QStringLiteral("0 seconds");
    QTest::newRow("an hour and more") << 3725.0 << QStringLiteral("about 1 hours");
    QTest::newRow("a minute") << 61.0 << QStringLiteral("about 1 minutes");
    QTest::newRow("a clock set back") << -5.0 << QStringLiteral("0 seconds");
}

void RunTextsTest::theTimeElapsedIsInWords()
{
    QFETCH(double, seconds);
    QTEST(RunTexts::timeElapsed(seconds), "text");
}

void RunTextsTest::aFailureIsTheItemsText()
{
    const QueueArray::Item item = Items::at("/a");
    item->setErrormsg(QStringLiteral("No such file or directory"));
    item->setFinished(true);
    QCOMPARE(RunTexts::failure({item, "/a", false}), QStringLiteral("No such file or directory"));
}

void RunTextsTest::aFileThatAStoppedRunDidNotComeToSaysSo()
{
    QCOMPARE(RunTexts::failure({Items::at("/a"), "/a", false}),
             QStringLiteral("Not erased: the run was stopped"));
}

void RunTextsTest::aFileThatWentWithItsFolderSaysSo()
{
    const QueueArray::Item item = Items::at("/a/.b");
    item->setErrormsg(QStringLiteral("Permission denied"));
    item->setFinished(true);
    QCOMPARE(RunTexts::failure({item, "/a/.b", true}),
             QStringLiteral("Permission denied (removed with its folder, not overwritten)"));
}

void RunTextsTest::aHiddenFileThatWasNotQueuedSaysSo()
{
    QCOMPARE(RunTexts::failure({nullptr, "/a/.b", true}),
             QStringLiteral("Not found by the scan (removed with its folder, not overwritten)"));
}

QTEST_APPLESS_MAIN(RunTextsTest)
#include "RunTextsTest.moc"
