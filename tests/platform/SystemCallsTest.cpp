#include "platform/SystemCalls.h"

#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"
#include "platform/Descriptor.h"

#include <QSet>
#include <QTest>

#include <array>
#include <cerrno>

#include <linux/openat2.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

Q_DECLARE_METATYPE(SystemCalls::Access)
Q_DECLARE_METATYPE(FileKind)

namespace {

constexpr int start = SystemCalls::startFolder;
constexpr int unusedDescriptor = 999'999;

SystemCalls &calls()
{
    return SystemCalls::real();
}

Descriptor openAs(const QByteArray &path, Access access, LastLink lastLink = LastLink::Follow)
{
    return Descriptor(calls().open(start, path.constData(), access, lastLink));
}

FileStatus statusOf(const QByteArray &path, LastLink lastLink = LastLink::Stop)
{
    FileStatus status;
    calls().statusAt(start, path.constData(), lastLink, status);
    return status;
}

bool makeSocket(const QByteArray &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (std::size_t(path.size()) >= sizeof address.sun_path)
        return false;
    std::copy(path.begin(), path.end(), address.sun_path);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isBound =
        fd >= 0 && ::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    if (fd >= 0)
        ::close(fd);
    return isBound;
}

/// What openFolderWithoutLinks() has to answer: `wanted`, or the error of a system that does not
/// know the call.
int withOpenat2(int wanted)
{
    open_how how = {};
    how.flags = O_PATH | O_CLOEXEC;
    const long probe = ::syscall(SYS_openat2, AT_FDCWD, "/", &how, sizeof how);
    if (probe < 0)
        return -errno;
    ::close(int(probe));
    return wanted;
}

/// Both ends of a pipe.
struct Pipe
{
    Pipe()
    {
        std::array<int, 2> ends = {-1, -1};
        if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) == 0) {
            reading = Descriptor(ends[0]);
            writing = Descriptor(ends[1]);
        }
    }
    Descriptor reading;
    Descriptor writing;
};

} // namespace

/// The real body, against the operating system; without root's rights, which would hide what
/// permissions decide.
class SystemCallsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theOperatingSystemIsTheDefault();
    void aReplacementStandsForItsOwnLifetime();
    void filesAreTheSameByInodeAndDevice();
    void onlyBlockAndCharacterDevicesAreDevices();

    void openingForWritingNeitherCreatesNorCuts();
    void openingWithoutPermissionFailsWithErrorThirteen_data();
    void openingWithoutPermissionFailsWithErrorThirteen();
    void aHandleNeedsNoPermissionAndAllowsNoReading();
    void openingAFifoForReadingDoesNotBlock();
    void openingAFolderForWritingFails();
    void openingASocketFailsWithErrorSix();
    void onlyAFolderOpensAsFolder_data();
    void onlyAFolderOpensAsFolder();
    void aLinkInTheLastComponentIsFollowedOnDemand_data();
    void aLinkInTheLastComponentIsFollowedOnDemand();
    void aLinkInTheLastComponentStopsTheOpening_data();
    void aLinkInTheLastComponentStopsTheOpening();
    void aHandleOfALinkIsTheLinkItself();
    void namesAreTakenFromTheOpenFolder();
    void noDescriptorOutlivesAProgramStart_data();
    void noDescriptorOutlivesAProgramStart();
    void openingWhatIsMissingFails_data();
    void openingWhatIsMissingFails();

    void aFolderOpensWithoutLinks();
    void aLinkAnywhereStopsTheOpeningWithoutLinks_data();
    void aLinkAnywhereStopsTheOpeningWithoutLinks();
    void onlyAFolderOpensWithoutLinks();

    void aHandleReopensItsInodeUnderAnyName();
    void aHandleReopensAnInodeWithoutName();
    void reopeningChecksPermissions();
    void reopeningNoDescriptorFails();
    void closingTwiceFailsTheSecondTime();

    void statusTellsTheKind_data();
    void statusTellsTheKind();
    void statusTellsSizeLinksAndPermissions();
    void statusOfALinkIsItsOwnOrItsTargets();
    void aFailedStatusLeavesTheRecordAlone();

    void seekingAnswersThePosition();
    void seekingAPipeFailsWithIllegalSeek();
    void seekingBeforeTheStartFails();
    void writingAnswersTheCount();
    void writingToWhatIsOpenForReadingFails();
    void syncingAPipeFailsWithInvalidArgument();

    void unlinkingRemovesANameAndNoTarget();
    void unlinkingAFolderFails();
    void onlyAnEmptyFolderIsRemoved();
    void removingALinkToAFolderFails();
    void makingAFolderThatExistsFails();
    void makingAFolderNeedsItsParent();
    void renamingReplacesWhatBearsTheName();
    void renamingWhatIsMissingFails();
    void truncatingCutsToTheSize();
    void truncatingAFolderFails();
    void permissionsAreSetOnTheInodeBehindTheHandle();
    void settingPermissionsOfNoDescriptorFails();
    void inodeFlagsOfAPipeFail();

    void readingAFolderAnswersEveryEntryAndThenZero();
    void readingAFolderIntoTooSmallABufferFails();
    void readingAFileAsFolderFails();
    void theFileSystemsTypeIsItsNumber();
    void theFileSystemOfAMissingPathFails();
    void anOlderErrorDoesNotShine_data();
    void anOlderErrorDoesNotShine();

  private:
    Scratch scratch_;
};

