#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QTest>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <system_error>

namespace {

using Paths = std::vector<QByteArray>;

QString failureLine(const QByteArray &path, int error)
{
    return QStringLiteral("-[FileUtils deleteFolder:] ") + QString::fromUtf8(path) +
           QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error));
}

Paths sorted(Paths paths)
{
    std::sort(paths.begin(), paths.end());
    return paths;
}

ScanFacts facts(qsizetype givenLength, bool isLink = false)
{
    ScanFacts facts;
    facts.givenLength = std::int32_t(givenLength);
    facts.isLink = isLink;
    return facts;
}

/// Lets something happen once, at the end of the first listing of a folder.
class MeddlingAfterTheFirstListing final : public ForwardingSystemCalls
{
  public:
    explicit MeddlingAfterTheFirstListing(std::function<void()> deed) : deed_(std::move(deed)) {}

    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        const std::int64_t count = ForwardingSystemCalls::readFolder(fd, buffer, capacity);
        if (count == 0 && deed_)
            std::exchange(deed_, {})();
        return count;
    }

  private:
    std::function<void()> deed_;
};

/// Lets something happen once, right before the first folder is removed.
class MeddlingBeforeARemoval final : public ForwardingSystemCalls
{
  public:
    explicit MeddlingBeforeARemoval(std::function<void()> deed) : deed_(std::move(deed)) {}

    int removeFolder(int folder, const char *name) override
    {
        if (deed_)
            std::exchange(deed_, {})();
        return ForwardingSystemCalls::removeFolder(folder, name);
    }

  private:
    std::function<void()> deed_;
};

/// No folder can be listed.
class FaultyListing final : public ForwardingSystemCalls
{
  public:
    std::int64_t readFolder(int /*fd*/, void * /*buffer*/, std::size_t /*capacity*/) override
    {
        return -EIO;
    }
};

/// Removes nothing, whatever it is asked to remove, and shows every folder as empty.
class HarmlessSystemCalls final : public ForwardingSystemCalls
{
  public:
    std::int64_t readFolder(int /*fd*/, void * /*buffer*/, std::size_t /*capacity*/) override
    {
        return 0;
    }
    int unlink(int /*folder*/, const char * /*name*/) override { return refuse(); }
    int removeFolder(int /*folder*/, const char * /*name*/) override { return refuse(); }

    int refusals = 0;

  private:
    int refuse()
    {
        ++refusals;
        return -EROFS;
    }
};

} // namespace

class FileUtilsFoldersTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void onlyVisibleEntriesCountInAFolder_data();
    void onlyVisibleEntriesCountInAFolder();
    void whatCannotBeListedIsAnEmptyFolder_data();
    void whatCannotBeListedIsAnEmptyFolder();
    void aLinkIsAsEmptyAsTheFolderBehindIt();
    void thousandsOfHiddenEntriesDoNotCountEither();

    void deleteFolderRemovesWhateverTheFolderHolds();
    void deleteFolderPassesOverSlashesAtTheEnd();
    void deleteFolderOfNoPathOrAnEmptyOneDoesNothing();
    void deleteFolderLeavesAFile();
    void deleteFolderLeavesALinkAndItsTarget();
    void deleteFolderFollowsNoLinkInside();
    void deleteFolderOfAMissingFolderIsLogged();
    void deleteFolderRefusesAProtectedPlace_data();
    void deleteFolderRefusesAProtectedPlace();

    void theSweepLeavesAFolderThatHoldsAVisibleEntry_data();
    void theSweepLeavesAFolderThatHoldsAVisibleEntry();
    void theSweepRemovesAFolderThatHoldsOnlyAHiddenFile();
    void theSweepRemovesAHiddenTreeWithItsVisibleFiles();
    void theSweepFollowsNoHiddenLink();
    void theSweepNamesTheHiddenFilesThatWentUnoverwritten();
    void theSweepNamesTheFoldersThatWent();
    void aParentEmptiedByItsChildGoesInTheSameSweep();
    void theSweepIsASingleOne();
    void aFolderThatIsGoneIsLoggedAndTheSweepGoesOn();

    void aDroppedLinkToAnEmptyFolderGoesAndTheFolderStays();
    void aDroppedLinkToAFolderWithHiddenFilesGoesAndTheyStay();
    void aDroppedLinkToAFullFolderStays();
    void aDroppedLinkThatBecameAFolderStays();
    void aDroppedLinkThatBecameAFileStays();

    void aFolderSwappedForALinkStaysAndTheTargetIsUntouched();
    void aFolderSwappedForAFileStays();
    void aFolderBelowAComponentSwappedForALinkStays();
    void aLinkInTheGivenPartIsFollowed();

    void whatAppearsAfterTheEmptinessCheckSurvivesAndKeepsTheFolder_data();
    void whatAppearsAfterTheEmptinessCheckSurvivesAndKeepsTheFolder();
    void slashesAtTheEndLetNoVisibleFileGo();
    void whatAppearsRightBeforeTheRemovalSurvivesAndKeepsTheFolder();
    void aFolderThatFailsInItsListingStays();
    void theSweepRefusesAProtectedPlace_data();
    void theSweepRefusesAProtectedPlace();

  private:
    /// Sweeps folders of the scratch folder as a scan of them would have noted them.
    FolderSweep sweep(const QByteArrayList &names) const;

    std::unique_ptr<Scratch> scratch_;
};

void FileUtilsFoldersTest::init()
{
    scratch_ = std::make_unique<Scratch>();
}

/// Qt leaves names that are not UTF-8 behind.
void FileUtilsFoldersTest::cleanup()
{
    std::error_code ignored;
    std::filesystem::remove_all(scratch_->path().constData(), ignored);
    scratch_.reset();
}

FolderSweep FileUtilsFoldersTest::sweep(const QByteArrayList &names) const
{
    FileUtils::FolderPaths folders;
    for (const QByteArray &name : names)
        folders.emplace_back(scratch_->path(name), facts(scratch_->path().size()));
    return FileUtils().deleteFoldersFromArray(folders);
}

void FileUtilsFoldersTest::onlyVisibleEntriesCountInAFolder_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("isEmpty");
    QTest::newRow("nothing") << QByteArray() << QByteArray() << true;
    QTest::newRow("visible file") << QByteArray() << QByteArray("file") << false;
    QTest::newRow("visible folder") << QByteArray("folder") << QByteArray() << false;
    QTest::newRow("hidden file") << QByteArray() << QByteArray(".DS_Store") << true;
    QTest::newRow("hidden folder") << QByteArray(".git") << QByteArray() << true;
    QTest::newRow("visible file in a hidden folder")
        << QByteArray(".git") << QByteArray(".git/config") << true;
    QTest::newRow("hidden and visible") << QByteArray(".git") << QByteArray("file") << false;
    QTest::newRow("name of three full stops") << QByteArray() << QByteArray("...") << true;
    QTest::newRow("full stop at the end") << QByteArray() << QByteArray("a.") << false;
    QTest::newRow("name that is not UTF-8") << QByteArray() << QByteArray("\xFF") << false;
    QTest::newRow("hidden name that is not UTF-8") << QByteArray() << QByteArray(".\xFF") << true;
}

void FileUtilsFoldersTest::onlyVisibleEntriesCountInAFolder()
{
    QFETCH(QByteArray, folder);
    QFETCH(QByteArray, file);
    QFETCH(bool, isEmpty);
    const QByteArray top = scratch_->folder("top");
    if (!folder.isEmpty())
        QVERIFY(!scratch_->folder("top/" + folder).isEmpty());
    if (!file.isEmpty())
        QVERIFY(!scratch_->file("top/" + file, 1).isEmpty());
    QCOMPARE(FileUtils().isEmptyFolder(top), isEmpty);
}

