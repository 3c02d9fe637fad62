#include "engine/FileUtils.h"

#include "engine/InodeRepair.h"
#include "engine/RecordedLog.h"
#include "kit/Ext4Image.h"
#include "kit/InodeFlags.h"
#include "kit/Scratch.h"

#include <QTest>

#include <cerrno>
#include <cstring>
#include <memory>

namespace {

bool canBeOpenedForWriting(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_RDWR | O_CLOEXEC);
    if (fd >= 0)
        ::close(fd);
    return fd >= 0;
}

} // namespace

/// The immutable flag of a real file system.
class FileUtilsImmutableTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void anImmutableFileIsUnlockedAndNothingElseOfItChanges();
    void errorOneUnlocks();
    void anImmutableFolderIsUnlocked();
    void theTargetOfALinkIsUnlocked();
    void aFileThatIsNotImmutableIsNotUnlocked();
    void anAppendOnlyFileStaysAsItIs();
    void anImmutableFileIsNotRemovedAndThatIsLogged();
    void aFolderInAnImmutableOneStaysInTheSweep();
    void theFlagIsPutBackOnAnotherHardLink();
    void flagAndPermissionsArePutBackTogether();

  private:
    [[nodiscard]] QByteArray file(const QByteArray &name, int flags) const;

    std::unique_ptr<Scratch> scratch_;
    std::unique_ptr<Ext4Image> ext4_;
};

void FileUtilsImmutableTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    ext4_ = std::make_unique<Ext4Image>(*scratch_);
    QVERIFY(ext4_->isMounted());
}

void FileUtilsImmutableTest::cleanup()
{
    ext4_.reset();
    scratch_.reset();
}

/// Makes the file with these flags and answers its path; empty if that failed.
QByteArray FileUtilsImmutableTest::file(const QByteArray &name, int flags) const
{
    const QByteArray path = scratch_->file("ext4/" + name, QByteArray("kept"));
    return InodeFlags::add(path, flags) ? path : QByteArray();
}

void FileUtilsImmutableTest::anImmutableFileIsUnlockedAndNothingElseOfItChanges()
{
    const QByteArray path = file("file", FS_NODUMP_FL);
    const int before = InodeFlags::of(path);
    const mode_t permissions = Scratch::permissions(path);
    QVERIFY(InodeFlags::add(path, FS_IMMUTABLE_FL));
    QVERIFY(!canBeOpenedForWriting(path));
    const RecordedLog log;
    QVERIFY(FileUtils().unlockFilepath(path));
    QVERIFY(canBeOpenedForWriting(path));
    QCOMPARE(InodeFlags::of(path), before);
    QCOMPARE(Scratch::permissions(path), permissions);
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(log.lines(),
             QStringList(QStringLiteral("-[FileUtils unlockFilepath:] Unlocking file ") +
                         QString::fromUtf8(path)));
}

void FileUtilsImmutableTest::errorOneUnlocks()
{
    const RecordedLog log;
    const QByteArray path = file("file", FS_IMMUTABLE_FL);
    QVERIFY(!canBeOpenedForWriting(path));
    QVERIFY(FileUtils().fixError(1, path));
    QVERIFY(canBeOpenedForWriting(path));
    QVERIFY(!FileUtils().fixError(1, path));
    QCOMPARE(log.lines().size(), 1);
}

void FileUtilsImmutableTest::anImmutableFolderIsUnlocked()
{
    const RecordedLog log;
    const QByteArray folder = scratch_->folder("ext4/folder");
    QVERIFY(InodeFlags::add(folder, FS_IMMUTABLE_FL));
    QVERIFY(scratch_->file("ext4/folder/file", 1).isEmpty());
    QVERIFY(FileUtils().unlockFilepath(folder));
    QVERIFY(!scratch_->file("ext4/folder/file", 1).isEmpty());
}

void FileUtilsImmutableTest::theTargetOfALinkIsUnlocked()
{
    const RecordedLog log;
    const QByteArray target = file("target", FS_IMMUTABLE_FL);
    const QByteArray link = scratch_->link("ext4/link", "target");
    QVERIFY(FileUtils().unlockFilepath(link));
    QVERIFY(canBeOpenedForWriting(target));
}

