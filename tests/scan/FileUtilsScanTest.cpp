#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "platform/FolderChain.h"
#include "platform/ScriptedSystemCalls.h"
#include "scan/Reports.h"

#include <QSet>
#include <QTest>

#include <cerrno>
#include <cstring>

namespace {

constexpr std::uint64_t btrfs = 0x9123683E;
constexpr std::uint64_t ext4 = 0xEF53;

QString uri(const QByteArray &path)
{
    return QString::fromLatin1("file://" + path.toPercentEncoding("/"));
}

QString systemText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/// Lets no folder be listed: an item that should have been refused leads nowhere then.
class ListingNothing final : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        return access == Access::Folder
                   ? -EACCES
                   : ForwardingSystemCalls::open(folder, path, access, lastLink);
    }
};

} // namespace

/// The scan operations of FileUtils.
class FileUtilsScanTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aFolderIsReportedWithItsOwnPathAlsoWhenItIsEmpty();
    void everyFileAndFolderOfATreeIsReportedOnce();
    void hiddenFilesAndTheContentsOfPackagesAreFound();
    void aLinkToAFolderInsideAFolderIsOneFileAndItsTargetIsNotWalked();
    void aPathOfAnyBytesComesBackAsItWasGiven_data();
    void aPathOfAnyBytesComesBackAsItWasGiven();
    void aFileAloneIsReportedWithoutAnyFolder();
    void nothingOfOneItemIsReportedWithTheNext();

    void anItemHasItsPathSizeAndStatisticsAndIsPending();
    void aSizeIsReadThroughLinks();
    void whatCannotBeReadHasSizeMinusOne_data();
    void whatCannotBeReadHasSizeMinusOne();
    void specialFilesAreQueued();
    void aDroppedLinkToAFolderIsAFolderWithoutFiles();
    void aDroppedLinkToAFileIsAFile();

    void everyFileIsCountedOnTheMainThreadLater();
    void anUnreadableSizeLowersTheSum();
    void withoutStatisticsNothingIsCounted();
    void updateStatsCountsOneFile();

    void theGivenEndOfEachPathIsNoted();
    void filesWithOtherNamesAreNoted();
    void filesOnCopyOnWriteFileSystemsAreNoted();
    void theFileSystemIsAskedOncePerDevice();
    void aDanglingLinkSaysNothingOfItsFileSystem();
    void aLinkToLeaveAloneSaysNothingOfItsFileSystem();
    void linksToLeaveAloneHaveSizeZero();

    void protectedPlacesAreRefused_data();
    void protectedPlacesAreRefused();
    void aLinkToAProtectedPlaceIsNotEntered();

    void aFileSystemThatTellsNoKindsIsScannedTheSame();
    void anEntryWhoseKindCannotBeReadIsLoggedAndSkipped();
    void aFolderThatCannotBeOpenedIsLoggedAndTheScanGoesOn();
    void aFolderThatCannotBeReadToItsEndKeepsWhatWasFound();
    void aFolderThatIsGoneIsLogged();
    void failuresAreHandedOverOnce();
    void aFolderMovedElsewhereMeanwhileLosesAndDoublesNothing();

    void aPathLongerThanTheSystemTakesIsQueuedWithSizeMinusOne();
    void theLongestPathTheSystemTakesIsRead();
    void anOverlongFolderIsNotedOncePerBranch();
    void anOverlongItemIsQueuedWithSizeMinusOne();

    void aStopEndsTheWalkAfterTheEntry();
    void aStopInsideAWideFolderKeepsWhatWasFound();
    void aStopMarksTheFoldersThatItCutShort();
    void anUnfinishedFolderIsRemovedOnlyIfItIsEmpty();
    void aStopBeforehandStillTakesAFile();
    void aStopStaysUntilItIsTakenBack();
};

void FileUtilsScanTest::aFolderIsReportedWithItsOwnPathAlsoWhenItIsEmpty()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("empty");
    const ScanReport report = FileUtils().readFilesFromPath(folder);
    QCOMPARE(Reports::folders(report), QByteArrayList({folder}));
    QVERIFY(report.files.empty());
}

void FileUtilsScanTest::everyFileAndFolderOfATreeIsReportedOnce()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/a", "top/a/b", "top/a/b/c", "top/d"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"top/1", "top/a/1", "top/a/b/c/2", "top/d/3", "beside"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    const QByteArray top = scratch.path("top");
    QCOMPARE(Reports::files(report),
             QByteArrayList({top + "/1", top + "/a/1", top + "/a/b/c/2", top + "/d/3"}));
    QCOMPARE(Reports::folders(report),
             QByteArrayList({top, top + "/a", top + "/a/b", top + "/a/b/c", top + "/d"}));
}

