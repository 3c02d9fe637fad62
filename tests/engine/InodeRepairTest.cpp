#include "engine/InodeRepair.h"

#include "engine/RecordedLog.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QTest>

#include <cerrno>
#include <memory>

namespace {

using LastLink = SystemCalls::LastLink;

Descriptor handleTo(const QByteArray &path, LastLink lastLink = LastLink::Follow)
{
    return Descriptor(SystemCalls::real().open(SystemCalls::startFolder, path.constData(),
                                               SystemCalls::Access::Handle, lastLink));
}

InodeRepair repairOf(const QByteArray &path)
{
    return InodeRepair(handleTo(path), path);
}

/// Keeps the inode flags of one file in memory, since only root could set real ones; counts the
/// calls.
class FakeInodeFlags final : public ForwardingSystemCalls
{
  public:
    explicit FakeInodeFlags(std::uint32_t flags) : current(flags) {}

    int inodeFlags(int /*fd*/, std::uint32_t &flags) override
    {
        ++flagCalls;
        flags = current;
        return readError != 0 ? -readError : 0;
    }
    int setInodeFlags(int /*fd*/, std::uint32_t flags) override
    {
        ++flagCalls;
        if (writeError != 0)
            return -writeError;
        current = flags;
        return 0;
    }
    int setPermissions(int handle, std::uint32_t permissions) override
    {
        ++permissionCalls;
        return permissionError != 0 ? -permissionError
                                    : ForwardingSystemCalls::setPermissions(handle, permissions);
    }

    std::uint32_t current;
    int readError = 0;
    int writeError = 0;
    int permissionError = 0;
    int flagCalls = 0;
    int permissionCalls = 0;
};

constexpr std::uint32_t immutable = 0x10;
constexpr std::uint32_t appendOnly = 0x20;
constexpr std::uint32_t noDump = 0x40;

} // namespace

class InodeRepairTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { scratch_ = std::make_unique<Scratch>(); }
    void cleanup() { scratch_.reset(); }

    void writePermissionIsAddedAndPutBack_data();
    void writePermissionIsAddedAndPutBack();
    void theRepairIsPutBackOnce();
    void withoutARepairNothingIsPutBack();
    void anotherHardLinkGetsItsPermissionsBack();
    void aFileWithoutANameIsLeftAsItIs();
    void theInodeIsRepairedWhateverBecomesOfItsName();
    void aFolderAndAFifoMayBeRepaired();

    void aHandleToALinkIsRefused_data();
    void aHandleToALinkIsRefused();
    void aClosedHandleRepairsNothing();
    void aHandleThroughALinkRepairsItsTarget();

    void theErrorDecidesWhatIsRepaired_data();
    void theErrorDecidesWhatIsRepaired();
    void aRefusalOfTheSystemIsNoRepair();

    void theImmutableFlagAloneIsClearedAndPutBack();
    void aFlagThatIsNotSetIsNoRepair_data();
    void aFlagThatIsNotSetIsNoRepair();
    void flagsThatCannotBeReadOrSetAreNoRepair_data();
    void flagsThatCannotBeReadOrSetAreNoRepair();
    void aFlagThatSomebodySetMeanwhileStays();
    void theFlagOfAnInodeWithoutANameIsNotPutBack();
    void whatCannotBePutBackIsSaidAndLogged_data();
    void whatCannotBePutBackIsSaidAndLogged();
    void onlyRegularFilesAndFoldersAreAskedForTheirFlags_data();
    void onlyRegularFilesAndFoldersAreAskedForTheirFlags();

    void aFlagThatSomebodySetMeanwhileCountsAsPutBack()
    {
        class Flags final : public ForwardingSystemCalls
        {
          public:
            int inodeFlags(int, std::uint32_t &flags) override
            {
                flags = current;
                return 0;
            }
            int setInodeFlags(int, std::uint32_t flags) override
            {
                current = flags;
                return 0;
            }
            std::uint32_t current = immutableFlag;
        };
        const Scratch scratch;
        const RecordedLog log;
        const QByteArray path = scratch.file("file", 1);
        Flags calls;
        const SystemCalls::Replacement replacement(calls);
        InodeRepair repair(
            Descriptor(calls.open(SystemCalls::startFolder, path.constData(),
                                  SystemCalls::Access::Handle, SystemCalls::LastLink::Stop)),
            path);
        QVERIFY(repair.unlock());
        calls.current = SystemCalls::immutableFlag;
        QVERIFY(repair.putBack());
    }

  private:
    std::unique_ptr<Scratch> scratch_;
};