void FileUtilsFoldersTest::whatCannotBeListedIsAnEmptyFolder_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("missing") << QByteArray("missing");
    QTest::newRow("file") << QByteArray("file");
    QTest::newRow("dangling link") << QByteArray("dangling");
}

void FileUtilsFoldersTest::whatCannotBeListedIsAnEmptyFolder()
{
    QFETCH(QByteArray, name);
    scratch_->file("file", 1);
    scratch_->link("dangling", "missing");
    QVERIFY(FileUtils().isEmptyFolder(scratch_->path(name)));
}

void FileUtilsFoldersTest::aLinkIsAsEmptyAsTheFolderBehindIt()
{
    scratch_->folder("target");
    const QByteArray link = scratch_->link("link", "target");
    QVERIFY(FileUtils().isEmptyFolder(link));
    scratch_->file("target/file", 1);
    QVERIFY(!FileUtils().isEmptyFolder(link));
}

void FileUtilsFoldersTest::thousandsOfHiddenEntriesDoNotCountEither()
{
    const QByteArray top = scratch_->folder("top");
    for (int number = 0; number < 3000; ++number)
        scratch_->file("top/." + QByteArray::number(number), 0);
    QVERIFY(FileUtils().isEmptyFolder(top));
    scratch_->file("top/visible", 0);
    QVERIFY(!FileUtils().isEmptyFolder(top));
}

void FileUtilsFoldersTest::deleteFolderRemovesWhateverTheFolderHolds()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("top/.hidden");
    scratch_->folder("top/visible");
    scratch_->folder("top/visible/\xFF");
    scratch_->file("top/file", 1);
    scratch_->file("top/.hidden/file", 1);
    scratch_->file("top/visible/\xFF/\n", 1);
    scratch_->link("top/dangling", "nothing");
    QCOMPARE(::mkfifo(scratch_->path("top/fifo").constData(), 0600), 0);
    const RecordedLog log;
    FileUtils().deleteFolder(top);
    QVERIFY(!Scratch::exists(top));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsFoldersTest::deleteFolderPassesOverSlashesAtTheEnd()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("top/inner");
    scratch_->file("top/inner/file", 1);
    FileUtils().deleteFolder(top + "//");
    QVERIFY(!Scratch::exists(top));
}

void FileUtilsFoldersTest::deleteFolderOfNoPathOrAnEmptyOneDoesNothing()
{
    HarmlessSystemCalls calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils().deleteFolder(QByteArray());
    FileUtils().deleteFolder(QByteArray(""));
    QCOMPARE(calls.refusals, 0);
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsFoldersTest::deleteFolderLeavesAFile()
{
    const QByteArray path = scratch_->file("file", QByteArray("kept"));
    const RecordedLog log;
    FileUtils().deleteFolder(path);
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine(path, ENOTDIR)));
}

void FileUtilsFoldersTest::deleteFolderLeavesALinkAndItsTarget()
{
    scratch_->folder("target");
    const QByteArray file = scratch_->file("target/file", QByteArray("kept"));
    const QByteArray link = scratch_->link("link", "target");
    const RecordedLog log;
    FileUtils().deleteFolder(link);
    QVERIFY(Scratch::exists(link));
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QCOMPARE(log.lines().size(), 1);
}

void FileUtilsFoldersTest::deleteFolderFollowsNoLinkInside()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("outside");
    const QByteArray file = scratch_->file("outside/file", QByteArray("kept"));
    scratch_->link("top/folder link", "../outside");
    scratch_->link("top/file link", "../outside/file");
    FileUtils().deleteFolder(top);
    QVERIFY(!Scratch::exists(top));
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
}

void FileUtilsFoldersTest::deleteFolderOfAMissingFolderIsLogged()
{
    const QByteArray path = scratch_->path("missing");
    const RecordedLog log;
    FileUtils().deleteFolder(path);
    QCOMPARE(log.lines(), QStringList(failureLine(path, ENOENT)));
}

