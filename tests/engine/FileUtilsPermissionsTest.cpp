#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"

#include <QCoreApplication>
#include <QTest>

#include <cerrno>
#include <cstring>
#include <memory>

namespace {

QString failureLine(const char *operation, const QByteArray &path, int error)
{
    return QString::fromLocal8Bit(operation) + QLatin1Char(' ') + QString::fromUtf8(path) +
           QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(error));
}

bool canBeOpenedForWriting(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_RDWR | O_CLOEXEC);
    if (fd >= 0)
        ::close(fd);
    return fd >= 0;
}

/// Takes rights from a name for as long as it lives.
class WithPermissions
{
  public:
    WithPermissions(const QByteArray &path, mode_t permissions)
        : path_(path), before_(Scratch::permissions(path))
    {
        ::chmod(path_.constData(), permissions);
    }
    ~WithPermissions() { ::chmod(path_.constData(), before_); }
    WithPermissions(const WithPermissions &) = delete;
    WithPermissions &operator=(const WithPermissions &) = delete;

  private:
    QByteArray path_;
    mode_t before_;
};

} // namespace

/// What the permissions of files and folders decide.
class FileUtilsPermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { scratch_ = std::make_unique<Scratch>(); }
    void cleanup() { scratch_.reset(); }

    void errorThirteenMakesAFileWritable_data();
    void errorThirteenMakesAFileWritable();
    void errorThirteenInAFolderThatMayNotBeEnteredIsNotRepaired();
    void errorOneOfAnUnreadableFileIsNotRepaired();

    void whatMayNotBeLookedAtDoesNotExist();
    void aSizeThatMayNotBeReadIsMinusOneOrZero();

    void noFolderIsMadeWhereNothingMayBeMade();
    void noFileIsRemovedWhereNothingMayBeRemoved();
    void noFileIsRenamedWhereNothingMayBeRenamed();
    void aFileThatMayNotBeWrittenIsNotCut();

    void aFolderThatMayNotBeListedCountsAsEmpty();
    void anEmptyFolderThatMayNotBeListedGoesInTheSweep();
    void aFolderThatMayNotBeListedKeepsWhatItHolds_data();
    void aFolderThatMayNotBeListedKeepsWhatItHolds();
    void aFolderWhoseParentMayNotBeChangedStays();
    void aTreeWithALockedFolderInsideStaysAndTheRestIsGone();

    void anEmptyFolderInsideThatMayNotBeListedDoesNotKeepTheFolder()
    {
        const Scratch scratch;
        const RecordedLog log;
        const QByteArray top = scratch.folder("top");
        const QByteArray inner = scratch.folder("top/.inner");
        QCOMPARE(::chmod(inner.constData(), 0000), 0);
        FileUtils().deleteFoldersFromArray({{top, {}}});
        QVERIFY(!Scratch::exists(inner));
        QVERIFY(!Scratch::exists(top));
    }

  private:
    std::unique_ptr<Scratch> scratch_;
};

void FileUtilsPermissionsTest::errorThirteenMakesAFileWritable_data()
{
    QTest::addColumn<uint>("permissions");
    QTest::newRow("for nobody") << 0000U;
    QTest::newRow("read only") << 0444U;
    QTest::newRow("write only") << 0200U;
    QTest::newRow("only for others") << 0077U;
}

void FileUtilsPermissionsTest::errorThirteenMakesAFileWritable()
{
    QFETCH(uint, permissions);
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), mode_t(permissions)), 0);
    QVERIFY(!canBeOpenedForWriting(path));
    const RecordedLog log;
    QVERIFY(FileUtils().fixError(13, path));
    QVERIFY(canBeOpenedForWriting(path));
    QCOMPARE(Scratch::permissions(path), mode_t(0777));
}

void FileUtilsPermissionsTest::errorThirteenInAFolderThatMayNotBeEnteredIsNotRepaired()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray path = scratch_->file("folder/file", 1);
    QCOMPARE(::chmod(path.constData(), 0400), 0);
    {
        const WithPermissions locked(folder, 0600);
        const RecordedLog log;
        QVERIFY(!FileUtils().fixError(13, path));
        QCOMPARE(Scratch::permissions(folder), mode_t(0600));
    }
    QCOMPARE(Scratch::permissions(path), mode_t(0400));
}

void FileUtilsPermissionsTest::errorOneOfAnUnreadableFileIsNotRepaired()
{
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0000), 0);
    const RecordedLog log;
    QVERIFY(!FileUtils().fixError(1, path));
    QCOMPARE(Scratch::permissions(path), mode_t(0000));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsPermissionsTest::whatMayNotBeLookedAtDoesNotExist()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray file = scratch_->file("folder/file", 1);
    const QByteArray inner = scratch_->folder("folder/inner");
    const WithPermissions locked(folder, 0600);
    QVERIFY(!FileUtils::doesFileExists(FileUrl(file)));
    QVERIFY(!FileUtils::doesFolderExists(FileUrl(inner)));
    QVERIFY(!FileUtils().checkIfFolder(inner));
    QVERIFY(FileUtils::isFile(FileUrl(inner)));
}