void InodeRepairTest::writePermissionIsAddedAndPutBack_data()
{
    QTest::addColumn<uint>("permissions");
    QTest::newRow("none") << 0000U;
    QTest::newRow("read only") << 0444U;
    QTest::newRow("the owner's") << 0600U;
    QTest::newRow("all") << 0777U;
    QTest::newRow("set-user-id and sticky") << 05755U;
}

void InodeRepairTest::writePermissionIsAddedAndPutBack()
{
    QFETCH(uint, permissions);
    const QByteArray path = scratch_->file("file", QByteArray("kept"));
    QCOMPARE(::chmod(path.constData(), mode_t(permissions)), 0);
    const RecordedLog log;
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.isUsable());
    QVERIFY(repair.addWritePermission());
    QCOMPARE(Scratch::permissions(path), mode_t(0777));
    QCOMPARE(Scratch::content(path), QByteArray("kept"));
    QCOMPARE(
        log.lines(),
        QStringList(
            QStringLiteral("-[FileUtils changePermissionsForFile:] Adding write permissions to ") +
            QString::fromUtf8(path)));

    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(path), mode_t(permissions));
    QCOMPARE(log.lines().size(), 1);
}

void InodeRepairTest::theRepairIsPutBackOnce()
{
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0400), 0);
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.addWritePermission());
    QVERIFY(repair.putBack());
    QCOMPARE(::chmod(path.constData(), 0640), 0);
    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(path), mode_t(0640));
}

void InodeRepairTest::withoutARepairNothingIsPutBack()
{
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0400), 0);
    FakeInodeFlags calls(noDump);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QCOMPARE(::chmod(path.constData(), 0640), 0);
    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(path), mode_t(0640));
    QCOMPARE(calls.permissionCalls, 0);
    QCOMPARE(calls.current, noDump);
}

void InodeRepairTest::anotherHardLinkGetsItsPermissionsBack()
{
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    const QByteArray other = scratch_->path("other");
    QCOMPARE(::link(path.constData(), other.constData()), 0);
    QCOMPARE(::chmod(path.constData(), 0440), 0);
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.addWritePermission());
    QCOMPARE(Scratch::permissions(other), mode_t(0777));
    QCOMPARE(::unlink(path.constData()), 0);

    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(other), mode_t(0440));
}

void InodeRepairTest::aFileWithoutANameIsLeftAsItIs()
{
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(0);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.addWritePermission());
    QCOMPARE(::unlink(path.constData()), 0);
    QVERIFY(repair.putBack());
    QCOMPARE(calls.permissionCalls, 1);
}

void InodeRepairTest::theInodeIsRepairedWhateverBecomesOfItsName()
{
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0400), 0);
    InodeRepair repair = repairOf(path);
    const QByteArray moved = scratch_->path("moved");
    QCOMPARE(::rename(path.constData(), moved.constData()), 0);
    scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0444), 0);

    QVERIFY(repair.addWritePermission());
    QCOMPARE(Scratch::permissions(moved), mode_t(0777));
    QCOMPARE(Scratch::permissions(path), mode_t(0444));
    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(moved), mode_t(0400));
    QCOMPARE(Scratch::permissions(path), mode_t(0444));
}

void InodeRepairTest::aFolderAndAFifoMayBeRepaired()
{
    const RecordedLog log;
    const QByteArray folder = scratch_->folder("folder");
    const QByteArray fifo = scratch_->path("fifo");
    QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
    for (const QByteArray &path : {folder, fifo}) {
        const mode_t before = Scratch::permissions(path);
        InodeRepair repair = repairOf(path);
        QVERIFY(repair.isUsable());
        QVERIFY(repair.addWritePermission());
        QCOMPARE(Scratch::permissions(path), mode_t(0777));
        QVERIFY(repair.putBack());
        QCOMPARE(Scratch::permissions(path), before);
    }
}