void SystemCallsTest::theOperatingSystemIsTheDefault()
{
    QCOMPARE(&SystemCalls::current(), &SystemCalls::real());
}

void SystemCallsTest::aReplacementStandsForItsOwnLifetime()
{
    ForwardingSystemCalls first;
    ForwardingSystemCalls second;
    {
        const SystemCalls::Replacement outer(first);
        QCOMPARE(&SystemCalls::current(), static_cast<SystemCalls *>(&first));
        {
            const SystemCalls::Replacement inner(second);
            QCOMPARE(&SystemCalls::current(), static_cast<SystemCalls *>(&second));
        }
        QCOMPARE(&SystemCalls::current(), static_cast<SystemCalls *>(&first));
    }
    QCOMPARE(&SystemCalls::current(), &SystemCalls::real());
}

void SystemCallsTest::filesAreTheSameByInodeAndDevice()
{
    FileStatus file;
    file.device = 1;
    file.inode = 2;
    file.size = 3;
    FileStatus other;
    other.device = 1;
    other.inode = 2;
    QVERIFY(file.isSameFile(other));
    other.inode = 1;
    QVERIFY(!file.isSameFile(other));
    other.inode = 2;
    other.device = 2;
    QVERIFY(!file.isSameFile(other));
}

void SystemCallsTest::onlyBlockAndCharacterDevicesAreDevices()
{
    QList<FileKind> devices;
    for (const FileKind kind :
         {FileKind::Regular, FileKind::Folder, FileKind::Link, FileKind::Fifo, FileKind::Socket,
          FileKind::BlockDevice, FileKind::CharacterDevice, FileKind::Unknown}) {
        FileStatus status;
        status.kind = kind;
        if (status.isDevice())
            devices.append(kind);
    }
    QCOMPARE(devices, QList<FileKind>({FileKind::BlockDevice, FileKind::CharacterDevice}));
}

void SystemCallsTest::openingForWritingNeitherCreatesNorCuts()
{
    const QByteArray missing = scratch_.path("never made");
    QCOMPARE(calls().open(start, missing.constData(), Access::ReadWrite, LastLink::Follow),
             -ENOENT);
    QVERIFY(!Scratch::exists(missing));

    const QByteArray file = scratch_.file("kept", "content");
    QVERIFY(openAs(file, Access::ReadWrite).isOpen());
    QCOMPARE(Scratch::content(file), "content");
}

void SystemCallsTest::openingWithoutPermissionFailsWithErrorThirteen_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<mode_t>("permissions");
    QTest::addColumn<Access>("access");
    QTest::newRow("to write a file that may only be read")
        << QByteArray("read-only") << mode_t(0444) << Access::ReadWrite;
    QTest::newRow("to write a file that may only be written")
        << QByteArray("write-only") << mode_t(0222) << Access::ReadWrite;
    QTest::newRow("to read a file that may only be written")
        << QByteArray("unreadable") << mode_t(0222) << Access::Read;
}

void SystemCallsTest::openingWithoutPermissionFailsWithErrorThirteen()
{
    QFETCH(QByteArray, name);
    QFETCH(mode_t, permissions);
    QFETCH(Access, access);
    const QByteArray path = scratch_.file(name, "x");
    QCOMPARE(::chmod(path.constData(), permissions), 0);
    QCOMPARE(calls().open(start, path.constData(), access, LastLink::Stop), -13);
}

