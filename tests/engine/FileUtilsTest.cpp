#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"
#include "platform/Descriptor.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

namespace {

/// One line of the log about a call that failed.
QString failureLine(const char *operation, const QByteArray &path, int error)
{
    return QString::fromLocal8Bit(operation) + QLatin1Char(' ') + QString::fromUtf8(path) +
           QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error));
}

/// Counts what reaches the operating system.
class CountingSystemCalls final : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        ++calls;
        return ForwardingSystemCalls::open(folder, path, access, lastLink);
    }
    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        ++calls;
        return ForwardingSystemCalls::statusAt(folder, path, lastLink, status);
    }

    int calls = 0;
};

/// Refuses what only the owner of a file may do.
class FaultySetPermissions final : public ForwardingSystemCalls
{
  public:
    int setPermissions(int /*handle*/, std::uint32_t /*permissions*/) override { return -EPERM; }
};

} // namespace

class FileUtilsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { scratch_ = std::make_unique<Scratch>(); }
    /// Qt leaves names that are not UTF-8 behind.
    void cleanup()
    {
        std::error_code ignored;
        std::filesystem::remove_all(scratch_->path().constData(), ignored);
        scratch_.reset();
    }

    void whatStandsAtAPath_data();
    void whatStandsAtAPath();
    void sizesOfWhatStandsAtAPath_data();
    void sizesOfWhatStandsAtAPath();
    void bytesOfNoPathAreZero();
    void aLinksOwnBytesAreCounted();
    void aSparseFileHasItsWholeSize();

    void pathsAreTakenApart_data();
    void pathsAreTakenApart();
    void aLocationKeepsThePathsBytes();

    void deleteFileRemovesTheFile();
    void deleteFileOfAMissingFileFailsAndIsLogged();
    void deleteFileLeavesAFolderAndIsLogged();
    void deleteFileOfALinkLeavesItsTarget_data();
    void deleteFileOfALinkLeavesItsTarget();
    void deleteFileInAnOpenFolderRemovesTheLastComponent();
    void namesAreLoggedOnOneLine();

    void errorTwoIsLeftAloneAndNothingIsTouched();
    void otherErrorsAreLeftAlone_data();
    void otherErrorsAreLeftAlone();
    void errorThirteenSetsThePermissionsTo0777_data();
    void errorThirteenSetsThePermissionsTo0777();
    void permissionsOfALinkAreItsTargets();
    void permissionsOfAMissingFileCannotBeSet();
    void permissionsThatTheSystemRefusesToSetAreAFailure();
    void noPathHasItsPermissionsAndTheEmptyPathHasNot();
    void permissionsAreSetByLocation();
    void errorOneOfAFileWithoutTheFlagIsNotRepaired();
    void unlockingAMissingFileFails();

    void truncateSizeCutsToNothing();
    void truncateSizeThatFailsIsLogged_data();
    void truncateSizeThatFailsIsLogged();

    void aScrambledFileKeepsItsFolderAndContent();
    void aScrambledNameThatIsNotUtf8IsReplaced();
    void scramblingAMissingFileAnswersTheLocationPassedIn();
    void randomFilenamesAreSixToTwentyLettersAFullStopAndThree();

  private:
    std::unique_ptr<Scratch> scratch_;
};

void FileUtilsTest::whatStandsAtAPath_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("folderExists");
    QTest::addColumn<bool>("fileExists");
    QTest::addColumn<bool>("isFile");
    QTest::newRow("folder") << QByteArray("folder") << true << false << false;
    QTest::newRow("file") << QByteArray("file") << false << true << true;
    QTest::newRow("nothing") << QByteArray("nothing") << false << false << true;
    QTest::newRow("link to a folder") << QByteArray("folder link") << true << false << false;
    QTest::newRow("link to a file") << QByteArray("file link") << false << true << true;
    QTest::newRow("dangling link") << QByteArray("dangling") << false << false << true;
    QTest::newRow("FIFO") << QByteArray("fifo") << false << true << true;
    QTest::newRow("name that is not UTF-8") << QByteArray("\xFF\xFE") << false << true << true;
    QTest::newRow("below a file") << QByteArray("file/below") << false << false << true;
}

void FileUtilsTest::whatStandsAtAPath()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, folderExists);
    QFETCH(bool, fileExists);
    QFETCH(bool, isFile);
    scratch_->folder("folder");
    scratch_->file("file", 1);
    scratch_->file("\xFF\xFE", 1);
    scratch_->link("folder link", "folder");
    scratch_->link("file link", "file");
    scratch_->link("dangling", "nothing");
    QCOMPARE(::mkfifo(scratch_->path("fifo").constData(), 0600), 0);

    const QByteArray path = scratch_->path(name);
    QCOMPARE(FileUtils::doesFolderExists(FileUrl(path)), folderExists);
    QCOMPARE(FileUtils().checkIfFolder(path), folderExists);
    QCOMPARE(FileUtils::doesFileExists(FileUrl(path)), fileExists);
    QCOMPARE(FileUtils::isFile(FileUrl(path)), isFile);
}