void FileUtilsScanTest::hiddenFilesAndTheContentsOfPackagesAreFound()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/.git", "top/Tool.app", "top/Tool.app/Contents"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"top/.hidden", "top/.git/config", "top/Tool.app/Contents/Info.plist"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    const QByteArray top = scratch.path("top");
    QCOMPARE(Reports::files(report), QByteArrayList({top + "/.git/config", top + "/.hidden",
                                                     top + "/Tool.app/Contents/Info.plist"}));
    QCOMPARE(Reports::folders(report),
             QByteArrayList({top, top + "/.git", top + "/Tool.app", top + "/Tool.app/Contents"}));
}

void FileUtilsScanTest::aLinkToAFolderInsideAFolderIsOneFileAndItsTargetIsNotWalked()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("outside").isEmpty());
    QVERIFY(!scratch.file("outside/untouched", "x").isEmpty());
    const QByteArray link = scratch.link("top/link", scratch.path("outside"));
    const QByteArray loop = scratch.link("top/upwards", "..");
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    QCOMPARE(Reports::files(report), QByteArrayList({link, loop}));
    QCOMPARE(Reports::folders(report), QByteArrayList({scratch.path("top")}));
    QVERIFY(report.files.front()->scanFacts().isLink);
    QVERIFY(!report.files.front()->isFolder());
}

void FileUtilsScanTest::aPathOfAnyBytesComesBackAsItWasGiven_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a semicolon") << QByteArray("a;b");
    QTest::newRow("blanks") << QByteArray(" a  b ");
    QTest::newRow("non-ASCII letters") << QByteArray("Gr\xc3\xb6\xc3\x9f"
                                                     "e");
    QTest::newRow("decomposed letters") << QByteArray("Gro\xcc\x88"
                                                      "ße");
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9 \xff\xfe");
    QTest::newRow("a newline") << QByteArray("two\nlines");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("percent escapes") << QByteArray("%3B%2F%00%");
    QTest::newRow("question mark and hash") << QByteArray("a?b#c");
    QTest::newRow("a backslash") << QByteArray("a\\b");
    QTest::newRow("one full stop more than the folder above") << QByteArray("...");
}

/// Given itself, and found in a folder of that name.
void FileUtilsScanTest::aPathOfAnyBytesComesBackAsItWasGiven()
{
    QFETCH(QByteArray, name);
    const Scratch scratch;
    QVERIFY(!scratch.folder("files").isEmpty() && !scratch.folder(name).isEmpty());
    const QByteArray file = scratch.file("files/" + name, 17);
    const QByteArray found = scratch.file(name + '/' + name, 18);
    FileUtils fileUtils;

    const ScanReport given = fileUtils.readFilesFromPath(file);
    QCOMPARE(Reports::files(given), QByteArrayList({file}));
    QCOMPARE(given.files.front()->filename(), name);
    QCOMPARE(given.files.front()->filepath(), scratch.path("files"));
    QCOMPARE(given.files.front()->filesize(), 17.0);

    const ScanReport folder = fileUtils.readFilesFromPath(scratch.path(name));
    QCOMPARE(Reports::files(folder), QByteArrayList({found}));
    QCOMPARE(Reports::folders(folder), QByteArrayList({scratch.path(name)}));
    QCOMPARE(folder.files.front()->filename(), name);
    QCOMPARE(folder.files.front()->filepath(), scratch.path(name));
    QCOMPARE(folder.files.front()->filesize(), 18.0);
}

void FileUtilsScanTest::aFileAloneIsReportedWithoutAnyFolder()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("file", "x");
    QVERIFY(!scratch.file("sibling", "x").isEmpty());
    const ScanReport report = FileUtils().readFilesFromPath(file);
    QCOMPARE(Reports::files(report), QByteArrayList({file}));
    QVERIFY(report.folders.empty());
}

void FileUtilsScanTest::nothingOfOneItemIsReportedWithTheNext()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("a").isEmpty() && !scratch.folder("b").isEmpty());
    const QByteArray first = scratch.file("a/first", "x");
    const QByteArray second = scratch.file("b/second", "x");
    FileUtils fileUtils;
    QCOMPARE(Reports::files(fileUtils.readFilesFromPath(scratch.path("a"))),
             QByteArrayList({first}));
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("b"));
    QCOMPARE(Reports::files(report), QByteArrayList({second}));
    QCOMPARE(Reports::folders(report), QByteArrayList({scratch.path("b")}));
}