void SystemCallsTest::aHandleNeedsNoPermissionAndAllowsNoReading()
{
    const QByteArray path = scratch_.file("closed to all", "x");
    QCOMPARE(::chmod(path.constData(), 0), 0);
    const Descriptor handle = openAs(path, Access::Handle);
    QVERIFY(handle.isOpen());
    char byte = 0;
    QCOMPARE(::read(handle.fd(), &byte, 1), ssize_t(-1));
    QCOMPARE(errno, EBADF);
}

void SystemCallsTest::openingAFifoForReadingDoesNotBlock()
{
    const QByteArray fifo = scratch_.path("fifo without writer");
    QCOMPARE(::mkfifo(fifo.constData(), 0644), 0);
    QVERIFY(openAs(fifo, Access::Read).isOpen());
}

void SystemCallsTest::openingAFolderForWritingFails()
{
    const QByteArray folder = scratch_.folder("not to be written");
    QCOMPARE(calls().open(start, folder.constData(), Access::ReadWrite, LastLink::Stop), -EISDIR);
}

void SystemCallsTest::openingASocketFailsWithErrorSix()
{
    const QByteArray socket = scratch_.path("sock");
    QVERIFY(makeSocket(socket));
    QCOMPARE(calls().open(start, socket.constData(), Access::ReadWrite, LastLink::Stop), -6);
}

void SystemCallsTest::onlyAFolderOpensAsFolder_data()
{
    QTest::addColumn<Access>("access");
    QTest::newRow("to list it") << Access::Folder;
    QTest::newRow("to reach what is in it") << Access::FolderHandle;
}

void SystemCallsTest::onlyAFolderOpensAsFolder()
{
    QFETCH(Access, access);
    const Scratch scratch;
    QVERIFY(openAs(scratch.folder("folder"), access).isOpen());
    const QByteArray fifo = scratch.path("fifo");
    QCOMPARE(::mkfifo(fifo.constData(), 0644), 0);
    for (const QByteArray &path : {scratch.file("file", "x"), fifo})
        QCOMPARE(calls().open(start, path.constData(), access, LastLink::Follow), -ENOTDIR);
}

void SystemCallsTest::aLinkInTheLastComponentIsFollowedOnDemand_data()
{
    QTest::addColumn<Access>("access");
    QTest::addColumn<bool>("isFolder");
    QTest::newRow("for writing") << Access::ReadWrite << false;
    QTest::newRow("for reading") << Access::Read << false;
    QTest::newRow("as a handle") << Access::Handle << false;
    QTest::newRow("as a folder") << Access::Folder << true;
    QTest::newRow("as a handle of a folder") << Access::FolderHandle << true;
}

void SystemCallsTest::aLinkInTheLastComponentIsFollowedOnDemand()
{
    QFETCH(Access, access);
    QFETCH(bool, isFolder);
    const Scratch scratch;
    const QByteArray target = isFolder ? scratch.folder("target") : scratch.file("target", "x");
    const Descriptor opened = openAs(scratch.link("link", target), access, LastLink::Follow);
    FileStatus status;
    QCOMPARE(calls().status(opened.fd(), status), 0);
    QVERIFY(status.isSameFile(statusOf(target)));
}

void SystemCallsTest::aLinkInTheLastComponentStopsTheOpening_data()
{
    QTest::addColumn<Access>("access");
    QTest::addColumn<int>("error");
    QTest::newRow("for writing") << Access::ReadWrite << ELOOP;
    QTest::newRow("for reading") << Access::Read << ELOOP;
    QTest::newRow("as a folder") << Access::Folder << ENOTDIR;
    QTest::newRow("as a handle of a folder") << Access::FolderHandle << ENOTDIR;
}

void SystemCallsTest::aLinkInTheLastComponentStopsTheOpening()
{
    QFETCH(Access, access);
    QFETCH(int, error);
    const Scratch scratch;
    for (const QByteArray &target : {scratch.folder("folder"), scratch.file("file", "x")}) {
        const QByteArray link = scratch.link(
            "link to " + QFile::decodeName(target).section(QLatin1Char('/'), -1).toUtf8(), target);
        QCOMPARE(calls().open(start, link.constData(), access, LastLink::Stop), -error);
    }
}

