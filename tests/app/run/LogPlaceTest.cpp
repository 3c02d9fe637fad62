#include "app/run/LogPlace.h"

#include "app/run/EraseRun.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QTest>

#include <unistd.h>

using LastLink = SystemCalls::LastLink;

namespace {

/// Counts how often a file was looked at.
class CountingCalls final : public ForwardingSystemCalls
{
  public:
    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        ++looks;
        return ForwardingSystemCalls::statusAt(folder, path, lastLink, status);
    }

    int looks = 0;
};

/// What the scan of the path queues.
void scan(EraseRun &run, const QByteArray &path)
{
    ScanReport report = FileUtils().readFilesFromPath(path);
    run.addObjectsFromArray(std::move(report.files));
    run.addFolderObjectsToQueueFromDict(std::move(report.folders));
}

} // namespace

class LogPlaceTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void twoNamesOfOneFileAreKnown_data();
    void twoNamesOfOneFileAreKnown();
    void aFileLiesWhereItReallyIs_data();
    void aFileLiesWhereItReallyIs();
    void theLogIsFoundByWhateverName_data();
    void theLogIsFoundByWhateverName();
    void aLogThatWasReplacedSinceTheScanIsFound();
    void aLongQueueIsNotLookedAtOnceMore();
    void theLogsFolderIsFound_data();
    void theLogsFolderIsFound();
    void aLogIsFreeWhereNothingStandsOrGoes_data();
    void aLogIsFreeWhereNothingStandsOrGoes();
};

void LogPlaceTest::twoNamesOfOneFileAreKnown_data()
{
    QTest::addColumn<QByteArray>("one");
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<bool>("isSame");
    QTest::addColumn<bool>("isSameWithoutLinks");
    const auto row = [](const char *name, const char *one, const char *other, bool isSame,
                        bool isSameWithoutLinks) {
        QTest::newRow(name) << QByteArray(one) << QByteArray(other) << isSame << isSameWithoutLinks;
    };
    row("one name", "a/file", "a/file", true, true);
    row("a link", "a/file", "link", true, false);
    row("another name", "a/file", "other", true, true);
    row("by a link on the way", "a/file", "way/file", true, true);
    row("another file", "a/file", "b/file", false, false);
    row("one that is not there", "a/file", "a/new", false, false);
    row("neither is there", "a/new", "a/new", true, true);
    row("neither is there, by a link on the way", "a/new", "way/new", true, true);
    row("neither is there, by dots on the way", "a/new", "b/../a/new", true, true);
    row("neither is there, elsewhere", "a/new", "b/new", false, false);
    row("neither is there, other names", "a/new", "a/other", false, false);
    row("a link to what is not there", "a/new", "dangling", true, false);
    row("a link to a link to it", "a/new", "b/dangling", true, false);
    row("a link to itself", "a/new", "loop", false, false);
    row("no folder", "missing/new", "missing/./new", false, false);
    row("no folder, one path", "missing/new", "missing/new", true, true);
}

void LogPlaceTest::twoNamesOfOneFileAreKnown()
{
    QFETCH(QByteArray, one);
    QFETCH(QByteArray, other);
    QFETCH(bool, isSame);
    QFETCH(bool, isSameWithoutLinks);
    const Scratch scratch;
    QVERIFY(!scratch.folder("a").isEmpty() && !scratch.folder("b").isEmpty());
    const QByteArray file = scratch.file("a/file", 5);
    QVERIFY(!file.isEmpty() && !scratch.file("b/file", 5).isEmpty());
    QCOMPARE(::link(file.constData(), scratch.path("other").constData()), 0);
    scratch.link("link", "a/file");
    scratch.link("way", "a");
    scratch.link("dangling", "a/new");
    scratch.link("b/dangling", "../dangling");
    scratch.link("loop", "loop");

    const QByteArray first = scratch.path(one);
    const QByteArray second = scratch.path(other);
    QCOMPARE(LogPlace::isSameFile(first, second, LastLink::Follow), isSame);
    QCOMPARE(LogPlace::isSameFile(second, first, LastLink::Follow), isSame);
    QCOMPARE(LogPlace::isSameFile(first, second, LastLink::Stop), isSameWithoutLinks);
}