void FileUtilsTest::sizesOfWhatStandsAtAPath_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<qint64>("bytes");
    QTest::newRow("file") << QByteArray("file") << qint64(4097) << qint64(4097);
    QTest::newRow("empty file") << QByteArray("empty") << qint64(0) << qint64(0);
    QTest::newRow("missing") << QByteArray("missing") << qint64(-1) << qint64(0);
    QTest::newRow("dangling link") << QByteArray("dangling") << qint64(-1) << qint64(7);
    QTest::newRow("below a file") << QByteArray("file/below") << qint64(-1) << qint64(0);
    QTest::newRow("longer than the system allows")
        << QByteArray(5000, 'a') << qint64(-1) << qint64(0);
}

void FileUtilsTest::sizesOfWhatStandsAtAPath()
{
    QFETCH(QByteArray, name);
    QFETCH(qint64, size);
    QFETCH(qint64, bytes);
    scratch_->file("file", 4097);
    scratch_->file("empty", 0);
    scratch_->link("dangling", "missing");
    const QByteArray path = scratch_->path(name);
    QCOMPARE(qint64(FileUtils().getFileSizeFor(path)), size);
    QCOMPARE(qint64(FileUtils::bytesOfFilePath(path)), bytes);
}

void FileUtilsTest::bytesOfNoPathAreZero()
{
    QCOMPARE(FileUtils::bytesOfFilePath(QByteArray()), std::int64_t(0));
}

void FileUtilsTest::aLinksOwnBytesAreCounted()
{
    scratch_->file("target", 4097);
    const QByteArray link = scratch_->link("link", "target");
    QCOMPARE(FileUtils().getFileSizeFor(link), std::int64_t(4097));
    QCOMPARE(FileUtils::bytesOfFilePath(link), std::int64_t(std::strlen("target")));
}

void FileUtilsTest::aSparseFileHasItsWholeSize()
{
    constexpr std::int64_t size = std::int64_t(5) << 30;
    const QByteArray path = scratch_->file("sparse", 0);
    QCOMPARE(::truncate(path.constData(), size), 0);
    QCOMPARE(FileUtils().getFileSizeFor(path), size);
    QCOMPARE(FileUtils::bytesOfFilePath(path), size);
}

void FileUtilsTest::pathsAreTakenApart_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("some folders deep")
        << QByteArray("/a/b/c.txt") << QByteArray("/a/b") << QByteArray("c.txt");
    QTest::newRow("in the root folder")
        << QByteArray("/c.txt") << QByteArray("/") << QByteArray("c.txt");
    QTest::newRow("hidden") << QByteArray("/a/.c") << QByteArray("/a") << QByteArray(".c");
    QTest::newRow("blanks, semicolons and line breaks")
        << QByteArray("/a b/c;d\ne") << QByteArray("/a b") << QByteArray("c;d\ne");
    QTest::newRow("not UTF-8") << QByteArray("/\xFF/\xC3") << QByteArray("/\xFF")
                               << QByteArray("\xC3");
}

void FileUtilsTest::pathsAreTakenApart()
{
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, folder);
    QFETCH(QByteArray, name);
    QCOMPARE(FileUtils().extractFilePathFrom(path), folder);
    QCOMPARE(FileUtils().extractFileNameFrom(path), name);
}

void FileUtilsTest::aLocationKeepsThePathsBytes()
{
    const QByteArray path = "/a b/%2F;\xFF\n";
    QCOMPARE(FileUtils().makeUrlFromFilePath(path).path(), path);
}

void FileUtilsTest::deleteFileRemovesTheFile()
{
    const QByteArray path = scratch_->file("file", 10);
    const RecordedLog log;
    QVERIFY(FileUtils().deleteFile(FileUrl(path)));
    QVERIFY(!Scratch::exists(path));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsTest::deleteFileOfAMissingFileFailsAndIsLogged()
{
    const QByteArray path = scratch_->path("missing");
    const RecordedLog log;
    QVERIFY(!FileUtils().deleteFile(FileUrl(path)));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFile:]", path, ENOENT)));
}

void FileUtilsTest::deleteFileLeavesAFolderAndIsLogged()
{
    const QByteArray path = scratch_->folder("folder");
    const RecordedLog log;
    QVERIFY(!FileUtils().deleteFile(FileUrl(path)));
    QVERIFY(Scratch::exists(path));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFile:]", path, EISDIR)));
}