void SystemCallsTest::aHandleOfALinkIsTheLinkItself()
{
    const QByteArray link = scratch_.link("dangling", "nowhere");
    const Descriptor handle = openAs(link, Access::Handle, LastLink::Stop);
    FileStatus status;
    QCOMPARE(calls().status(handle.fd(), status), 0);
    QCOMPARE(status.kind, FileKind::Link);
}

void SystemCallsTest::namesAreTakenFromTheOpenFolder()
{
    const QByteArray folder = scratch_.folder("holder");
    const QByteArray file = scratch_.file("holder/held", "x");
    const Descriptor holder = openAs(folder, Access::FolderHandle);
    const Descriptor held(calls().open(holder.fd(), "held", Access::Read, LastLink::Stop));
    QVERIFY(held.isOpen());
    FileStatus status;
    QCOMPARE(calls().statusAt(holder.fd(), "held", LastLink::Stop, status), 0);
    QVERIFY(status.isSameFile(statusOf(file)));
    QCOMPARE(calls().unlink(holder.fd(), "held"), 0);
    QVERIFY(!Scratch::exists(file));
    QVERIFY(!scratch_.folder("holder/inner").isEmpty());
    QCOMPARE(calls().removeFolder(holder.fd(), "inner"), 0);
    QVERIFY(!Scratch::exists(folder + "/inner"));
}

void SystemCallsTest::noDescriptorOutlivesAProgramStart_data()
{
    QTest::addColumn<Access>("access");
    QTest::newRow("open for writing") << Access::ReadWrite;
    QTest::newRow("open for reading") << Access::Read;
    QTest::newRow("a handle") << Access::Handle;
    QTest::newRow("a folder") << Access::Folder;
    QTest::newRow("a handle of a folder") << Access::FolderHandle;
}

void SystemCallsTest::noDescriptorOutlivesAProgramStart()
{
    QFETCH(Access, access);
    const Scratch scratch;
    const bool isFolder = access == Access::Folder || access == Access::FolderHandle;
    const QByteArray path = isFolder ? scratch.folder("it") : scratch.file("it", "x");
    const Descriptor opened = openAs(path, access);
    const Descriptor again(calls().reopen(opened.fd(), access));
    const auto closesOnExec = [](const Descriptor &descriptor) {
        return (::fcntl(descriptor.fd(), F_GETFD) & FD_CLOEXEC) != 0;
    };
    QVERIFY(opened.isOpen());
    QVERIFY(closesOnExec(opened));
    QVERIFY(again.isOpen());
    QVERIFY(closesOnExec(again));
}

void SystemCallsTest::openingWhatIsMissingFails_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("error");
    QTest::newRow("no such name") << QByteArray("nothing") << ENOENT;
    QTest::newRow("no such folder") << QByteArray("nothing/at all") << ENOENT;
    QTest::newRow("a file where a folder should be") << QByteArray("kept file/x") << ENOTDIR;
    QTest::newRow("a name too long") << QByteArray(256, 'n') << ENAMETOOLONG;
    QTest::newRow("a path too long") << QByteArray("a/").repeated(2100) << ENAMETOOLONG;
    QTest::newRow("a loop of links") << QByteArray("loop") << ELOOP;
}

void SystemCallsTest::openingWhatIsMissingFails()
{
    QFETCH(QByteArray, path);
    QFETCH(int, error);
    const Scratch scratch;
    QVERIFY(!scratch.file("kept file", "x").isEmpty());
    QVERIFY(!scratch.link("loop", "loop").isEmpty());
    const QByteArray whole = scratch.path(path);
    for (const Access access :
         {Access::ReadWrite, Access::Read, Access::Handle, Access::Folder, Access::FolderHandle})
        QCOMPARE(calls().open(start, whole.constData(), access, LastLink::Follow), -error);
    FileStatus status;
    QCOMPARE(calls().statusAt(start, whole.constData(), LastLink::Follow, status), -error);
}

void SystemCallsTest::aFolderOpensWithoutLinks()
{
    const QByteArray folder = scratch_.folder("plain");
    const Descriptor opened(calls().openFolderWithoutLinks(start, folder.constData()));
    QCOMPARE(opened.error(), -withOpenat2(0));
    if (opened.isOpen()) {
        FileStatus status;
        QCOMPARE(calls().status(opened.fd(), status), 0);
        QVERIFY(status.isSameFile(statusOf(folder)));
        QVERIFY((::fcntl(opened.fd(), F_GETFD) & FD_CLOEXEC) != 0);
    }
}