void FileUtilsFoldersTest::deleteFolderRefusesAProtectedPlace_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("root folder") << QByteArray("/");
    QTest::newRow("proc") << QByteArray("/proc");
    QTest::newRow("sys") << QByteArray("/sys");
    QTest::newRow("dev") << QByteArray("/dev");
    QTest::newRow("root folder through another") << QByteArray("/proc/..");
}

void FileUtilsFoldersTest::deleteFolderRefusesAProtectedPlace()
{
    QFETCH(QByteArray, path);
    HarmlessSystemCalls calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils().deleteFolder(path);
    QCOMPARE(calls.refusals, 0);
    QCOMPARE(log.lines(), QStringList(failureLine(path, EPERM)));
}

void FileUtilsFoldersTest::theSweepLeavesAFolderThatHoldsAVisibleEntry_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("folder");
    QTest::newRow("file") << QByteArray("file") << QByteArray();
    QTest::newRow("folder") << QByteArray() << QByteArray("folder");
}

void FileUtilsFoldersTest::theSweepLeavesAFolderThatHoldsAVisibleEntry()
{
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, folder);
    const QByteArray top = scratch_->folder("top");
    const QByteArray hidden = scratch_->file("top/.hidden", QByteArray("kept"));
    if (!file.isEmpty())
        scratch_->file("top/" + file, QByteArray("kept"));
    if (!folder.isEmpty())
        scratch_->folder("top/" + folder);
    const RecordedLog log;
    QVERIFY(sweep({"top"}).removedFiles.empty());
    QVERIFY(Scratch::exists(scratch_->path("top/" + file + folder)));
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsFoldersTest::theSweepRemovesAFolderThatHoldsOnlyAHiddenFile()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->file("top/.DS_Store", 100);
    sweep({"top"});
    QVERIFY(!Scratch::exists(top));
}

void FileUtilsFoldersTest::theSweepRemovesAHiddenTreeWithItsVisibleFiles()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("top/.git");
    scratch_->folder("top/.git/objects");
    scratch_->folder("top/.git/objects/.deeper");
    scratch_->file("top/.git/objects/visible", 1);
    scratch_->file("top/.git/objects/.deeper/.hidden", 1);
    sweep({"top"});
    QVERIFY(!Scratch::exists(top));
}

void FileUtilsFoldersTest::theSweepFollowsNoHiddenLink()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("outside");
    const QByteArray file = scratch_->file("outside/file", QByteArray("kept"));
    scratch_->link("top/.link", "../outside");
    sweep({"top"});
    QVERIFY(!Scratch::exists(top));
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
}

void FileUtilsFoldersTest::theSweepNamesTheHiddenFilesThatWentUnoverwritten()
{
    scratch_->folder("top");
    scratch_->folder("top/.git");
    scratch_->folder("empty");
    scratch_->folder("full");
    scratch_->file("full/.kept", 1);
    scratch_->file("full/visible", 1);
    const QByteArray first = scratch_->file("top/.first", 1);
    const QByteArray second = scratch_->file("top/.git/second", 1);
    QVERIFY(sorted(sweep({"top", "full", "empty"}).removedFiles) == (Paths{first, second}));
}

void FileUtilsFoldersTest::theSweepNamesTheFoldersThatWent()
{
    const QByteArray top = scratch_->folder("top");
    const QByteArray hidden = scratch_->folder("top/.hidden");
    const QByteArray inner = scratch_->folder("top/.hidden/inner");
    const QByteArray empty = scratch_->folder("empty");
    scratch_->folder("full");
    scratch_->file("full/visible", 1);
    const RecordedLog log;
    const FolderSweep gone = sweep({"top", "gone", "full", "empty"});
    QVERIFY(sorted(gone.removedFolders) == sorted({top, hidden, inner, empty}));
}

