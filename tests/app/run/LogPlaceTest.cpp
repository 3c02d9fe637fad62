#include "app/run/LogPlace.h"

#include "app/run/EraseRun.h"
#include "app/run/Items.h"
#include "kit/Scratch.h"

#include <QTest>

#include <unistd.h>

class LogPlaceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theLogIsFoundByWhateverName_data();
    void theLogIsFoundByWhateverName();
    void theLogsFolderIsFound_data();
    void theLogsFolderIsFound();
};

void LogPlaceTest::theLogIsFoundByWhateverName_data()
{
    QTest::addColumn<QByteArray>("queued");
    QTest::addColumn<bool>("isQueued");
    QTest::newRow("its name") << QByteArray("log") << true;
    QTest::newRow("a link") << QByteArray("link") << true;
    QTest::newRow("another name") << QByteArray("other") << true;
    QTest::newRow("another file") << QByteArray("file") << false;
    QTest::newRow("the same name elsewhere") << QByteArray("folder/log") << false;
}

void LogPlaceTest::theLogIsFoundByWhateverName()
{
    QFETCH(QByteArray, queued);
    const Scratch scratch;
    const QByteArray log = scratch.file("log", 5);
    QVERIFY(!scratch.file("file", 5).isEmpty() && !scratch.folder("folder").isEmpty());
    QVERIFY(!scratch.file("folder/log", 5).isEmpty());
    QCOMPARE(::symlink(log.constData(), scratch.path("link").constData()), 0);
    QCOMPARE(::link(log.constData(), scratch.path("other").constData()), 0);
    EraseRun run;
    const QueueArray::Item item = Items::at(scratch.path(queued));
    ScanFacts facts;
    facts.isLink = queued == "link";
    facts.hasOtherNames = queued == "other";
    item->setScanFacts(facts);
    run.addObjectsFromArray({item});
    QTEST(LogPlace::isQueued(log, run), "isQueued");
}

void LogPlaceTest::theLogsFolderIsFound_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<bool>("isInIt");
    QTest::newRow("its own") << QByteArray("a/b") << true;
    QTest::newRow("one above") << QByteArray("a") << true;
    QTest::newRow("by a link on the way") << QByteArray("way/b") << true;
    QTest::newRow("beside") << QByteArray("a/c") << false;
    QTest::newRow("below") << QByteArray("a/b/d") << false;
}

void LogPlaceTest::theLogsFolderIsFound()
{
    QFETCH(QByteArray, folder);
    const Scratch scratch;
    for (const char *name : {"a", "a/b", "a/c", "a/b/d"})
        QVERIFY(!scratch.folder(name).isEmpty());
    QCOMPARE(::symlink(scratch.path("a").constData(), scratch.path("way").constData()), 0);
    EraseRun run;
    run.addFolderObjectsToQueueFromDict({{scratch.path(folder), ScanFacts()}});
    // It need not be there yet.
    QTEST(LogPlace::isInFolder(scratch.path("a/b/log"), run), "isInIt");
}

QTEST_GUILESS_MAIN(LogPlaceTest)
#include "LogPlaceTest.moc"
