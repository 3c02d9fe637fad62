#include "platform/SystemCalls.h"

#include "kit/Ext4Image.h"
#include "kit/Scratch.h"
#include "platform/Descriptor.h"

#include <QTest>

#include <cerrno>

#include <sys/sysmacros.h>

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

namespace {

constexpr int start = SystemCalls::startFolder;
constexpr std::uint32_t appendOnlyFlag = 0x20;

SystemCalls &calls()
{
    return SystemCalls::real();
}

/// Sets the flags of the file and takes them back when it goes, so that the file can be removed.
class Flags
{
  public:
    Flags(const QByteArray &path, std::uint32_t flags)
        : file_(calls().open(start, path.constData(), Access::Read, LastLink::Stop)),
          result_(calls().inodeFlags(file_.fd(), old_))
    {
        if (result_ == 0)
            result_ = calls().setInodeFlags(file_.fd(), old_ | flags);
    }
    ~Flags() { calls().setInodeFlags(file_.fd(), old_); }
    Flags(const Flags &) = delete;
    Flags &operator=(const Flags &) = delete;

    [[nodiscard]] int result() const { return result_; }
    [[nodiscard]] std::uint32_t old() const { return old_; }
    [[nodiscard]] std::uint32_t now() const
    {
        std::uint32_t flags = 0;
        return calls().inodeFlags(file_.fd(), flags) == 0 ? flags : 0;
    }

  private:
    Descriptor file_;
    std::uint32_t old_ = 0;
    int result_ = 0;
};

} // namespace

/// What takes a file system of its own, inode flags or device nodes.
class SystemCallsAsRootTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { QVERIFY(ext4_.isMounted()); }

    void anImmutableFileCanBeNeitherWrittenNorRemovedNorChanged();
    void anAppendOnlyFileFailsTheSameWay();
    void inodeFlagsComeBackAsTheyWereSet();
    void blockDevicesHaveTheirKind();
    void eachFileSystemHasItsNumberAndItsDevice();

  private:
    Scratch scratch_;
    Ext4Image ext4_{scratch_};
};

void SystemCallsAsRootTest::anImmutableFileCanBeNeitherWrittenNorRemovedNorChanged()
{
    const QByteArray path = scratch_.file("ext4/locked", "content");
    const Flags flags(path, SystemCalls::immutableFlag);
    QCOMPARE(flags.result(), 0);
    QCOMPARE(calls().open(start, path.constData(), Access::ReadWrite, LastLink::Stop), -EPERM);
    QCOMPARE(calls().unlink(start, path.constData()), -EPERM);
    QCOMPARE(calls().truncate(path.constData(), 0), -EPERM);
    QCOMPARE(calls().rename(path.constData(), (path + " elsewhere").constData()), -EPERM);
    const Descriptor handle(calls().open(start, path.constData(), Access::Handle, LastLink::Stop));
    QCOMPARE(calls().setPermissions(handle.fd(), 0777), -EPERM);
    QCOMPARE(Scratch::content(path), "content");
}

void SystemCallsAsRootTest::anAppendOnlyFileFailsTheSameWay()
{
    const QByteArray path = scratch_.file("ext4/append only", "content");
    const Flags flags(path, appendOnlyFlag);
    QCOMPARE(flags.result(), 0);
    QCOMPARE(calls().open(start, path.constData(), Access::ReadWrite, LastLink::Stop), -EPERM);
    QCOMPARE(calls().unlink(start, path.constData()), -EPERM);
}

void SystemCallsAsRootTest::inodeFlagsComeBackAsTheyWereSet()
{
    const QByteArray path = scratch_.file("ext4/flagged", "x");
    {
        const Flags flags(path, SystemCalls::immutableFlag);
        QCOMPARE(flags.result(), 0);
        QVERIFY((flags.old() & SystemCalls::immutableFlag) == 0);
        QCOMPARE(flags.now(), flags.old() | SystemCalls::immutableFlag);
    }
    const Descriptor file(calls().open(start, path.constData(), Access::ReadWrite, LastLink::Stop));
    QVERIFY(file.isOpen());
}

void SystemCallsAsRootTest::blockDevicesHaveTheirKind()
{
    const QByteArray path = scratch_.path("ext4/device");
    // A number that no driver has; nothing opens it.
    QCOMPARE(::mknod(path.constData(), S_IFBLK | 0600, ::makedev(240, 99)), 0);
    FileStatus status;
    QCOMPARE(calls().statusAt(start, path.constData(), LastLink::Stop, status), 0);
    QCOMPARE(status.kind, FileKind::BlockDevice);
    QVERIFY(status.isDevice());
}

void SystemCallsAsRootTest::eachFileSystemHasItsNumberAndItsDevice()
{
    const QByteArray other = scratch_.folder("ext4/other");
    QCOMPARE(::mount("none", other.constData(), "tmpfs", 0, "size=1m"), 0);
    std::uint64_t ext4Type = 0;
    std::uint64_t tmpfsType = 0;
    FileStatus ext4Status;
    FileStatus tmpfsStatus;
    const int results[] = {
        calls().fileSystemType(ext4_.path(".").constData(), ext4Type),
        calls().fileSystemType(other.constData(), tmpfsType),
        calls().statusAt(start, ext4_.path(".").constData(), LastLink::Stop, ext4Status),
        calls().statusAt(start, other.constData(), LastLink::Stop, tmpfsStatus),
    };
    ::umount2(other.constData(), MNT_DETACH);
    for (const int result : results)
        QCOMPARE(result, 0);
    QCOMPARE(ext4Type, std::uint64_t(0xEF53));
    QCOMPARE(tmpfsType, std::uint64_t(0x01021994));
    QVERIFY(ext4Status.device != tmpfsStatus.device);
    QVERIFY(!ext4Status.isSameFile(tmpfsStatus));
}

QTEST_GUILESS_MAIN(SystemCallsAsRootTest)
#include "SystemCallsAsRootTest.moc"