void FileUtilsTest::deleteFileOfALinkLeavesItsTarget_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("to a file") << QByteArray("file");
    QTest::newRow("to a folder") << QByteArray("folder");
    QTest::newRow("to nothing") << QByteArray("nothing");
}

void FileUtilsTest::deleteFileOfALinkLeavesItsTarget()
{
    QFETCH(QByteArray, target);
    const QByteArray file = scratch_->file("file", QByteArray("kept"));
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray link = scratch_->link("link", target);
    QVERIFY(FileUtils().deleteFile(FileUrl(link)));
    QVERIFY(!Scratch::exists(link));
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QVERIFY(Scratch::exists(folder));
}

void FileUtilsTest::deleteFileInAnOpenFolderRemovesTheLastComponent()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray path = scratch_->file("folder/file", 1);
    const Descriptor handle(SystemCalls::real().open(SystemCalls::startFolder, folder.constData(),
                                                     SystemCalls::Access::FolderHandle,
                                                     SystemCalls::LastLink::Stop));
    QCOMPARE(FileUtils().deleteFileIn(handle.fd(), path), 0);
    QVERIFY(!Scratch::exists(path));

    const RecordedLog log;
    QCOMPARE(FileUtils().deleteFileIn(handle.fd(), path), ENOENT);
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFile:]", path, ENOENT)));
}

void FileUtilsTest::namesAreLoggedOnOneLine()
{
    const RecordedLog log;
    QVERIFY(!FileUtils().deleteFile(FileUrl(scratch_->path("a\nb\xFF"))));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFile:]",
                                                  scratch_->path("a\\nb\\xff"), ENOENT)));
}

void FileUtilsTest::errorTwoIsLeftAloneAndNothingIsTouched()
{
    const QByteArray path = scratch_->file("file", QByteArray("kept"));
    QCOMPARE(::chmod(path.constData(), 0444), 0);
    CountingSystemCalls calls;
    {
        const SystemCalls::Replacement replacement(calls);
        const RecordedLog log;
        QVERIFY(!FileUtils().fixError(2, path));
        QCOMPARE(log.lines(), QStringList());
    }
    QCOMPARE(calls.calls, 0);
    QCOMPARE(Scratch::permissions(path), mode_t(0444));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
}

void FileUtilsTest::otherErrorsAreLeftAlone_data()
{
    QTest::addColumn<int>("error");
    for (const int error : {0, 5, 11, 14, 30, -1, -13})
        QTest::addRow("%d", error) << error;
}

void FileUtilsTest::otherErrorsAreLeftAlone()
{
    QFETCH(int, error);
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0444), 0);
    QVERIFY(!FileUtils().fixError(error, path));
    QCOMPARE(Scratch::permissions(path), mode_t(0444));
}

void FileUtilsTest::errorThirteenSetsThePermissionsTo0777_data()
{
    QTest::addColumn<uint>("permissions");
    QTest::newRow("none") << 0000U;
    QTest::newRow("read only") << 0444U;
    QTest::newRow("all of them already") << 0777U;
    QTest::newRow("set-user-id") << 04755U;
}

void FileUtilsTest::errorThirteenSetsThePermissionsTo0777()
{
    QFETCH(uint, permissions);
    const QByteArray path = scratch_->file("file", QByteArray("kept"));
    QCOMPARE(::chmod(path.constData(), mode_t(permissions)), 0);
    const RecordedLog log;
    QVERIFY(FileUtils().fixError(13, path));
    QCOMPARE(Scratch::permissions(path), mode_t(0777));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(
        log.lines(),
        QStringList(
            QStringLiteral("-[FileUtils changePermissionsForFile:] Adding write permissions to ") +
            QString::fromUtf8(path)));
}

void FileUtilsTest::permissionsOfALinkAreItsTargets()
{
    const QByteArray target = scratch_->file("target", 1);
    const QByteArray link = scratch_->link("link", "target");
    QVERIFY(FileUtils().changePermissionsForFile(link));
    QCOMPARE(Scratch::permissions(target), mode_t(0777));
}

void FileUtilsTest::permissionsOfAMissingFileCannotBeSet()
{
    const QByteArray path = scratch_->path("missing");
    const RecordedLog log;
    QVERIFY(!FileUtils().changePermissionsForFile(path));
    QVERIFY(!Scratch::exists(path));
    QCOMPARE(log.lines().size(), 1);
}

void FileUtilsTest::permissionsThatTheSystemRefusesToSetAreAFailure()
{
    const QByteArray path = scratch_->file("file", 1);
    FaultySetPermissions calls;
    const SystemCalls::Replacement replacement(calls);
    QVERIFY(!FileUtils().fixError(13, path));
}