void FileUtilsImmutableTest::aFileThatIsNotImmutableIsNotUnlocked()
{
    const QByteArray path = file("file", FS_NODUMP_FL);
    const int before = InodeFlags::of(path);
    const RecordedLog log;
    QVERIFY(!FileUtils().unlockFilepath(path));
    QCOMPARE(InodeFlags::of(path), before);
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsImmutableTest::anAppendOnlyFileStaysAsItIs()
{
    const QByteArray path = file("file", FS_APPEND_FL);
    QVERIFY(!canBeOpenedForWriting(path));
    const RecordedLog log;
    QVERIFY(!FileUtils().fixError(1, path));
    QVERIFY((InodeFlags::of(path) & FS_APPEND_FL) != 0);
    QCOMPARE(log.lines(), QStringList());
}

void FileUtilsImmutableTest::anImmutableFileIsNotRemovedAndThatIsLogged()
{
    const QByteArray path = file("file", FS_IMMUTABLE_FL);
    const RecordedLog log;
    QVERIFY(!FileUtils().deleteFile(FileUrl(path)));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(log.lines(),
             QStringList(QStringLiteral("-[FileUtils deleteFile:] ") + QString::fromUtf8(path) +
                         QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(EPERM))));
}

void FileUtilsImmutableTest::aFolderInAnImmutableOneStaysInTheSweep()
{
    const QByteArray parent = scratch_->folder("ext4/parent");
    const QByteArray top = scratch_->folder("ext4/parent/top");
    QVERIFY(InodeFlags::add(parent, FS_IMMUTABLE_FL));
    const RecordedLog log;
    FileUtils().deleteFoldersFromArray({{top, {}}, {parent, {}}});
    QVERIFY(Scratch::exists(top));
    QVERIFY((InodeFlags::of(parent) & FS_IMMUTABLE_FL) != 0);
    QCOMPARE(log.lines(),
             QStringList(QStringLiteral("-[FileUtils deleteFolder:] ") + QString::fromUtf8(top) +
                         QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(EPERM))));
}

void FileUtilsImmutableTest::theFlagIsPutBackOnAnotherHardLink()
{
    const RecordedLog log;
    const QByteArray path = file("file", 0);
    const QByteArray other = ext4_->path("other");
    QCOMPARE(::link(path.constData(), other.constData()), 0);
    QVERIFY(InodeFlags::add(path, FS_IMMUTABLE_FL | FS_NODUMP_FL));
    const int before = InodeFlags::of(other);
    InodeRepair repair(Descriptor(SystemCalls::real().open(
                           SystemCalls::startFolder, path.constData(), SystemCalls::Access::Handle,
                           SystemCalls::LastLink::Stop)),
                       path);
    QVERIFY(repair.fix(1));
    QCOMPARE(::unlink(path.constData()), 0);
    QVERIFY(repair.putBack());
    QCOMPARE(InodeFlags::of(other), before);
}

void FileUtilsImmutableTest::flagAndPermissionsArePutBackTogether()
{
    const RecordedLog log;
    const QByteArray path = file("file", 0);
    QCOMPARE(::chmod(path.constData(), 0400), 0);
    QVERIFY(InodeFlags::add(path, FS_IMMUTABLE_FL));
    InodeRepair repair(Descriptor(SystemCalls::real().open(
                           SystemCalls::startFolder, path.constData(), SystemCalls::Access::Handle,
                           SystemCalls::LastLink::Stop)),
                       path);
    QVERIFY(!repair.fix(13));
    QVERIFY(repair.fix(1));
    QVERIFY(repair.fix(13));
    QCOMPARE(Scratch::permissions(path), mode_t(0777));
    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(path), mode_t(0400));
    QVERIFY((InodeFlags::of(path) & FS_IMMUTABLE_FL) != 0);
}

QTEST_GUILESS_MAIN(FileUtilsImmutableTest)
#include "FileUtilsImmutableTest.moc"