void FileUtilsScanTest::anItemHasItsPathSizeAndStatisticsAndIsPending()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("file", 4097);
    const auto stats = QueueStatsObject::create();
    FileUtils fileUtils;
    fileUtils.setQueueStatsObject(stats);
    const QueueArray::Item item = fileUtils.makeObjectFromUrl(FileUrl(file));
    QCOMPARE(item->filename(), "file");
    QCOMPARE(item->filepath(), scratch.path());
    QCOMPARE(item->fullpath(), file);
    QCOMPARE(item->filesize(), 4097.0);
    QCOMPARE(item->maxValue(), 4097.0);
    QCOMPARE(item->queueStatsObject().lock(), stats);
    QCOMPARE(item->status(), std::int64_t(QueueObject::Pending));
    QCOMPARE(item->errornr(), std::int64_t(0));
    QCOMPARE(item->doubleValue(), 0.0);
    QCOMPARE(item->bytesWritten(), 0.0);
    QVERIFY(!item->finished() && !item->isBusy() && !item->isFolder());
}

void FileUtilsScanTest::aSizeIsReadThroughLinks()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    const QByteArray target = scratch.file("target", 12345);
    const QByteArray link = scratch.link("top/link", target);
    const QByteArray again = scratch.link("top/link to the link", "link");
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    for (const QByteArray &path : {link, again}) {
        QVERIFY(Reports::fileAt(report, path));
        QCOMPARE(Reports::fileAt(report, path)->filesize(), 12345.0);
        QVERIFY(Reports::fileAt(report, path)->scanFacts().isLink);
    }
}

void FileUtilsScanTest::whatCannotBeReadHasSizeMinusOne_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("a missing file") << QByteArray("missing");
    QTest::newRow("a file in a missing folder") << QByteArray("missing/file");
    QTest::newRow("a file below a file") << QByteArray("file/below");
    QTest::newRow("a dangling link") << QByteArray("dangling");
    QTest::newRow("a loop of links") << QByteArray("loop");
    QTest::newRow("a name too long") << QByteArray(256, 'n');
}

void FileUtilsScanTest::whatCannotBeReadHasSizeMinusOne()
{
    QFETCH(QByteArray, name);
    const Scratch scratch;
    QVERIFY(!scratch.file("file", "x").isEmpty());
    QVERIFY(!scratch.link("dangling", "nothing").isEmpty());
    QVERIFY(!scratch.link("loop", "loop").isEmpty());
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path(name));
    QCOMPARE(Reports::files(report), QByteArrayList({scratch.path(name)}));
    QCOMPARE(report.files.front()->filesize(), -1.0);
    QCOMPARE(report.files.front()->maxValue(), -1.0);
    QVERIFY(report.folders.empty());
    QVERIFY(fileUtils.takeScanFailures().empty());
}

void FileUtilsScanTest::specialFilesAreQueued()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    QCOMPARE(::mkfifo(scratch.path("top/fifo").constData(), 0644), 0);
    QCOMPARE(::mknod(scratch.path("top/socket").constData(), S_IFSOCK | 0644, 0), 0);
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    QCOMPARE(Reports::files(report),
             QByteArrayList({scratch.path("top/fifo"), scratch.path("top/socket")}));
    for (const QueueArray::Item &item : report.files)
        QCOMPARE(item->filesize(), 0.0);
}

void FileUtilsScanTest::aDroppedLinkToAFolderIsAFolderWithoutFiles()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("target").isEmpty() && !scratch.file("target/file", "x").isEmpty());
    const QByteArray link = scratch.link("link", "target");
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(link);
    QVERIFY(report.files.empty());
    QCOMPARE(Reports::folders(report), QByteArrayList({link}));
    QVERIFY(report.folders.begin()->second.isLink);
    QVERIFY(fileUtils.takeScanFailures().empty());
}

void FileUtilsScanTest::aDroppedLinkToAFileIsAFile()
{
    const Scratch scratch;
    const QByteArray link = scratch.link("link", scratch.file("target", 42));
    const ScanReport report = FileUtils().readFilesFromPath(link);
    QCOMPARE(Reports::files(report), QByteArrayList({link}));
    QVERIFY(report.files.front()->scanFacts().isLink);
    QCOMPARE(report.files.front()->filesize(), 42.0);
    QVERIFY(report.folders.empty());
}

void FileUtilsScanTest::everyFileIsCountedOnTheMainThreadLater()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("top/a").isEmpty());
    for (int number = 0; number < 30; ++number)
        QVERIFY(!scratch.file("top/a/" + QByteArray::number(number), 100).isEmpty());
    const auto stats = QueueStatsObject::create();
    FileUtils fileUtils;
    fileUtils.setQueueStatsObject(stats);
    QCOMPARE(fileUtils.readFilesFromPath(scratch.path("top")).files.size(), std::size_t(30));
    QCOMPARE(fileUtils.readFilesFromPath(scratch.path("top/a/7")).files.size(), std::size_t(1));
    QCOMPARE(stats->scanFoundFiles(), std::int64_t(0));
    QTRY_COMPARE(stats->scanFoundFiles(), std::int64_t(31));
    QCOMPARE(stats->scanFoundBytes(), 3100.0);
}