void FileUtilsFoldersTest::aParentEmptiedByItsChildGoesInTheSameSweep()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("top/middle");
    scratch_->folder("top/middle/leaf");
    scratch_->file("top/middle/leaf/.hidden", 1);
    sweep({"top/middle/leaf", "top/middle", "top"});
    QVERIFY(!Scratch::exists(top));
}

void FileUtilsFoldersTest::theSweepIsASingleOne()
{
    scratch_->folder("top");
    const QByteArray leaf = scratch_->folder("top/leaf");
    sweep({"top", "top/leaf"});
    QVERIFY(!Scratch::exists(leaf));
    QVERIFY(Scratch::exists(scratch_->path("top")));
}

void FileUtilsFoldersTest::aFolderThatIsGoneIsLoggedAndTheSweepGoesOn()
{
    const QByteArray top = scratch_->folder("top");
    const RecordedLog log;
    sweep({"gone", "top"});
    QVERIFY(!Scratch::exists(top));
    QCOMPARE(log.lines(), QStringList(failureLine(scratch_->path("gone"), ENOENT)));
}

void FileUtilsFoldersTest::aDroppedLinkToAnEmptyFolderGoesAndTheFolderStays()
{
    const QByteArray target = scratch_->folder("target");
    const QByteArray link = scratch_->link("link", "target");
    FileUtils().deleteFoldersFromArray({{link, facts(scratch_->path().size(), true)}});
    QVERIFY(!Scratch::exists(link));
    QVERIFY(Scratch::exists(target));
}

void FileUtilsFoldersTest::aDroppedLinkToAFolderWithHiddenFilesGoesAndTheyStay()
{
    scratch_->folder("target");
    const QByteArray hidden = scratch_->file("target/.hidden", QByteArray("kept"));
    const QByteArray link = scratch_->link("link", "target");
    const FolderSweep gone =
        FileUtils().deleteFoldersFromArray({{link, facts(scratch_->path().size(), true)}});
    QVERIFY(gone.removedFiles.empty());
    QVERIFY(gone.removedFolders == Paths{link});
    QVERIFY(!Scratch::exists(link));
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
}

void FileUtilsFoldersTest::aDroppedLinkToAFullFolderStays()
{
    scratch_->folder("target");
    const QByteArray file = scratch_->file("target/file", QByteArray("kept"));
    const QByteArray link = scratch_->link("link", "target");
    FileUtils().deleteFoldersFromArray({{link, facts(scratch_->path().size(), true)}});
    QVERIFY(Scratch::exists(link));
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
}

void FileUtilsFoldersTest::aDroppedLinkThatBecameAFolderStays()
{
    const QByteArray folder = scratch_->folder("link");
    FileUtils().deleteFoldersFromArray({{folder, facts(scratch_->path().size(), true)}});
    QVERIFY(Scratch::exists(folder));
}

void FileUtilsFoldersTest::aDroppedLinkThatBecameAFileStays()
{
    const QByteArray file = scratch_->file("link", QByteArray("kept"));
    FileUtils().deleteFoldersFromArray({{file, facts(scratch_->path().size(), true)}});
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
}

void FileUtilsFoldersTest::aFolderSwappedForALinkStaysAndTheTargetIsUntouched()
{
    const QByteArray target = scratch_->folder("target");
    const QByteArray hidden = scratch_->file("target/.hidden", QByteArray("kept"));
    const QByteArray swapped = scratch_->link("top", "target");
    sweep({"top"});
    QVERIFY(Scratch::exists(swapped));
    QVERIFY(Scratch::exists(target));
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
}

void FileUtilsFoldersTest::aFolderSwappedForAFileStays()
{
    const QByteArray swapped = scratch_->file("top", QByteArray("kept"));
    const RecordedLog log;
    sweep({"top"});
    QCOMPARE(Scratch::content(swapped), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine(swapped, ENOTDIR)));
}