void SystemCallsTest::aLinkAnywhereStopsTheOpeningWithoutLinks_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("at the end") << QByteArray("a/link");
    QTest::newRow("in the middle") << QByteArray("a/link/c");
    QTest::newRow("at the start") << QByteArray("to a/b");
}

void SystemCallsTest::aLinkAnywhereStopsTheOpeningWithoutLinks()
{
    QFETCH(QByteArray, path);
    const Scratch scratch;
    QVERIFY(!scratch.folder("a").isEmpty() && !scratch.folder("a/b").isEmpty());
    QVERIFY(!scratch.folder("a/b/c").isEmpty());
    QVERIFY(!scratch.link("a/link", "b").isEmpty() && !scratch.link("to a", "a").isEmpty());
    const Descriptor folder = openAs(scratch.path(), Access::FolderHandle);
    QVERIFY(openAs(scratch.path(path), Access::FolderHandle).isOpen());
    QCOMPARE(calls().openFolderWithoutLinks(folder.fd(), path.constData()), withOpenat2(-ELOOP));
}

void SystemCallsTest::onlyAFolderOpensWithoutLinks()
{
    const QByteArray file = scratch_.file("no folder", "x");
    QCOMPARE(calls().openFolderWithoutLinks(start, file.constData()), withOpenat2(-ENOTDIR));
    const QByteArray missing = scratch_.path("no folder at all");
    QCOMPARE(calls().openFolderWithoutLinks(start, missing.constData()), withOpenat2(-ENOENT));
}

void SystemCallsTest::aHandleReopensItsInodeUnderAnyName()
{
    const QByteArray file = scratch_.file("first name", "content");
    const Descriptor handle = openAs(file, Access::Handle);
    const QByteArray renamed = scratch_.path("second name");
    QCOMPARE(::rename(file.constData(), renamed.constData()), 0);
    QVERIFY(!scratch_.file("first name", "another").isEmpty());
    const Descriptor reopened(calls().reopen(handle.fd(), Access::ReadWrite));
    FileStatus status;
    QCOMPARE(calls().status(reopened.fd(), status), 0);
    QVERIFY(status.isSameFile(statusOf(renamed)));
}

void SystemCallsTest::aHandleReopensAnInodeWithoutName()
{
    const QByteArray file = scratch_.file("soon gone", "content");
    const Descriptor handle = openAs(file, Access::Handle);
    QCOMPARE(::unlink(file.constData()), 0);
    const Descriptor reopened(calls().reopen(handle.fd(), Access::ReadWrite));
    FileStatus status;
    QCOMPARE(calls().status(reopened.fd(), status), 0);
    QCOMPARE(status.size, std::int64_t(7));
    QCOMPARE(status.hardLinks, std::uint64_t(0));
}

void SystemCallsTest::reopeningChecksPermissions()
{
    const QByteArray file = scratch_.file("not writable", "x");
    QCOMPARE(::chmod(file.constData(), 0444), 0);
    const Descriptor handle = openAs(file, Access::Handle);
    QCOMPARE(calls().reopen(handle.fd(), Access::ReadWrite), -EACCES);
}

void SystemCallsTest::reopeningNoDescriptorFails()
{
    QCOMPARE(calls().reopen(unusedDescriptor, Access::Read), -ENOENT);
}

void SystemCallsTest::closingTwiceFailsTheSecondTime()
{
    const int fd =
        calls().open(start, scratch_.path().constData(), Access::Folder, LastLink::Follow);
    QCOMPARE(calls().close(fd), 0);
    QCOMPARE(calls().close(fd), -EBADF);
}

void SystemCallsTest::statusTellsTheKind_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<FileKind>("kind");
    QTest::newRow("a regular file") << QByteArray("file") << FileKind::Regular;
    QTest::newRow("a folder") << QByteArray("folder") << FileKind::Folder;
    QTest::newRow("a link") << QByteArray("link") << FileKind::Link;
    QTest::newRow("a FIFO") << QByteArray("fifo") << FileKind::Fifo;
    QTest::newRow("a socket") << QByteArray("sock") << FileKind::Socket;
    QTest::newRow("a character device") << QByteArray("/dev/null") << FileKind::CharacterDevice;
}