void FileUtilsScanTest::anUnreadableSizeLowersTheSum()
{
    const Scratch scratch;
    const auto stats = QueueStatsObject::create();
    FileUtils fileUtils;
    fileUtils.setQueueStatsObject(stats);
    fileUtils.fileScan(FileUrl(scratch.file("file", 10)));
    fileUtils.fileScan(FileUrl(scratch.path("missing")));
    QTRY_COMPARE(stats->scanFoundFiles(), std::int64_t(2));
    QCOMPARE(stats->scanFoundBytes(), 9.0);
}

void FileUtilsScanTest::withoutStatisticsNothingIsCounted()
{
    const Scratch scratch;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.file("file", 10));
    QCOMPARE(report.files.size(), std::size_t(1));
    QVERIFY(report.files.front()->queueStatsObject().expired());
    fileUtils.updateStats(report.files.front());
    QCoreApplication::processEvents();
}

void FileUtilsScanTest::updateStatsCountsOneFile()
{
    const auto stats = QueueStatsObject::create();
    FileUtils fileUtils;
    fileUtils.setQueueStatsObject(stats);
    const QueueArray::Item item = QueueObject::create();
    item->setFilesize(7.5);
    fileUtils.updateStats(item);
    fileUtils.updateStats(item);
    QCOMPARE(stats->scanFoundFiles(), std::int64_t(2));
    QCOMPARE(stats->scanFoundBytes(), 15.0);
}

/// Up to the folder that holds the dropped item, links are the user's own.
void FileUtilsScanTest::theGivenEndOfEachPathIsNoted()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("top/a").isEmpty());
    QVERIFY(!scratch.file("top/a/file", "x").isEmpty());
    const auto given = std::int32_t(scratch.path().size());
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(1));
    QCOMPARE(report.files.front()->scanFacts().givenLength, given);
    QCOMPARE(report.folders.size(), std::size_t(2));
    for (const auto &folder : report.folders)
        QCOMPARE(folder.second.givenLength, given);
    const ScanReport file = fileUtils.readFilesFromPath(scratch.path("top/a/file"));
    QCOMPARE(file.files.front()->scanFacts().givenLength,
             std::int32_t(scratch.path("top/a").size()));
    const QueueArray::Item alone = fileUtils.makeObjectFromUrl(FileUrl(scratch.path("top/a/file")));
    QCOMPARE(alone->scanFacts().givenLength, -1);
}

void FileUtilsScanTest::filesWithOtherNamesAreNoted()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    const QByteArray single = scratch.file("top/single", "x");
    const QByteArray outside = scratch.file("outside", "x");
    const QByteArray inside = scratch.path("top/inside");
    QCOMPARE(::link(outside.constData(), inside.constData()), 0);
    const QByteArray link = scratch.link("top/link", outside);
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(3));
    QVERIFY(Reports::fileAt(report, inside)->scanFacts().hasOtherNames);
    QVERIFY(!Reports::fileAt(report, single)->scanFacts().hasOtherNames);
    QVERIFY(!Reports::fileAt(report, link)->scanFacts().hasOtherNames);
}

void FileUtilsScanTest::filesOnCopyOnWriteFileSystemsAreNoted()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    for (const char *file : {"top/a", "top/b"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    for (const auto &[type, isCopyOnWrite] : {std::pair(btrfs, true), std::pair(ext4, false)}) {
        ScriptedSystemCalls calls;
        calls.typeNumber = type;
        const SystemCalls::Replacement replacement(calls);
        const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
        QCOMPARE(report.files.size(), std::size_t(2));
        for (const QueueArray::Item &item : report.files)
            QCOMPARE(item->scanFacts().isCopyOnWrite(), isCopyOnWrite);
    }
}

void FileUtilsScanTest::theFileSystemIsAskedOncePerDevice()
{
    class CountingTypes final : public ForwardingSystemCalls
    {
      public:
        int fileSystemType(const char *path, std::uint64_t &type) override
        {
            ++asked;
            return ForwardingSystemCalls::fileSystemType(path, type);
        }
        int asked = 0;
    };
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    for (int number = 0; number < 20; ++number)
        QVERIFY(!scratch.file("top/" + QByteArray::number(number), "x").isEmpty());
    CountingTypes calls;
    const SystemCalls::Replacement replacement(calls);
    QCOMPARE(FileUtils().readFilesFromPath(scratch.path("top")).files.size(), std::size_t(20));
    QCOMPARE(calls.asked, 1);
}

/// Files come before folders in a walk, so the link is met first.
void FileUtilsScanTest::aDanglingLinkSaysNothingOfItsFileSystem()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("top/inner").isEmpty());
    QVERIFY(!scratch.link("top/dangling", "nothing").isEmpty());
    const QByteArray file = scratch.file("top/inner/file", "x");
    ScriptedSystemCalls calls;
    calls.typeNumber = btrfs;
    const SystemCalls::Replacement replacement(calls);
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(2));
    QVERIFY(Reports::fileAt(report, file)->scanFacts().isCopyOnWrite());
}