void InodeRepairTest::aHandleToALinkIsRefused_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::newRow("to a file") << QByteArray("file");
    QTest::newRow("to nothing") << QByteArray("nothing");
}

void InodeRepairTest::aHandleToALinkIsRefused()
{
    QFETCH(QByteArray, target);
    const RecordedLog log;
    const QByteArray file = scratch_->file("file", 1);
    QCOMPARE(::chmod(file.constData(), 0400), 0);
    const QByteArray link = scratch_->link("link", target);
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair(handleTo(link, LastLink::Stop), link);
    QVERIFY(!repair.isUsable());
    QVERIFY(!repair.addWritePermission());
    QVERIFY(!repair.unlock());
    QVERIFY(!repair.fix(EACCES));
    QVERIFY(!repair.fix(EPERM));
    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(file), mode_t(0400));
    QCOMPARE(calls.permissionCalls, 0);
    QCOMPARE(calls.flagCalls, 0);
}

void InodeRepairTest::aClosedHandleRepairsNothing()
{
    const RecordedLog log;
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair(Descriptor(-ENOENT), scratch_->path("missing"));
    QVERIFY(!repair.isUsable());
    QVERIFY(!repair.addWritePermission());
    QVERIFY(!repair.unlock());
    QVERIFY(repair.putBack());
    QCOMPARE(calls.permissionCalls, 0);
    QCOMPARE(calls.flagCalls, 0);
}

void InodeRepairTest::aHandleThroughALinkRepairsItsTarget()
{
    const RecordedLog log;
    const QByteArray file = scratch_->file("file", 1);
    QCOMPARE(::chmod(file.constData(), 0400), 0);
    InodeRepair repair = repairOf(scratch_->link("link", "file"));
    QVERIFY(repair.isUsable());
    QVERIFY(repair.addWritePermission());
    QCOMPARE(Scratch::permissions(file), mode_t(0777));
    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(file), mode_t(0400));
}

void InodeRepairTest::theErrorDecidesWhatIsRepaired_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("isFixed");
    QTest::addColumn<uint>("permissions");
    QTest::addColumn<uint>("flags");
    QTest::newRow("1: the flag") << 1 << true << 0400U << 0U;
    QTest::newRow("13: the permissions") << 13 << true << 0777U << uint(immutable);
    QTest::newRow("2: nothing") << 2 << false << 0400U << uint(immutable);
    QTest::newRow("30: nothing") << 30 << false << 0400U << uint(immutable);
    QTest::newRow("0: nothing") << 0 << false << 0400U << uint(immutable);
}

void InodeRepairTest::theErrorDecidesWhatIsRepaired()
{
    QFETCH(int, error);
    QFETCH(bool, isFixed);
    QFETCH(uint, permissions);
    QFETCH(uint, flags);
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    QCOMPARE(::chmod(path.constData(), 0400), 0);
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QCOMPARE(repair.fix(error), isFixed);
    QCOMPARE(Scratch::permissions(path), mode_t(permissions));
    QCOMPARE(calls.current, flags);

    QVERIFY(repair.putBack());
    QCOMPARE(Scratch::permissions(path), mode_t(0400));
    QCOMPARE(calls.current, immutable);
}

void InodeRepairTest::aRefusalOfTheSystemIsNoRepair()
{
    class Refusing final : public ForwardingSystemCalls
    {
      public:
        int setPermissions(int, std::uint32_t) override
        {
            ++calls;
            return -EPERM;
        }
        int calls = 0;
    };
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    Refusing calls;
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QVERIFY(!repair.addWritePermission());
    QVERIFY(repair.putBack());
    QCOMPARE(calls.calls, 1);
}