void LogPlaceTest::aFileLiesWhereItReallyIs_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<bool>("isInIt");
    const auto row = [](const char *name, const char *file, const char *folder, bool isInIt) {
        QTest::newRow(name) << QByteArray(file) << QByteArray(folder) << isInIt;
    };
    row("in the folder", "folder/r", "folder", true);
    row("the folder itself", "folder", "folder", true);
    row("deep below it", "folder/inner/r", "folder", true);
    row("below what is not there yet", "folder/missing/r", "folder", true);
    row("by way of a link", "link/r", "folder", true);
    row("by way of dots", "other/../folder/./r", "folder", true);
    row("a link that leads into it", "dangling", "folder", true);
    row("out by way of dots", "folder/../r", "folder", false);
    row("beside it", "r", "folder", false);
    row("in another one", "other/r", "folder", false);
    row("in one whose name begins the same", "folder2/r", "folder", false);
    row("in the folder above", "folder/r", "folder/inner", false);
    row("of a link only the link goes", "folder/r", "link", false);
    row("a file holds nothing", "folder/a", "folder/a", false);
    row("nor does what is missing", "missing/r", "missing", false);
}

void LogPlaceTest::aFileLiesWhereItReallyIs()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, folder);
    const Scratch scratch;
    for (const char *name : {"folder", "folder/inner", "folder2", "other"})
        QVERIFY(!scratch.folder(name).isEmpty());
    scratch.file("folder/a", "x");
    scratch.link("link", "folder");
    scratch.link("dangling", "folder/new");
    QTEST(LogPlace::isInFolder(scratch.path(file), scratch.path(folder)), "isInIt");
}

void LogPlaceTest::theLogIsFoundByWhateverName_data()
{
    QTest::addColumn<QByteArray>("queued");
    QTest::addColumn<bool>("isQueued");
    QTest::addColumn<bool>("isQueuedWithoutLinks");
    QTest::newRow("its name") << QByteArray("log") << true << true;
    QTest::newRow("a link") << QByteArray("link") << true << false;
    QTest::newRow("another name") << QByteArray("other") << true << true;
    QTest::newRow("another file") << QByteArray("file") << false << false;
    QTest::newRow("a link to another file") << QByteArray("links/a") << false << false;
    QTest::newRow("the same name elsewhere") << QByteArray("folder/log") << false << false;
}

void LogPlaceTest::theLogIsFoundByWhateverName()
{
    QFETCH(QByteArray, queued);
    QFETCH(bool, isQueued);
    QFETCH(bool, isQueuedWithoutLinks);
    const Scratch scratch;
    const QByteArray log = scratch.file("log", 5);
    QVERIFY(!scratch.file("file", 5).isEmpty() && !scratch.folder("folder").isEmpty());
    QVERIFY(!scratch.file("folder/log", 5).isEmpty() && !scratch.folder("links").isEmpty());
    QVERIFY(!scratch.link("link", "log").isEmpty() &&
            !scratch.link("links/a", "../file").isEmpty());
    QCOMPARE(::link(log.constData(), scratch.path("other").constData()), 0);
    EraseRun run;
    scan(run, scratch.path(queued));
    QCOMPARE(run.queueArray()->items().size(), std::size_t(1));
    QCOMPARE(LogPlace::isQueued(log, run, LastLink::Follow), isQueued);
    QCOMPARE(LogPlace::isQueued(log, run, LastLink::Stop), isQueuedWithoutLinks);
}