void SystemCallsTest::statusTellsTheKind()
{
    QFETCH(QByteArray, name);
    QFETCH(FileKind, kind);
    const Scratch scratch;
    QVERIFY(!scratch.file("file", "x").isEmpty() && !scratch.folder("folder").isEmpty());
    QVERIFY(!scratch.link("link", "file").isEmpty());
    QCOMPARE(::mkfifo(scratch.path("fifo").constData(), 0644), 0);
    QVERIFY(makeSocket(scratch.path("sock")));

    const QByteArray path = name.startsWith('/') ? name : scratch.path(name);
    QCOMPARE(statusOf(path).kind, kind);
    const Descriptor handle = openAs(path, Access::Handle, LastLink::Stop);
    FileStatus status;
    QCOMPARE(calls().status(handle.fd(), status), 0);
    QCOMPARE(status.kind, kind);
}

void SystemCallsTest::statusTellsSizeLinksAndPermissions()
{
    const QByteArray file = scratch_.file("told of", 4097);
    const QByteArray otherName = scratch_.path("told of, too");
    QCOMPARE(::link(file.constData(), otherName.constData()), 0);
    QCOMPARE(::chmod(file.constData(), 04751), 0);
    const FileStatus status = statusOf(file);
    QCOMPARE(status.size, std::int64_t(4097));
    QCOMPARE(status.hardLinks, std::uint64_t(2));
    QCOMPARE(status.permissions, std::uint32_t(04751));
    QVERIFY(status.isSameFile(statusOf(otherName)));
    QVERIFY(!status.isSameFile(statusOf(scratch_.path())));
}

void SystemCallsTest::statusOfALinkIsItsOwnOrItsTargets()
{
    const QByteArray file = scratch_.file("target of a link", 12345);
    const QByteArray link = scratch_.link("link to a target", file);
    QCOMPARE(statusOf(link, LastLink::Stop).kind, FileKind::Link);
    QCOMPARE(statusOf(link, LastLink::Stop).size, std::int64_t(file.size()));
    QCOMPARE(statusOf(link, LastLink::Follow).kind, FileKind::Regular);
    QCOMPARE(statusOf(link, LastLink::Follow).size, std::int64_t(12345));
}

void SystemCallsTest::aFailedStatusLeavesTheRecordAlone()
{
    FileStatus status;
    status.size = 77;
    status.kind = FileKind::Fifo;
    QCOMPARE(calls().status(unusedDescriptor, status), -EBADF);
    QCOMPARE(calls().statusAt(start, scratch_.path("absent").constData(), LastLink::Stop, status),
             -ENOENT);
    QCOMPARE(status.size, std::int64_t(77));
    QCOMPARE(status.kind, FileKind::Fifo);
}

void SystemCallsTest::seekingAnswersThePosition()
{
    const Descriptor file = openAs(scratch_.file("sought", 10), Access::ReadWrite);
    constexpr std::int64_t beyondFourGigabytes = 8'589'934'599;
    QCOMPARE(calls().seek(file.fd(), beyondFourGigabytes), beyondFourGigabytes);
    QCOMPARE(calls().seek(file.fd(), 0), std::int64_t(0));
    QCOMPARE(calls().seek(unusedDescriptor, 0), std::int64_t(-EBADF));
}

void SystemCallsTest::seekingAPipeFailsWithIllegalSeek()
{
    const Pipe pipe;
    QCOMPARE(calls().seek(pipe.reading.fd(), 0), std::int64_t(-ESPIPE));
}

void SystemCallsTest::seekingBeforeTheStartFails()
{
    const Descriptor file = openAs(scratch_.file("sought before", 10), Access::ReadWrite);
    QCOMPARE(calls().seek(file.fd(), -1), std::int64_t(-EINVAL));
}

void SystemCallsTest::writingAnswersTheCount()
{
    const QByteArray path = scratch_.file("written", "0123456789");
    const Descriptor file = openAs(path, Access::ReadWrite);
    QCOMPARE(calls().seek(file.fd(), 4), std::int64_t(4));
    QCOMPARE(calls().write(file.fd(), "abc", 3), std::int64_t(3));
    QCOMPARE(calls().write(file.fd(), "", 0), std::int64_t(0));
    QCOMPARE(calls().sync(file.fd()), 0);
    QCOMPARE(Scratch::content(path), "0123abc789");

    // A full pipe takes what fits: less than asked, then nothing.
    const Pipe pipe;
    const QByteArray much(1 << 22, 'x');
    const std::int64_t taken =
        calls().write(pipe.writing.fd(), much.constData(), std::size_t(much.size()));
    QVERIFY(taken > 0 && taken < much.size());
    QCOMPARE(calls().write(pipe.writing.fd(), much.constData(), 1), std::int64_t(-EAGAIN));
}