/// The link leads to a file system of another kind, which nothing will write to.
void FileUtilsScanTest::aLinkToLeaveAloneSaysNothingOfItsFileSystem()
{
    class TypesByPath final : public ForwardingSystemCalls
    {
      public:
        int fileSystemType(const char *path, std::uint64_t &type) override
        {
            const int result = ForwardingSystemCalls::fileSystemType(path, type);
            type = QByteArray(path).endsWith("/link") ? btrfs : ext4;
            return result;
        }
    };
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("top/inner").isEmpty());
    QVERIFY(!scratch.link("top/link", scratch.file("elsewhere", "x")).isEmpty());
    const QByteArray file = scratch.file("top/inner/file", "x");
    TypesByPath calls;
    const SystemCalls::Replacement replacement(calls);
    FileUtils fileUtils;
    fileUtils.setSkipLinkTargets(true);
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(2));
    QVERIFY(!Reports::fileAt(report, file)->scanFacts().isCopyOnWrite());
}

void FileUtilsScanTest::linksToLeaveAloneHaveSizeZero()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    const QByteArray file = scratch.file("top/file", 100);
    const QByteArray link = scratch.link("top/link", file);
    const QByteArray dangling = scratch.link("top/dangling", "nothing");
    FileUtils fileUtils;
    fileUtils.setSkipLinkTargets(true);
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QCOMPARE(Reports::fileAt(report, file)->filesize(), 100.0);
    for (const QByteArray &path : {link, dangling}) {
        QCOMPARE(Reports::fileAt(report, path)->filesize(), 0.0);
        QCOMPARE(Reports::fileAt(report, path)->maxValue(), 0.0);
        QVERIFY(Reports::fileAt(report, path)->scanFacts().isLink);
    }
}

void FileUtilsScanTest::protectedPlacesAreRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("text");
    const auto never = [](const char *place) {
        return QStringLiteral("Refused: \"%1\" is never erased").arg(QLatin1String(place));
    };
    QTest::newRow("the root folder") << QByteArray("/") << never("/");
    QTest::newRow("the root folder in two slashes") << QByteArray("//") << never("/");
    QTest::newRow("the root folder and a dot") << QByteArray("/.") << never("/");
    QTest::newRow("back to the root folder") << QByteArray("/proc/../.") << never("/");
    const QString above = QStringLiteral("Refused: \"..\" names no file or folder of its own");
    QTest::newRow("above the root folder") << QByteArray("/..") << never("/");
    QTest::newRow("above a folder") << QByteArray("/usr/bin/..") << above;
    QTest::newRow("above a folder, with a slash") << QByteArray("/usr/bin/../") << above;
    QTest::newRow("the processes") << QByteArray("/proc") << never("/proc");
    QTest::newRow("the processes with a slash") << QByteArray("/proc/") << never("/proc");
    QTest::newRow("the system's objects") << QByteArray("/sys") << never("/sys");
    QTest::newRow("the devices") << QByteArray("/dev") << never("/dev");
    QTest::newRow("an empty path")
        << QByteArray("") << QStringLiteral("Refused: an empty path names nothing");
    QTest::newRow("no path") << QByteArray()
                             << QStringLiteral("Refused: an empty path names nothing");
}

void FileUtilsScanTest::protectedPlacesAreRefused()
{
    QFETCH(QByteArray, path);
    QFETCH(QString, text);
    ListingNothing calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(path);
    QVERIFY(report.files.empty());
    QVERIFY(report.folders.empty());
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(failures.size(), std::size_t(1));
    QCOMPARE(failures.front().path, path);
    QCOMPARE(failures.front().errornr, 0);
    QCOMPARE(failures.front().errormsg, text);
    QCOMPARE(log.lines(), QStringList({QStringLiteral("-[FileUtils readFilesFromPath:] ") + text}));
}

void FileUtilsScanTest::aLinkToAProtectedPlaceIsNotEntered()
{
    const Scratch scratch;
    const QByteArray link = scratch.link("link", "/");
    ListingNothing calls;
    const SystemCalls::Replacement replacement(calls);
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(link);
    QVERIFY(report.files.empty());
    QCOMPARE(Reports::folders(report), QByteArrayList({link}));
    QVERIFY(fileUtils.takeScanFailures().empty());
}