void LogPlaceTest::aLogThatWasReplacedSinceTheScanIsFound()
{
    const Scratch scratch;
    const QByteArray log = scratch.file("log", 5);
    scratch.link("link", "file");
    EraseRun own;
    scan(own, log);
    EraseRun byLink;
    scan(byLink, scratch.path("link"));
    const QByteArray file = scratch.file("file", 5);
    QVERIFY(!LogPlace::isQueued(file, own, LastLink::Follow));
    QCOMPARE(::rename(file.constData(), log.constData()), 0);
    QVERIFY(LogPlace::isQueued(log, own, LastLink::Follow));
    QCOMPARE(::link(log.constData(), file.constData()), 0);
    QVERIFY(LogPlace::isQueued(log, byLink, LastLink::Follow));
}

void LogPlaceTest::aLongQueueIsNotLookedAtOnceMore()
{
    const Scratch scratch;
    const QByteArray log = scratch.file("log", 5);
    const QByteArray folder = scratch.folder("folder");
    for (int number = 0; number < 100; ++number) {
        QVERIFY(!scratch.file("folder/" + QByteArray::number(number), 1).isEmpty());
        QVERIFY(!scratch.folder("folder/f" + QByteArray::number(number)).isEmpty());
    }
    EraseRun run;
    scan(run, folder);
    QCOMPARE(run.queueArray()->items().size(), std::size_t(100));
    QCOMPARE(run.folderUrlsToDeleteDict().size(), std::size_t(101));
    CountingCalls calls;
    const SystemCalls::Replacement replacement(calls);
    QVERIFY(!LogPlace::isQueued(log, run, LastLink::Follow));
    QVERIFY(!LogPlace::isInFolder(log, run));
    QVERIFY2(calls.looks < 50, QByteArray::number(calls.looks).constData());
}

void LogPlaceTest::theLogsFolderIsFound_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<bool>("isInIt");
    QTest::newRow("its own") << QByteArray("a/b") << true;
    QTest::newRow("one above") << QByteArray("a") << true;
    QTest::newRow("by a link on the way") << QByteArray("way/b") << true;
    QTest::newRow("a link to it") << QByteArray("way") << false;
    QTest::newRow("beside") << QByteArray("a/c") << false;
    QTest::newRow("below") << QByteArray("a/b/d") << false;
}

void LogPlaceTest::theLogsFolderIsFound()
{
    QFETCH(QByteArray, folder);
    const Scratch scratch;
    for (const char *name : {"a", "a/b", "a/c", "a/b/d"})
        QVERIFY(!scratch.folder(name).isEmpty());
    QVERIFY(!scratch.link("way", "a").isEmpty());
    EraseRun run;
    scan(run, scratch.path(folder));
    // It need not be there yet.
    QTEST(LogPlace::isInFolder(scratch.path("a/b/log"), run), "isInIt");
}

void LogPlaceTest::aLogIsFreeWhereNothingStandsOrGoes_data()
{
    QTest::addColumn<QByteArray>("log");
    QTest::addColumn<bool>("isFree");
    QTest::newRow("nothing is there") << QByteArray("kept/new") << true;
    QTest::newRow("a file is there") << QByteArray("kept/old") << false;
    QTest::newRow("a link is there") << QByteArray("kept/link") << false;
    QTest::newRow("its folder goes") << QByteArray("gone/new") << false;
    QTest::newRow("its folder is not there") << QByteArray("none/new") << false;
}

void LogPlaceTest::aLogIsFreeWhereNothingStandsOrGoes()
{
    QFETCH(QByteArray, log);
    const Scratch scratch;
    for (const char *name : {"kept", "gone"})
        QVERIFY(!scratch.folder(name).isEmpty());
    QVERIFY(!scratch.file("kept/old", "old").isEmpty());
    QVERIFY(!scratch.link("kept/link", "nowhere").isEmpty());
    EraseRun run;
    scan(run, scratch.path("gone"));
    QTEST(LogPlace::isFree(scratch.path(log), run), "isFree");
    QVERIFY(!LogPlace::isFree(QByteArray(), run));
}

QTEST_GUILESS_MAIN(LogPlaceTest)
#include "LogPlaceTest.moc"
