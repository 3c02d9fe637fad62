#include "engine/RecordingSystemCalls.h"
#include "engine/WipeOneFile.h"
#include "kit/Ext4Image.h"
#include "kit/InodeFlags.h"
#include "kit/Scratch.h"

#include <QTest>

#include <sys/sysmacros.h>

namespace {

QByteArray makeFile(const QByteArray &path)
{
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const bool isWritten = ::write(fd, "secret", 6) == 6;
    ::close(fd);
    return isWritten ? path : QByteArray();
}

class FailingSync final : public ForwardingSystemCalls
{
  public:
    int sync(int) override { return -EIO; }
};

/// Notes whether anything is opened but to look at it.
class NotingOpens final : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        wasOpened |= access == Access::ReadWrite || access == Access::Read;
        return ForwardingSystemCalls::open(folder, path, access, lastLink);
    }
    int reopen(int handle, Access access) override
    {
        wasOpened = true;
        return ForwardingSystemCalls::reopen(handle, access);
    }
    bool wasOpened = false;
};

} // namespace

/// What only root can set up: inode flags on a real ext4, device nodes.
class FileWiperAsRootTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init()
    {
        scratch_ = std::make_unique<Scratch>();
        ext4_ = std::make_unique<Ext4Image>(*scratch_);
        QVERIFY(ext4_->isMounted());
    }
    void cleanup()
    {
        ext4_.reset();
        scratch_.reset();
    }

    void immutableFileIsUnlockedAndErasedAtTheSecondAttempt()
    {
        const QByteArray path = makeFile(ext4_->path("file"));
        QVERIFY(InodeFlags::add(path, FS_IMMUTABLE_FL));
        QCOMPARE(::open(path.constData(), O_RDWR | O_CLOEXEC), -1);
        QCOMPARE(errno, 1);
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 1);

        const std::vector<int> expected = {EPERM, 0};
        QCOMPARE(calls.attempts(), expected);
        QVERIFY(!Scratch::exists(path));
        QCOMPARE(item->errornr(), 0);
    }

    void immutableFlagIsPutBackWhereTheFileThenFails()
    {
        const QByteArray path = makeFile(ext4_->path("file"));
        QVERIFY(InodeFlags::add(path, FS_IMMUTABLE_FL | FS_NODUMP_FL));
        const int before = InodeFlags::of(path);
        {
            FailingSync calls;
            const SystemCalls::Replacement replacement(calls);
            QCOMPARE(wipe(queueItem(path, 1)), 2);
        }
        QCOMPARE(InodeFlags::of(path), before);
        QVERIFY(InodeFlags::remove(path, FS_IMMUTABLE_FL | FS_APPEND_FL));
    }

    void immutableFlagIsPutBackOnTheTargetOfALink()
    {
        const QByteArray target = makeFile(ext4_->path("target"));
        QVERIFY(InodeFlags::add(target, FS_IMMUTABLE_FL));
        const QByteArray link = ext4_->path("link");
        QCOMPARE(::symlink("target", link.constData()), 0);
        ScanFacts facts;
        facts.isLink = true;

        QCOMPARE(wipe(queueItem(link, 1, facts)), 1);

        QVERIFY(!Scratch::exists(link));
        QVERIFY((InodeFlags::of(target) & FS_IMMUTABLE_FL) != 0);
        QCOMPARE(Scratch::content(target), QByteArray(6, '\0'));
        QVERIFY(InodeFlags::remove(target, FS_IMMUTABLE_FL | FS_APPEND_FL));
    }

    void immutableFileWithAnotherNameFailsToBeRemovedOnlyIfItHasTo()
    {
        const QByteArray path = makeFile(ext4_->path("name"));
        const QByteArray other = ext4_->path("other");
        QCOMPARE(::link(path.constData(), other.constData()), 0);
        QVERIFY(InodeFlags::add(path, FS_IMMUTABLE_FL));

        QCOMPARE(wipe(queueItem(path, 1)), 1);

        QVERIFY(!Scratch::exists(path));
        QVERIFY((InodeFlags::of(other) & FS_IMMUTABLE_FL) != 0);
        QVERIFY(InodeFlags::remove(other, FS_IMMUTABLE_FL | FS_APPEND_FL));
    }

    void appendOnlyFileStaysUnrepaired()
    {
        const QByteArray path = makeFile(ext4_->path("file"));
        QVERIFY(InodeFlags::add(path, FS_APPEND_FL));
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), 1);
        QCOMPARE(Scratch::content(path), QByteArray("secret"));
        QVERIFY((InodeFlags::of(path) & FS_APPEND_FL) != 0);
        QVERIFY(InodeFlags::remove(path, FS_IMMUTABLE_FL | FS_APPEND_FL));
    }

    void fileInAnImmutableFolderIsOverwrittenAndStays()
    {
        const QByteArray folder = ext4_->path("folder");
        QCOMPARE(::mkdir(folder.constData(), 0755), 0);
        const QByteArray path = makeFile(folder + "/file");
        QVERIFY(InodeFlags::add(folder, FS_IMMUTABLE_FL));
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), 1);
        QCOMPARE(Scratch::content(path), QByteArray(6, '\0'));
        QVERIFY((InodeFlags::of(folder) & FS_IMMUTABLE_FL) != 0);
        QVERIFY(InodeFlags::remove(folder, FS_IMMUTABLE_FL | FS_APPEND_FL));
    }

    void devicesAreNotEvenOpened_data()
    {
        QTest::addColumn<uint>("mode");
        QTest::addColumn<uint>("minor");
        QTest::addColumn<bool>("isThroughALink");
        // Numbers that no driver has, should anything open them all the same.
        QTest::newRow("character device") << uint(S_IFCHR) << 250U << false;
        QTest::newRow("block device") << uint(S_IFBLK) << 251U << false;
        QTest::newRow("link to a character device") << uint(S_IFCHR) << 250U << true;
    }
    void devicesAreNotEvenOpened()
    {
        QFETCH(uint, mode);
        QFETCH(uint, minor);
        QFETCH(bool, isThroughALink);
        const QByteArray node = scratch_->path("node");
        QCOMPARE(::mknod(node.constData(), mode_t(mode | 0600U), makedev(240, minor)), 0);
        ScanFacts facts;
        facts.isLink = isThroughALink;
        const QByteArray path = isThroughALink ? scratch_->link("link", "node") : node;
        const auto item = queueItem(path, 4, facts);
        NotingOpens calls;
        const SystemCalls::Replacement replacement(calls);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errormsg(), QStringLiteral("Not a regular file"));
        QCOMPARE(item->errornr(), 0);
        QVERIFY(!calls.wasOpened);
        QVERIFY(Scratch::exists(path));
        QVERIFY(Scratch::exists(node));
    }

    void fullDiskFailsTheFileWithTheSystemsText()
    {
        // A sparse file has no blocks yet, so overwriting it needs room that is not there.
        const QByteArray path = makeFile(ext4_->path("sparse"));
        QCOMPARE(::truncate(path.constData(), 256 << 20), 0);
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), ENOSPC);
        QVERIFY(Scratch::exists(path));
    }

  private:
    std::unique_ptr<Scratch> scratch_;
    std::unique_ptr<Ext4Image> ext4_;
};

QTEST_GUILESS_MAIN(FileWiperAsRootTest)
#include "FileWiperAsRootTest.moc"