void FileUtilsScanTest::aFileSystemThatTellsNoKindsIsScannedTheSame()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/a", "top/a/b", "outside"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"top/1", "top/a/2", "top/a/b/3", "outside/4"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    QVERIFY(!scratch.link("top/link", scratch.path("outside")).isEmpty());
    const ScanReport typed = FileUtils().readFilesFromPath(scratch.path("top"));
    ScriptedSystemCalls calls;
    calls.blanksKinds = true;
    const SystemCalls::Replacement replacement(calls);
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(4));
    QCOMPARE(Reports::files(report), Reports::files(typed));
    QCOMPARE(Reports::folders(report), Reports::folders(typed));
}

void FileUtilsScanTest::anEntryWhoseKindCannotBeReadIsLoggedAndSkipped()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    const QByteArray good = scratch.file("top/good", "x");
    const QByteArray bad = scratch.file("top/bad; one", "x");
    ScriptedSystemCalls calls;
    calls.blanksKinds = true;
    calls.statusAtErrors = {{"bad; one", EIO}};
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QCOMPARE(Reports::files(report), QByteArrayList({good}));
    QCOMPARE(log.lines(), QStringList({QStringLiteral("-[FileUtils recursiveScan:] (2): file://") +
                                       QString::fromLatin1(scratch.path("top/bad%3B%20one"))}));
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(Reports::paths(failures), QByteArrayList({bad}));
    QCOMPARE(failures.front().errornr, EIO);
    QCOMPARE(failures.front().errormsg, systemText(EIO));
}

void FileUtilsScanTest::aFolderThatCannotBeOpenedIsLoggedAndTheScanGoesOn()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/a", "top/\xff b", "top/c"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"top/a/1", "top/\xff b/2", "top/c/3"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    ScriptedSystemCalls calls;
    calls.openErrors = {{"\xff b", EACCES}};
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    const QByteArray top = scratch.path("top");
    QCOMPARE(Reports::files(report), QByteArrayList({top + "/a/1", top + "/c/3"}));
    QCOMPARE(Reports::folders(report),
             QByteArrayList({top, top + "/a", top + "/c", top + "/\xff b"}));
    QCOMPARE(log.lines(),
             QStringList({QStringLiteral("-[FileUtils recursiveScan:]_block_invoke (1): file://") +
                          QString::fromLatin1(top + "/%FF%20b")}));
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(Reports::paths(failures), QByteArrayList({top + "/\xff b"}));
    QCOMPARE(failures.front().errornr, EACCES);
    QCOMPARE(failures.front().errormsg, systemText(EACCES));
}

void FileUtilsScanTest::aFolderThatCannotBeReadToItsEndKeepsWhatWasFound()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    for (int number = 0; number < 100; ++number)
        QVERIFY(!scratch.file("top/" + QByteArray::number(number), "x").isEmpty());
    ScriptedSystemCalls calls;
    calls.folderCapacity = 512;
    calls.readFolderError = EIO;
    calls.readsBeforeError = 2;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QVERIFY(!report.files.empty() && report.files.size() < 100);
    QCOMPARE(Reports::folders(report), QByteArrayList({scratch.path("top")}));
    QCOMPARE(Reports::paths(fileUtils.takeScanFailures()), QByteArrayList({scratch.path("top")}));
    QCOMPARE(log.lines(),
             QStringList({QStringLiteral("-[FileUtils recursiveScan:]_block_invoke (1): ") +
                          uri(scratch.path("top"))}));
}

void FileUtilsScanTest::aFolderThatIsGoneIsLogged()
{
    const Scratch scratch;
    const RecordedLog log;
    FileUtils fileUtils;
    fileUtils.recursiveScan(FileUrl(scratch.path("gone")));
    QCOMPARE(log.lines(),
             QStringList({QStringLiteral("-[FileUtils recursiveScan:]_block_invoke (1): ") +
                          uri(scratch.path("gone"))}));
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(failures.size(), std::size_t(1));
    QCOMPARE(failures.front().errornr, ENOENT);
}

void FileUtilsScanTest::failuresAreHandedOverOnce()
{
    ListingNothing calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils fileUtils;
    fileUtils.readFilesFromPath("/");
    fileUtils.readFilesFromPath("");
    QCOMPARE(Reports::paths(fileUtils.takeScanFailures()), QByteArrayList({"", "/"}));
    QVERIFY(fileUtils.takeScanFailures().empty());
}