void FileUtilsTest::noPathHasItsPermissionsAndTheEmptyPathHasNot()
{
    const RecordedLog log;
    QVERIFY(FileUtils().changePermissionsForFile(QByteArray()));
    QVERIFY(FileUtils().changePermissionsForUrl(FileUrl()));
    QCOMPARE(log.lines(), QStringList());

    QVERIFY(!FileUtils().changePermissionsForFile(QByteArray("")));
    QCOMPARE(log.lines().size(), 1);
}

void FileUtilsTest::permissionsAreSetByLocation()
{
    const QByteArray path = scratch_->file("a b;\xFF", 1);
    QVERIFY(FileUtils().changePermissionsForUrl(FileUrl(path)));
    QCOMPARE(Scratch::permissions(path), mode_t(0777));
    QVERIFY(!FileUtils().changePermissionsForUrl(FileUrl(scratch_->path("missing"))));
}

void FileUtilsTest::errorOneOfAFileWithoutTheFlagIsNotRepaired()
{
    const QByteArray path = scratch_->file("file", QByteArray("kept"));
    const mode_t permissions = Scratch::permissions(path);
    const RecordedLog log;
    QVERIFY(!FileUtils().fixError(1, path));
    QVERIFY(!FileUtils().unlockFilepath(path));
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(Scratch::permissions(path), permissions);
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
}

void FileUtilsTest::unlockingAMissingFileFails()
{
    const RecordedLog log;
    QVERIFY(!FileUtils().unlockFilepath(scratch_->path("missing")));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsTest::truncateSizeCutsToNothing()
{
    const QByteArray path = scratch_->file("file", 5000);
    const RecordedLog log;
    QVERIFY(FileUtils().truncateSize(path));
    QVERIFY(Scratch::exists(path));
    QCOMPARE(FileUtils().getFileSizeFor(path), std::int64_t(0));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsTest::truncateSizeThatFailsIsLogged_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("error");
    QTest::newRow("missing") << QByteArray("missing") << ENOENT;
    QTest::newRow("folder") << QByteArray("folder") << EISDIR;
}

void FileUtilsTest::truncateSizeThatFailsIsLogged()
{
    QFETCH(QByteArray, name);
    QFETCH(int, error);
    scratch_->folder("folder");
    const QByteArray path = scratch_->path(name);
    const RecordedLog log;
    QVERIFY(!FileUtils().truncateSize(path));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils truncateSize:]", path, error)));
}

void FileUtilsTest::aScrambledFileKeepsItsFolderAndContent()
{
    scratch_->folder("folder");
    const QByteArray path = scratch_->file("folder/file", QByteArray("kept"));
    const FileUrl scrambled = FileUtils().scrambleFilename(FileUrl(path));
    QVERIFY(!Scratch::exists(path));
    QCOMPARE(FileUtils().extractFilePathFrom(scrambled.path()), scratch_->path("folder"));
    QVERIFY(scrambled.path() != path);
    QCOMPARE(Scratch::content(scrambled.path()), QByteArray("kept"));
}

void FileUtilsTest::aScrambledNameThatIsNotUtf8IsReplaced()
{
    const QByteArray path = scratch_->file("\xFF\n", QByteArray("kept"));
    const FileUrl scrambled = FileUtils().scrambleFilename(FileUrl(path));
    QVERIFY(!Scratch::exists(path));
    QCOMPARE(Scratch::content(scrambled.path()), QByteArray("kept"));
}

void FileUtilsTest::scramblingAMissingFileAnswersTheLocationPassedIn()
{
    const FileUrl url(scratch_->path("missing"));
    const RecordedLog log;
    QVERIFY(FileUtils().scrambleFilename(url) == url);
    QCOMPARE(log.lines(),
             QStringList(failureLine("-[FileUtils scrambleFilename:]", url.path(), ENOENT)));
}

void FileUtilsTest::randomFilenamesAreSixToTwentyLettersAFullStopAndThree()
{
    static const QRegularExpression pattern(QStringLiteral("\\A[a-z]{6,20}\\.[a-z]{3}\\z"));
    QSet<qsizetype> lengths;
    QSet<QChar> letters;
    QSet<QString> names;
    constexpr int draws = 10'000;
    for (int draw = 0; draw < draws; ++draw) {
        const QString name = FileUtils().randomFilename();
        QVERIFY2(pattern.match(name).hasMatch(), qPrintable(name));
        lengths.insert(name.indexOf(QLatin1Char('.')));
        for (const QChar letter : name)
            letters.insert(letter);
        names.insert(name);
    }
    // That one of them is missing by chance happens less often than once in 10^200 runs.
    QCOMPARE(lengths.size(), 15);
    QCOMPARE(letters.size(), 27);
    // Two of the shortest names are the same about once in 10^7 runs.
    QVERIFY(names.size() >= draws - 1);
}

QTEST_GUILESS_MAIN(FileUtilsTest)
#include "FileUtilsTest.moc"