void FileUtilsFoldersTest::aFolderBelowAComponentSwappedForALinkStays()
{
    scratch_->folder("top");
    scratch_->folder("outside");
    const QByteArray leaf = scratch_->folder("outside/leaf");
    const QByteArray hidden = scratch_->file("outside/leaf/.hidden", QByteArray("kept"));
    scratch_->link("top/middle", "../outside");
    sweep({"top/middle/leaf"});
    QVERIFY(Scratch::exists(leaf));
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
}

void FileUtilsFoldersTest::aLinkInTheGivenPartIsFollowed()
{
    scratch_->folder("outside");
    const QByteArray leaf = scratch_->folder("outside/leaf");
    const QByteArray given = scratch_->link("given", "outside");
    FileUtils().deleteFoldersFromArray({{given + "/leaf", facts(given.size())}});
    QVERIFY(!Scratch::exists(leaf));
    QVERIFY(Scratch::exists(given));
}

void FileUtilsFoldersTest::whatAppearsAfterTheEmptinessCheckSurvivesAndKeepsTheFolder_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("visible file") << false;
    QTest::newRow("visible folder with a file") << true;
}

void FileUtilsFoldersTest::whatAppearsAfterTheEmptinessCheckSurvivesAndKeepsTheFolder()
{
    QFETCH(bool, isFolder);
    const QByteArray top = scratch_->folder("top");
    scratch_->file("top/.hidden", 1);
    QByteArray file;
    MeddlingAfterTheFirstListing calls([this, isFolder, &file] {
        if (isFolder)
            scratch_->folder("top/new");
        file = scratch_->file(isFolder ? "top/new/file" : "top/new", QByteArray("kept"));
    });
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    sweep({"top"});
    QVERIFY(!file.isEmpty());
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QVERIFY(Scratch::exists(top));
    QCOMPARE(log.lines(), QStringList(failureLine(top, ENOTEMPTY)));
}

void FileUtilsFoldersTest::slashesAtTheEndLetNoVisibleFileGo()
{
    scratch_->folder("top");
    QByteArray file;
    MeddlingAfterTheFirstListing calls([this, &file] {
        scratch_->folder("top/new");
        file = scratch_->file("top/new/file", QByteArray("kept"));
    });
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    sweep({"top//"});
    QVERIFY(!file.isEmpty());
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
}

void FileUtilsFoldersTest::whatAppearsRightBeforeTheRemovalSurvivesAndKeepsTheFolder()
{
    const QByteArray top = scratch_->folder("top");
    QByteArray file;
    MeddlingBeforeARemoval calls(
        [this, &file] { file = scratch_->file("top/new", QByteArray("kept")); });
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    sweep({"top"});
    QVERIFY(!file.isEmpty());
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine(top, ENOTEMPTY)));
}

/// It counts as empty, but what could not be listed is not taken away unseen.
void FileUtilsFoldersTest::aFolderThatFailsInItsListingStays()
{
    const QByteArray top = scratch_->folder("top");
    const QByteArray hidden = scratch_->file("top/.hidden", QByteArray("kept"));
    FaultyListing calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    QVERIFY(FileUtils().isEmptyFolder(top));
    sweep({"top"});
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine(top, EIO)));
}

void FileUtilsFoldersTest::theSweepRefusesAProtectedPlace_data()
{
    deleteFolderRefusesAProtectedPlace_data();
}

void FileUtilsFoldersTest::theSweepRefusesAProtectedPlace()
{
    QFETCH(QByteArray, path);
    HarmlessSystemCalls calls;
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    FileUtils().deleteFoldersFromArray({{path, facts(0)}});
    QCOMPARE(calls.refusals, 0);
    QCOMPARE(log.lines(), QStringList(failureLine(path, EPERM)));
}

QTEST_GUILESS_MAIN(FileUtilsFoldersTest)
#include "FileUtilsFoldersTest.moc"