void SystemCallsTest::writingToWhatIsOpenForReadingFails()
{
    const QByteArray path = scratch_.file("only read", "content");
    const Descriptor file = openAs(path, Access::Read);
    QCOMPARE(calls().write(file.fd(), "abc", 3), std::int64_t(-EBADF));
    QCOMPARE(Scratch::content(path), "content");
}

void SystemCallsTest::syncingAPipeFailsWithInvalidArgument()
{
    const Pipe pipe;
    QCOMPARE(calls().sync(pipe.writing.fd()), -EINVAL);
    QCOMPARE(calls().sync(unusedDescriptor), -EBADF);
}

void SystemCallsTest::unlinkingRemovesANameAndNoTarget()
{
    const QByteArray file = scratch_.file("target kept", "x");
    const QByteArray link = scratch_.link("link removed", file);
    QCOMPARE(calls().unlink(start, link.constData()), 0);
    QVERIFY(!Scratch::exists(link));
    QVERIFY(Scratch::exists(file));
    QCOMPARE(calls().unlink(start, link.constData()), -ENOENT);
}

void SystemCallsTest::unlinkingAFolderFails()
{
    const QByteArray folder = scratch_.folder("not unlinked");
    QCOMPARE(calls().unlink(start, folder.constData()), -EISDIR);
    QVERIFY(Scratch::exists(folder));
}

void SystemCallsTest::onlyAnEmptyFolderIsRemoved()
{
    const QByteArray folder = scratch_.folder("filled");
    const QByteArray file = scratch_.file("filled/file", "x");
    QCOMPARE(calls().removeFolder(start, folder.constData()), -ENOTEMPTY);
    QCOMPARE(calls().removeFolder(start, file.constData()), -ENOTDIR);
    QCOMPARE(calls().unlink(start, file.constData()), 0);
    QCOMPARE(calls().removeFolder(start, folder.constData()), 0);
    QVERIFY(!Scratch::exists(folder));
}

void SystemCallsTest::removingALinkToAFolderFails()
{
    const QByteArray folder = scratch_.folder("linked to");
    const QByteArray link = scratch_.link("link to it", folder);
    QCOMPARE(calls().removeFolder(start, link.constData()), -ENOTDIR);
    QVERIFY(Scratch::exists(link) && Scratch::exists(folder));
}

void SystemCallsTest::makingAFolderThatExistsFails()
{
    const QByteArray folder = scratch_.path("made");
    QCOMPARE(calls().makeFolder(folder.constData()), 0);
    QCOMPARE(statusOf(folder).kind, FileKind::Folder);
    QCOMPARE(calls().makeFolder(folder.constData()), -EEXIST);
}

void SystemCallsTest::makingAFolderNeedsItsParent()
{
    const QByteArray folder = scratch_.path("missing parent/made");
    QCOMPARE(calls().makeFolder(folder.constData()), -ENOENT);
}

void SystemCallsTest::renamingReplacesWhatBearsTheName()
{
    const QByteArray from = scratch_.file("from", "new");
    const QByteArray to = scratch_.file("to", "old");
    QCOMPARE(calls().rename(from.constData(), to.constData()), 0);
    QVERIFY(!Scratch::exists(from));
    QCOMPARE(Scratch::content(to), "new");
}

void SystemCallsTest::renamingWhatIsMissingFails()
{
    const QByteArray to = scratch_.path("never renamed to");
    QCOMPARE(calls().rename(scratch_.path("not there").constData(), to.constData()), -ENOENT);
    QVERIFY(!Scratch::exists(to));
}

void SystemCallsTest::truncatingCutsToTheSize()
{
    const QByteArray file = scratch_.file("cut", "0123456789");
    QCOMPARE(calls().truncate(file.constData(), 4), 0);
    QCOMPARE(Scratch::content(file), "0123");
    QCOMPARE(calls().truncate(scratch_.path("uncut").constData(), 0), -ENOENT);
}

void SystemCallsTest::truncatingAFolderFails()
{
    QCOMPARE(calls().truncate(scratch_.folder("never cut").constData(), 0), -EISDIR);
}