/// A folder goes out of the tree while what is far below it is being walked, to a place among
/// files of the same names.
void FileUtilsScanTest::aFolderMovedElsewhereMeanwhileLosesAndDoublesNothing()
{
    constexpr int levels = 80;
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("outside").isEmpty());
    QVERIFY(!scratch.file("outside/file", "x").isEmpty());
    QVERIFY(!scratch.folder("outside/side").isEmpty());
    QByteArrayList files;
    QByteArray path = "top";
    for (int level = 0; level < levels; ++level) {
        path += "/d";
        QVERIFY(!scratch.folder(path).isEmpty() && !scratch.folder(path + "/side").isEmpty());
        files << scratch.file(path + "/file", "x") << scratch.file(path + "/side/file", "x");
    }
    std::sort(files.begin(), files.end());
    const QByteArray moved = scratch.path("top" + QByteArray("/d").repeated(10));
    int opened = 0;
    ScriptedSystemCalls calls;
    calls.beforeOpen = [&](const QByteArray &name) {
        if (name == "d" && ++opened == levels)
            QCOMPARE(::rename(moved.constData(), scratch.path("outside/d").constData()), 0);
    };
    const SystemCalls::Replacement replacement(calls);
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QVERIFY(Scratch::exists(scratch.path("outside/d")));
    QCOMPARE(Reports::files(report), files);
    QCOMPARE(report.folders.size(), std::size_t(2 * levels + 1));
    QVERIFY(fileUtils.takeScanFailures().empty());
}

void FileUtilsScanTest::aPathLongerThanTheSystemTakesIsQueuedWithSizeMinusOne()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    FolderChain chain(scratch.path("top"), QByteArray(250, 'n'), 17);
    QVERIFY(chain.isComplete());
    QVERIFY(chain.addFile("file"));
    const QByteArray file = chain.bottomPath() + "/file";
    QVERIFY(file.size() > PATH_MAX);
    const auto stats = QueueStatsObject::create();
    const RecordedLog log;
    FileUtils fileUtils;
    fileUtils.setQueueStatsObject(stats);
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QCOMPARE(Reports::files(report), QByteArrayList({file}));
    QCOMPARE(report.files.front()->filesize(), -1.0);
    QCOMPARE(report.files.front()->filename(), "file");
    QCOMPARE(report.files.front()->filepath(), chain.bottomPath());
    QTRY_COMPARE(stats->scanFoundFiles(), std::int64_t(1));
}

void FileUtilsScanTest::theLongestPathTheSystemTakesIsRead()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    constexpr int nameLength = 100;
    const qsizetype levels = (PATH_MAX - 60 - scratch.path("top").size()) / (nameLength + 1);
    FolderChain chain(scratch.path("top"), QByteArray(nameLength, 'n'), int(levels));
    QVERIFY(chain.isComplete());
    // One name that just fits, and one that is a byte longer.
    const qsizetype room = PATH_MAX - 1 - (chain.bottomPath().size() + 1);
    const QByteArray fitting(room, 'f');
    const QByteArray longer(room + 1, 'f');
    QVERIFY(chain.addFile(fitting) && chain.addFile(longer));
    const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(2));
    const QueueArray::Item fits = Reports::fileAt(report, chain.bottomPath() + '/' + fitting);
    const QueueArray::Item overlong = Reports::fileAt(report, chain.bottomPath() + '/' + longer);
    QVERIFY(fits && overlong);
    QCOMPARE(fits->fullpath().size(), qsizetype(PATH_MAX - 1));
    QCOMPARE(fits->filesize(), 0.0);
    QCOMPARE(overlong->filesize(), -1.0);
}

void FileUtilsScanTest::anOverlongFolderIsNotedOncePerBranch()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/a", "top/b"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    const FolderChain first(scratch.path("top/a"), QByteArray(250, 'n'), 20);
    const FolderChain second(scratch.path("top/b"), QByteArray(250, 'n'), 20);
    QVERIFY(first.isComplete() && second.isComplete());
    const RecordedLog log;
    FileUtils fileUtils;
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    const ScanFailures failures = fileUtils.takeScanFailures();
    QCOMPARE(failures.size(), std::size_t(2));
    for (const ScanFailure &failure : failures) {
        QCOMPARE(failure.errornr, ENAMETOOLONG);
        QCOMPARE(failure.errormsg, systemText(ENAMETOOLONG));
        QVERIFY(failure.path.size() >= PATH_MAX && failure.path.size() < PATH_MAX + 251);
        QVERIFY(report.folders.contains(failure.path.first(failure.path.size() - 251)));
    }
    for (const auto &folder : report.folders)
        QVERIFY(folder.first.size() < PATH_MAX);
    QCOMPARE(log.lines().size(), 2);
}