void InodeRepairTest::theImmutableFlagAloneIsClearedAndPutBack()
{
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(immutable | noDump);
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.unlock());
    QCOMPARE(calls.current, noDump);
    QCOMPARE(log.lines(),
             QStringList(QStringLiteral("-[FileUtils unlockFilepath:] Unlocking file ") +
                         QString::fromUtf8(path)));

    QVERIFY(repair.putBack());
    QCOMPARE(calls.current, immutable | noDump);
    QCOMPARE(log.lines().size(), 1);
}

void InodeRepairTest::aFlagThatIsNotSetIsNoRepair_data()
{
    QTest::addColumn<uint>("flags");
    QTest::newRow("no flag at all") << 0U;
    QTest::newRow("append only") << uint(appendOnly);
    QTest::newRow("bit two, which means something else here") << 0x2U;
}

void InodeRepairTest::aFlagThatIsNotSetIsNoRepair()
{
    QFETCH(uint, flags);
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(flags);
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    InodeRepair repair = repairOf(path);
    QVERIFY(!repair.unlock());
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(repair.putBack());
    QCOMPARE(calls.current, flags);
}

void InodeRepairTest::flagsThatCannotBeReadOrSetAreNoRepair_data()
{
    QTest::addColumn<int>("readError");
    QTest::addColumn<int>("writeError");
    QTest::newRow("not read, the file system has none") << ENOTTY << 0;
    QTest::newRow("not set, which only root may") << 0 << EPERM;
}

void InodeRepairTest::flagsThatCannotBeReadOrSetAreNoRepair()
{
    QFETCH(int, readError);
    QFETCH(int, writeError);
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(immutable);
    calls.readError = readError;
    calls.writeError = writeError;
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QVERIFY(!repair.unlock());

    calls.readError = calls.writeError = 0;
    calls.current = 0;
    QVERIFY(repair.putBack());
    QCOMPARE(calls.current, 0U);
}

void InodeRepairTest::aFlagThatSomebodySetMeanwhileStays()
{
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.unlock());
    calls.current |= immutable | noDump;
    repair.putBack();
    QCOMPARE(calls.current, immutable | noDump);
}

void InodeRepairTest::theFlagOfAnInodeWithoutANameIsNotPutBack()
{
    const RecordedLog log;
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.unlock());
    QCOMPARE(::unlink(path.constData()), 0);
    QVERIFY(repair.putBack());
    QCOMPARE(calls.current, 0U);
}

void InodeRepairTest::whatCannotBePutBackIsSaidAndLogged_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("permissions") << EACCES;
    QTest::newRow("flag") << EPERM;
}

void InodeRepairTest::whatCannotBePutBackIsSaidAndLogged()
{
    QFETCH(int, error);
    const QByteArray path = scratch_->file("file", 1);
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    const RecordedLog log;
    InodeRepair repair = repairOf(path);
    QVERIFY(repair.fix(error));
    calls.writeError = calls.permissionError = EROFS;
    QVERIFY(!repair.putBack());
    QCOMPARE(log.lines().last(),
             QStringLiteral("-[InodeRepair putBack] Could not put back permissions or flags of ") +
                 QString::fromUtf8(path));
}

void InodeRepairTest::onlyRegularFilesAndFoldersAreAskedForTheirFlags_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isAsked");
    QTest::newRow("regular file") << QByteArray("file") << true;
    QTest::newRow("folder") << QByteArray("folder") << true;
    QTest::newRow("FIFO") << QByteArray("fifo") << false;
}

void InodeRepairTest::onlyRegularFilesAndFoldersAreAskedForTheirFlags()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isAsked);
    const RecordedLog log;
    scratch_->file("file", 1);
    scratch_->folder("folder");
    QCOMPARE(::mkfifo(scratch_->path("fifo").constData(), 0600), 0);
    FakeInodeFlags calls(immutable);
    const SystemCalls::Replacement replacement(calls);
    QCOMPARE(repairOf(scratch_->path(name)).unlock(), isAsked);
    QCOMPARE(calls.flagCalls > 0, isAsked);
}

QTEST_GUILESS_MAIN(InodeRepairTest)
#include "InodeRepairTest.moc"