void SystemCallsTest::permissionsAreSetOnTheInodeBehindTheHandle()
{
    const QByteArray file = scratch_.file("permitted", "x");
    QCOMPARE(::chmod(file.constData(), 0), 0);
    const Descriptor handle = openAs(file, Access::Handle, LastLink::Stop);
    const QByteArray renamed = scratch_.path("permitted elsewhere");
    QCOMPARE(::rename(file.constData(), renamed.constData()), 0);
    const QByteArray newcomer = scratch_.file("permitted", "y");
    QCOMPARE(::chmod(newcomer.constData(), 0600), 0);
    QCOMPARE(calls().setPermissions(handle.fd(), 0777), 0);
    QCOMPARE(Scratch::permissions(renamed), mode_t(0777));
    QCOMPARE(Scratch::permissions(newcomer), mode_t(0600));
}

void SystemCallsTest::settingPermissionsOfNoDescriptorFails()
{
    QCOMPARE(calls().setPermissions(unusedDescriptor, 0777), -ENOENT);
}

void SystemCallsTest::inodeFlagsOfAPipeFail()
{
    const Pipe pipe;
    std::uint32_t flags = 0xABCD;
    QCOMPARE(calls().inodeFlags(pipe.reading.fd(), flags), -ENOTTY);
    QCOMPARE(flags, std::uint32_t(0xABCD));
    QCOMPARE(calls().setInodeFlags(pipe.reading.fd(), 0), -ENOTTY);
}

void SystemCallsTest::readingAFolderAnswersEveryEntryAndThenZero()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("one", "x").isEmpty() && !scratch.file("two", "x").isEmpty());
    const Descriptor folder = openAs(scratch.path(), Access::Folder);
    alignas(8) std::array<char, 4096> buffer{};
    QSet<QByteArray> names;
    std::int64_t count = 0;
    while ((count = calls().readFolder(folder.fd(), buffer.data(), buffer.size())) > 0) {
        for (std::int64_t at = 0; at < count;) {
            const auto *entry = reinterpret_cast<const dirent64 *>(buffer.data() + at);
            names.insert(entry->d_name);
            at += entry->d_reclen;
        }
    }
    QCOMPARE(count, std::int64_t(0));
    QCOMPARE(names, QSet<QByteArray>({".", "..", "one", "two"}));
}

void SystemCallsTest::readingAFolderIntoTooSmallABufferFails()
{
    const Descriptor folder = openAs(scratch_.path(), Access::Folder);
    alignas(8) std::array<char, 8> buffer{};
    QCOMPARE(calls().readFolder(folder.fd(), buffer.data(), buffer.size()), std::int64_t(-EINVAL));
}

void SystemCallsTest::readingAFileAsFolderFails()
{
    const Descriptor file = openAs(scratch_.file("no folder to read", "x"), Access::Read);
    alignas(8) std::array<char, 4096> buffer{};
    QCOMPARE(calls().readFolder(file.fd(), buffer.data(), buffer.size()), std::int64_t(-ENOTDIR));
}

void SystemCallsTest::theFileSystemsTypeIsItsNumber()
{
    std::uint64_t type = 0;
    QCOMPARE(calls().fileSystemType("/proc", type), 0);
    QCOMPARE(type, std::uint64_t(0x9FA0));
}

void SystemCallsTest::theFileSystemOfAMissingPathFails()
{
    std::uint64_t type = 5;
    QCOMPARE(calls().fileSystemType(scratch_.path("not here").constData(), type), -ENOENT);
    QCOMPARE(type, std::uint64_t(5));
}

void SystemCallsTest::anOlderErrorDoesNotShine_data()
{
    QTest::addColumn<int>("older");
    QTest::newRow("a missing name") << ENOENT;
    QTest::newRow("an interruption") << EINTR;
}

void SystemCallsTest::anOlderErrorDoesNotShine()
{
    QFETCH(int, older);
    const QByteArray path = scratch_.file("without error", "x");
    FileStatus status;
    errno = older;
    const Descriptor file = openAs(path, Access::ReadWrite);
    QVERIFY(file.isOpen());
    QCOMPARE(calls().status(file.fd(), status), 0);
    QCOMPARE(calls().statusAt(start, path.constData(), LastLink::Stop, status), 0);
    QCOMPARE(calls().seek(file.fd(), 0), std::int64_t(0));
    QCOMPARE(calls().sync(file.fd()), 0);
}

UNPRIVILEGED_TEST_MAIN(SystemCallsTest)
#include "SystemCallsTest.moc"