void FileUtilsScanTest::anOverlongItemIsQueuedWithSizeMinusOne()
{
    const Scratch scratch;
    FolderChain chain(scratch.path(), QByteArray(250, 'n'), 17);
    QVERIFY(chain.isComplete() && chain.addFile("file"));
    FileUtils fileUtils;
    for (const QByteArray &path : {chain.bottomPath() + "/file", chain.bottomPath()}) {
        const ScanReport report = fileUtils.readFilesFromPath(path);
        QCOMPARE(Reports::files(report), QByteArrayList({path}));
        QCOMPARE(report.files.front()->filesize(), -1.0);
        QVERIFY(report.folders.empty());
    }
}

void FileUtilsScanTest::aStopEndsTheWalkAfterTheEntry()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty());
    for (int number = 0; number < 20; ++number)
        QVERIFY(!scratch.file("top/" + QByteArray::number(number), "x").isEmpty());
    FileUtils fileUtils;
    fileUtils.cancelScanProcess();
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QCOMPARE(report.files.size(), std::size_t(1));
    QCOMPARE(Reports::folders(report), QByteArrayList({scratch.path("top")}));
}

void FileUtilsScanTest::aStopInsideAWideFolderKeepsWhatWasFound()
{
    constexpr std::size_t files = 2000;
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("top/inner").isEmpty());
    for (std::size_t number = 0; number < files; ++number)
        QVERIFY(!scratch.file("top/" + QByteArray::number(number), "").isEmpty());
    FileUtils fileUtils;
    ScriptedSystemCalls calls;
    calls.folderCapacity = 4096;
    int reads = 0;
    calls.beforeReadFolder = [&] {
        if (++reads == 3)
            fileUtils.cancelScanProcess();
    };
    const SystemCalls::Replacement replacement(calls);
    const ScanReport report = fileUtils.readFilesFromPath(scratch.path("top"));
    QVERIFY(report.files.size() > 100 && report.files.size() < files / 2);
    QCOMPARE(reads, 3);
    QCOMPARE(Reports::folders(report), QByteArrayList({scratch.path("top")}));
    QVERIFY(fileUtils.takeScanFailures().empty());
}

void FileUtilsScanTest::aStopMarksTheFoldersThatItCutShort()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("top/done").isEmpty());
    QVERIFY(!scratch.folder("top/done/inside").isEmpty());
    FileUtils fileUtils;
    const FolderMap whole = fileUtils.readFilesFromPath(scratch.path("top")).folders;
    QCOMPARE(whole.size(), std::size_t(3));
    for (const auto &[path, facts] : whole)
        QVERIFY2(!facts.isUnfinished, path.constData());

    QVERIFY(!scratch.file("top/.hidden", "x").isEmpty());
    fileUtils.cancelScanProcess();
    const FolderMap cut = fileUtils.readFilesFromPath(scratch.path("top")).folders;
    QCOMPARE(cut.size(), std::size_t(1));
    QVERIFY(cut.begin()->second.isUnfinished);
}

void FileUtilsScanTest::anUnfinishedFolderIsRemovedOnlyIfItIsEmpty()
{
    const Scratch scratch;
    const QByteArray folder = scratch.folder("folder");
    const QByteArray hidden = scratch.file("folder/.hidden", "kept");
    ScanFacts facts;
    facts.isUnfinished = true;
    const FolderSweep kept = FileUtils().deleteFoldersFromArray({{folder, facts}});
    QVERIFY(Scratch::exists(hidden));
    QCOMPARE(kept.kept.size(), std::size_t(1));
    QVERIFY(QFile::remove(QFile::decodeName(hidden)));
    const FolderSweep gone = FileUtils().deleteFoldersFromArray({{folder, facts}});
    QVERIFY(!Scratch::exists(folder) && gone.kept.empty());
}

void FileUtilsScanTest::aStopBeforehandStillTakesAFile()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("file", "x");
    FileUtils fileUtils;
    fileUtils.cancelScanProcess();
    QCOMPARE(Reports::files(fileUtils.readFilesFromPath(file)), QByteArrayList({file}));
}

void FileUtilsScanTest::aStopStaysUntilItIsTakenBack()
{
    const Scratch scratch;
    for (int number = 0; number < 20; ++number)
        QVERIFY(!scratch.file(QByteArray::number(number), "x").isEmpty());
    FileUtils fileUtils;
    QVERIFY(!fileUtils.shouldCancel());
    fileUtils.cancelScanProcess();
    QVERIFY(fileUtils.shouldCancel());
    QCOMPARE(fileUtils.readFilesFromPath(scratch.path()).files.size(), std::size_t(1));
    QVERIFY(fileUtils.shouldCancel());
    fileUtils.setShouldCancel(false);
    QCOMPARE(fileUtils.readFilesFromPath(scratch.path()).files.size(), std::size_t(20));
}

QTEST_GUILESS_MAIN(FileUtilsScanTest)
#include "FileUtilsScanTest.moc"