void FileUtilsPermissionsTest::aSizeThatMayNotBeReadIsMinusOneOrZero()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray file = scratch_->file("folder/file", 100);
    const WithPermissions locked(folder, 0600);
    QCOMPARE(FileUtils().getFileSizeFor(file), std::int64_t(-1));
    QCOMPARE(FileUtils::bytesOfFilePath(file), std::int64_t(0));
}

void FileUtilsPermissionsTest::noFolderIsMadeWhereNothingMayBeMade()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray path = scratch_->path("folder/new");
    const WithPermissions locked(folder, 0500);
    const RecordedLog log;
    QVERIFY(FileUtils::createFolder(FileUrl(path), false).isNull());
    QVERIFY(FileUtils::createFolder(FileUrl(path + "/deeper"), true).isNull());
    QVERIFY(!Scratch::exists(path));
    const char *operation = "+[FileUtils createFolder:allowAlternative:]";
    QCOMPARE(log.lines(), (QStringList{failureLine(operation, path, EACCES),
                                       failureLine(operation, path + "/deeper", EACCES)}));
}

void FileUtilsPermissionsTest::noFileIsRemovedWhereNothingMayBeRemoved()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray path = scratch_->file("folder/file", QByteArray("kept"));
    const WithPermissions locked(folder, 0500);
    const RecordedLog log;
    QVERIFY(!FileUtils().deleteFile(FileUrl(path)));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFile:]", path, EACCES)));
}

void FileUtilsPermissionsTest::noFileIsRenamedWhereNothingMayBeRenamed()
{
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray path = scratch_->file("folder/file", QByteArray("kept"));
    const WithPermissions locked(folder, 0500);
    const RecordedLog log;
    QVERIFY(FileUtils().scrambleFilename(FileUrl(path)) == FileUrl(path));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils scrambleFilename:]", path, EACCES)));
}

void FileUtilsPermissionsTest::aFileThatMayNotBeWrittenIsNotCut()
{
    const QByteArray path = scratch_->file("file", QByteArray("kept"));
    QCOMPARE(::chmod(path.constData(), 0444), 0);
    const RecordedLog log;
    QVERIFY(!FileUtils().truncateSize(path));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils truncateSize:]", path, EACCES)));
}

void FileUtilsPermissionsTest::aFolderThatMayNotBeListedCountsAsEmpty()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->file("top/visible", 1);
    QVERIFY(!FileUtils().isEmptyFolder(top));
    const WithPermissions locked(top, 0300);
    QVERIFY(FileUtils().isEmptyFolder(top));
}

void FileUtilsPermissionsTest::anEmptyFolderThatMayNotBeListedGoesInTheSweep()
{
    const QByteArray top = scratch_->folder("top");
    const WithPermissions locked(top, 0000);
    const RecordedLog log;
    FileUtils().deleteFoldersFromArray({{top, {}}});
    QVERIFY(!Scratch::exists(top));
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsPermissionsTest::aFolderThatMayNotBeListedKeepsWhatItHolds_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("visible file") << QByteArray("visible");
    QTest::newRow("hidden file") << QByteArray(".hidden");
}

void FileUtilsPermissionsTest::aFolderThatMayNotBeListedKeepsWhatItHolds()
{
    QFETCH(QByteArray, name);
    const QByteArray top = scratch_->folder("top");
    const QByteArray file = scratch_->file("top/" + name, QByteArray("kept"));
    const RecordedLog log;
    {
        const WithPermissions locked(top, 0300);
        FileUtils().deleteFoldersFromArray({{top, {}}});
    }
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFolder:]", top, ENOTEMPTY)));
}

void FileUtilsPermissionsTest::aFolderWhoseParentMayNotBeChangedStays()
{
    const QByteArray parent = scratch_->folder("parent");
    const QByteArray top = scratch_->folder("parent/top");
    const WithPermissions locked(parent, 0500);
    const RecordedLog log;
    FileUtils().deleteFoldersFromArray({{top, {}}});
    QVERIFY(Scratch::exists(top));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFolder:]", top, EACCES)));
}

void FileUtilsPermissionsTest::aTreeWithALockedFolderInsideStaysAndTheRestIsGone()
{
    const QByteArray top = scratch_->folder("top");
    const QByteArray locked = scratch_->folder("top/locked");
    const QByteArray kept = scratch_->file("top/locked/file", QByteArray("kept"));
    const QByteArray other = scratch_->file("top/other", 1);
    const RecordedLog log;
    {
        const WithPermissions readOnly(locked, 0500);
        FileUtils().deleteFolder(top);
        QVERIFY(Scratch::exists(locked));
    }
    QCOMPARE(Scratch::content(kept), QByteArray("kept"));
    QVERIFY(!Scratch::exists(other));
    QCOMPARE(log.lines(), QStringList(failureLine("-[FileUtils deleteFolder:]", top, EACCES)));
}

UNPRIVILEGED_TEST_MAIN(FileUtilsPermissionsTest)
#include "FileUtilsPermissionsTest.moc"
