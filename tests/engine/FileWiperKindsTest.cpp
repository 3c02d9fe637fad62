#include "engine/RecordedLog.h"
#include "engine/RecordingSystemCalls.h"
#include "engine/WipeOneFile.h"
#include "kit/Scratch.h"

#include <QTest>

#include <functional>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

using Calls = std::vector<QByteArray>;

/// Does something to the file system just before a call of the wiper's.
class InterferingSystemCalls final : public RecordingSystemCalls
{
  public:
    std::function<void()> beforeOpen;  ///< of the file, once
    std::function<void()> beforeSync;  ///< once
    std::function<void()> beforeClose; ///< of any descriptor, once

    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        if (access == Access::ReadWrite) {
            ++openAttempts;
            runOnce(beforeOpen);
        }
        return RecordingSystemCalls::open(folder, path, access, lastLink);
    }
    int sync(int fd) override
    {
        runOnce(beforeSync);
        return RecordingSystemCalls::sync(fd);
    }
    int close(int fd) override
    {
        runOnce(beforeClose);
        return RecordingSystemCalls::close(fd);
    }

    int openAttempts = 0;

  private:
    static void runOnce(std::function<void()> &action)
    {
        if (const auto now = std::exchange(action, nullptr))
            now();
    }
};

/// Notes how each look at a name ended: its error number, or 0.
class NotingLooks final : public ForwardingSystemCalls
{
  public:
    explicit NotingLooks(QByteArray name) : name_(std::move(name)) {}
    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        const int result = ForwardingSystemCalls::statusAt(folder, path, lastLink, status);
        if (path == name_)
            looks.push_back(-result);
        return result;
    }

    std::vector<int> looks;

  private:
    QByteArray name_;
};

ScanFacts foundBelow(const QByteArray &given)
{
    ScanFacts facts;
    facts.givenLength = std::int32_t(given.size());
    return facts;
}

ScanFacts linkFacts()
{
    ScanFacts facts;
    facts.isLink = true;
    return facts;
}

bool makeSocket(const QByteArray &path)
{
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    const bool isBound =
        ::bind(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(fd);
    return isBound;
}

int openDescriptors()
{
    int count = 0;
    DIR *folder = ::opendir("/proc/self/fd");
    while (::readdir(folder) != nullptr)
        ++count;
    ::closedir(folder);
    return count;
}

} // namespace

/// What the wiper does with the kinds of files there are, with links, and with names that others
/// change under its hands.
class FileWiperKindsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void missingFileIsTriedFiveTimesAndFailsWithErrorTwo()
    {
        const Scratch scratch;
        NotingLooks calls("missing");
        const SystemCalls::Replacement replacement(calls);
        const auto item = queueItem(scratch.path("missing"), 4);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(calls.looks, std::vector<int>(5, ENOENT));
        QCOMPARE(item->errornr(), 2);
        QCOMPARE(item->errormsg(), QStringLiteral("No such file or directory"));
        QVERIFY(item->finished());
        QVERIFY(item->isBusy());
    }

    void openIsTriedFiveTimes()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const auto item = queueItem(scratch.folder("folder"), 4);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(calls.openAttempts, 5);
        QCOMPARE(item->errornr(), 21);
        QCOMPARE(item->errormsg(), QStringLiteral("Is a directory"));
        QVERIFY(Scratch::exists(item->fullpath()));
    }

    void fifoHasNothingToWriteAndIsRemoved()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.path("fifo");
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);

        QCOMPARE(wipe(queueItem(path, 1)), 1);

        QVERIFY(!Scratch::exists(path));
        const Calls expected = {"open", "status", "seek", "sync", "seek", "close", "unlink fifo"};
        QCOMPARE(calls.calls(), expected);
    }

    void fifoIsRemovedThroughTheRealFsyncToo()
    {
        const Scratch scratch; // a FIFO answers EINVAL to fsync and ESPIPE to lseek
        const QByteArray path = scratch.path("fifo");
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);

        QCOMPARE(wipe(queueItem(path, 4)), 1);
        QVERIFY(!Scratch::exists(path));
    }

    void socketCannotBeOpenedAndStays()
    {
        const Scratch scratch;
        const QByteArray path = scratch.path("socket");
        QVERIFY(makeSocket(path));
        const auto item = queueItem(path, 4);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), 6);
        QVERIFY(Scratch::exists(path));
    }

    void otherNamesOfTheFileKeepTheOverwrittenContent()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("name", "secret");
        const QByteArray other = scratch.path("other");
        QCOMPARE(::link(path.constData(), other.constData()), 0);

        QCOMPARE(wipe(queueItem(path, 1)), 1);

        QVERIFY(!Scratch::exists(path));
        QCOMPARE(Scratch::content(other), QByteArray(6, '\0'));
    }

    void linkLeadsToItsTargetAndOnlyTheLinkGoes()
    {
        const Scratch scratch;
        const QByteArray target = scratch.file("target", "secret");
        const QByteArray link = scratch.link("link", "target");

        QCOMPARE(wipe(queueItem(link, 1, linkFacts())), 1);

        QVERIFY(!Scratch::exists(link));
        QCOMPARE(Scratch::content(target), QByteArray(6, '\0'));
    }

    void linkWhoseTargetIsLeftAloneGoesUnopened()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray target = scratch.file("target", "precious");
        const QByteArray link = scratch.link("link", "target");
        const QByteArray dangling = scratch.link("dangling", "nowhere");

        QCOMPARE(wipe(queueItem(link, 1, linkFacts()), true), 1);
        QCOMPARE(wipe(queueItem(dangling, 1, linkFacts()), true), 1);

        QVERIFY(!Scratch::exists(link));
        QVERIFY(!Scratch::exists(dangling));
        QCOMPARE(Scratch::content(target), QByteArray("precious"));
        QCOMPARE(calls.openAttempts, 0);
    }

    void linkIsNotEvenRemovedByAnUnknownMethod()
    {
        const Scratch scratch;
        scratch.file("target", "precious");
        const QByteArray link = scratch.link("link", "target");

        QCOMPARE(wipe(queueItem(link, 11, linkFacts()), true), 2);
        QVERIFY(Scratch::exists(link));
        QCOMPARE(Scratch::content(link), QByteArray("precious"));
    }

    void fileThatWasALinkIsOverwrittenEvenWhereTargetsAreLeftAlone()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("was a link", "secret");

        QCOMPARE(wipe(queueItem(path, 1, linkFacts()), true), 1);

        QVERIFY(!Scratch::exists(path));
        QCOMPARE(calls.passes(), Calls{QByteArray(6, '\0')});
    }

    void danglingLinkFails()
    {
        const Scratch scratch;
        const QByteArray link = scratch.link("link", "nowhere");
        const auto item = queueItem(link, 1, linkFacts());

        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errornr(), 2);
        QVERIFY(Scratch::exists(link));
    }

    void linkLoopFails()
    {
        const Scratch scratch;
        const QByteArray link = scratch.link("one", "two");
        scratch.link("two", "one");
        const auto item = queueItem(link, 1, linkFacts());

        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errornr(), 40);
        QVERIFY(Scratch::exists(link));
    }

    void linkToAFolderFailsWithTheSystemsText()
    {
        const Scratch scratch;
        scratch.folder("folder");
        const QByteArray link = scratch.link("link", "folder");
        const auto item = queueItem(link, 1, linkFacts());

        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errormsg(), QStringLiteral("Is a directory"));
        QVERIFY(Scratch::exists(link));
    }

    void strangeNamesAreErasedLikeAnyOther_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("255 bytes") << QByteArray(255, 'n');
        QTest::newRow("not UTF-8") << QByteArray("caf\xE9 \xFF");
        QTest::newRow("newline") << QByteArray("two\nlines");
        QTest::newRow("blanks and semicolon") << QByteArray(" a ; b ");
        QTest::newRow("percent escapes") << QByteArray("%2F%00%FF");
        QTest::newRow("backslash and quotes") << QByteArray("\\ \" '");
        QTest::newRow("leading dash") << QByteArray("-rf");
    }
    void strangeNamesAreErasedLikeAnyOther()
    {
        QFETCH(QByteArray, name);
        const Scratch scratch;
        const QByteArray path = scratch.file(name, "secret");
        QVERIFY(Scratch::exists(path));

        QCOMPARE(wipe(queueItem(path, 1, foundBelow(scratch.path()))), 1);
        QVERIFY(!Scratch::exists(path));
    }

    void pathLongerThanTheSystemAllowsFailsWithItsText()
    {
        const Scratch scratch;
        QByteArray path = scratch.path();
        while (path.size() < 5000)
            path += "/" + QByteArray(200, 'd');
        const auto item = queueItem(path, 1, foundBelow(scratch.path()));

        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errornr(), 36);
        QCOMPARE(item->errormsg(), QStringLiteral("File name too long"));
    }

    void fileWhosePathIsTooLongFailsAlthoughItsFolderCouldBeReached()
    {
        const Scratch scratch;
        QByteArray folder = scratch.path();
        while (folder.size() < 3900) {
            folder += "/" + QByteArray(180, 'd');
            QCOMPARE(::mkdir(folder.constData(), 0755), 0);
        }
        const int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        const QByteArray name(250, 'n');
        const int file = ::openat(fd, name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        QCOMPARE(::write(file, "secret", 6), 6);
        ::close(file);
        const auto item = queueItem(folder + '/' + name, 1, foundBelow(scratch.path()));

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), 36);
        struct stat status = {};
        QCOMPARE(::fstatat(fd, name.constData(), &status, 0), 0);
        QCOMPARE(status.st_size, 6);
        ::unlinkat(fd, name.constData(), 0);
        ::close(fd);
    }

    void targetToBeLeftAloneIsLeftAloneAlsoWhenTheLinkCannotBeLookedAtOnce()
    {
        class FaultyOnce final : public ForwardingSystemCalls
        {
          public:
            int statusAt(int folder, const char *path, LastLink lastLink,
                         FileStatus &status) override
            {
                return std::exchange(isFirst_, false)
                           ? -EIO
                           : ForwardingSystemCalls::statusAt(folder, path, lastLink, status);
            }

          private:
            bool isFirst_ = true;
        } calls;
        const SystemCalls::Replacement replacement(calls);
        const Scratch scratch;
        const QByteArray target = scratch.file("target", "precious");
        const QByteArray link = scratch.link("link", "target");

        wipe(queueItem(link, 1, linkFacts()), true);

        QCOMPARE(Scratch::content(target), QByteArray("precious"));
    }

    void fileOfTheKernelsIsNotEvenOpened()
    {
        class KernelFiles final : public ForwardingSystemCalls
        {
          public:
            int fileSystemType(const char *, std::uint64_t &type) override
            {
                type = 0x62656572; // sysfs
                return 0;
            }
        } calls;
        const SystemCalls::Replacement replacement(calls);
        const Scratch scratch;
        const auto item = queueItem(scratch.file("switch", "untouched"), 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(Scratch::content(item->fullpath()), QByteArray("untouched"));
        QCOMPARE(item->errormsg(),
                 QStringLiteral("Refused: a part of the system itself is never erased"));
    }

    void emptyPathFails()
    {
        const auto item = queueItem("", 1);
        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errornr(), 2);
    }

    void fileSwappedForALinkSinceTheScanIsNotFollowed()
    {
        const Scratch scratch;
        const QByteArray precious = scratch.file("precious", "untouched");
        const QByteArray path = scratch.link("file", "precious");
        const auto item = queueItem(path, 1, foundBelow(scratch.path()));

        QCOMPARE(wipe(item), 2);

        QCOMPARE(Scratch::content(precious), QByteArray("untouched"));
        QVERIFY(Scratch::exists(path));
    }

    void fileSwappedForALinkJustBeforeItIsOpenedIsNotFollowed()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray precious = scratch.file("precious", "untouched");
        const QByteArray path = scratch.file("file", "secret");
        calls.beforeOpen = [&] {
            ::unlink(path.constData());
            scratch.link("file", "precious");
        };
        const auto item = queueItem(path, 1, foundBelow(scratch.path()));

        QCOMPARE(wipe(item), 2);

        QCOMPARE(Scratch::content(precious), QByteArray("untouched"));
        QVERIFY(Scratch::exists(path));
        QCOMPARE(item->errornr(), 40);
    }

    void fileSwappedForAFolderFails()
    {
        const Scratch scratch;
        const QByteArray path = scratch.folder("file");
        const QByteArray inside = scratch.file("file/precious", "untouched");

        QCOMPARE(wipe(queueItem(path, 1, foundBelow(scratch.path()))), 2);
        QCOMPARE(Scratch::content(inside), QByteArray("untouched"));
    }

    void anotherRegularFileUnderTheNameIsErased()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("file", "scanned");
        const auto item = queueItem(path, 1, foundBelow(scratch.path()));
        QCOMPARE(::unlink(path.constData()), 0);
        scratch.file("file", "another one");

        QCOMPARE(wipe(item), 1);
        QVERIFY(!Scratch::exists(path));
    }

    void folderOnTheWaySwappedForALinkIsNotFollowed_data()
    {
        QTest::addColumn<int>("unknownCallError");
        QTest::newRow("as the system does it") << 0;
        QTest::newRow("where openat2 does not exist") << ENOSYS;
        QTest::newRow("where a filter forbids openat2") << EPERM;
    }
    void folderOnTheWaySwappedForALinkIsNotFollowed()
    {
        QFETCH(int, unknownCallError);
        class OldSystem final : public ForwardingSystemCalls
        {
          public:
            explicit OldSystem(int error) : error_(error) {}
            int openFolderWithoutLinks(int folder, const char *path) override
            {
                return error_ != 0 ? -error_
                                   : ForwardingSystemCalls::openFolderWithoutLinks(folder, path);
            }

          private:
            int error_;
        } calls(unknownCallError);
        const SystemCalls::Replacement replacement(calls);
        const Scratch scratch;
        scratch.folder("elsewhere");
        const QByteArray precious = scratch.file("elsewhere/file", "untouched");
        scratch.folder("dropped");
        scratch.link("dropped/sub", "../elsewhere");

        // What the scan found was dropped/sub/file, with sub a real folder.
        QCOMPARE(wipe(queueItem(scratch.path("dropped/sub/file"), 1, foundBelow(scratch.path()))),
                 2);
        QCOMPARE(Scratch::content(precious), QByteArray("untouched"));

        // The dropped folder itself, swapped.
        scratch.link("dropped2", "elsewhere");
        QCOMPARE(wipe(queueItem(scratch.path("dropped2/file"), 1, foundBelow(scratch.path()))), 2);
        QCOMPARE(Scratch::content(precious), QByteArray("untouched"));

        // A real one is erased all the same.
        scratch.folder("real");
        scratch.folder("real/sub");
        const QByteArray real = scratch.file("real/sub/file", "secret");
        QCOMPARE(wipe(queueItem(real, 1, foundBelow(scratch.path()))), 1);
        QVERIFY(!Scratch::exists(real));
    }

    void linkInTheGivenPathIsTheUsersOwnAndFollowed()
    {
        const Scratch scratch;
        scratch.folder("real");
        const QByteArray file = scratch.file("real/file", "secret");
        const QByteArray link = scratch.link("link", "real");

        QCOMPARE(wipe(queueItem(link + "/file", 1, foundBelow(link))), 1);
        QVERIFY(!Scratch::exists(file));
    }

    void nameTakenByAnotherFileMeanwhileStays()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("file", "secret");
        const QByteArray moved = scratch.path("moved");
        calls.beforeSync = [&] {
            ::rename(path.constData(), moved.constData());
            scratch.file("file", "precious");
        };
        const auto item = queueItem(path, 1, foundBelow(scratch.path()));

        QCOMPARE(wipe(item), 2);

        QCOMPARE(Scratch::content(path), QByteArray("precious"));
        QCOMPARE(Scratch::content(moved), QByteArray(6, '\0'));
        QCOMPARE(item->errornr(), 0);
        QCOMPARE(item->errormsg(),
                 QStringLiteral("Replaced by another file while it was being erased"));
    }

    void nameGoneMeanwhileFailsWithErrorTwo()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("file", "secret");
        calls.beforeSync = [&] { ::unlink(path.constData()); };
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errornr(), 2);
    }

    void folderReplacedMeanwhileDoesNotCostTheNewOnesFile()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        scratch.folder("folder");
        const QByteArray path = scratch.file("folder/file", "secret");
        calls.beforeSync = [&] {
            ::rename(scratch.path("folder").constData(), scratch.path("moved").constData());
            scratch.folder("folder");
            scratch.file("folder/file", "precious");
        };

        wipe(queueItem(path, 1, foundBelow(scratch.path())));

        QCOMPARE(Scratch::content(path), QByteArray("precious"));
    }

    void linkPointedElsewhereMeanwhileStays()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray target = scratch.file("target", "secret");
        const QByteArray precious = scratch.file("precious", "untouched");
        const QByteArray link = scratch.link("link", "target");
        calls.beforeSync = [&] {
            ::unlink(link.constData());
            scratch.link("link", "precious");
        };

        QCOMPARE(wipe(queueItem(link, 1, linkFacts())), 2);

        QVERIFY(Scratch::exists(link));
        QCOMPARE(Scratch::content(precious), QByteArray("untouched"));
        QCOMPARE(Scratch::content(target), QByteArray(6, '\0'));
    }

    void fileThatChangedItsSizeMeanwhileStays_data()
    {
        QTest::addColumn<int>("newSize");
        QTest::newRow("grown by a block") << 8192;
        QTest::newRow("grown by a byte") << 5001;
        QTest::newRow("cut") << 100;
    }
    void fileThatChangedItsSizeMeanwhileStays()
    {
        QFETCH(int, newSize);
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = scratch.file("file", 5000);
        calls.beforeSync = [&] { QCOMPARE(::truncate(path.constData(), newSize), 0); };
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QVERIFY(Scratch::exists(path));
        QCOMPARE(item->errornr(), 0);
        QCOMPARE(item->errormsg(), QStringLiteral("File changed while it was being erased"));
    }

    void folderWithALinkAsItsPathsEndInTheRootFolderIsReached()
    {
        // A path whose folder is "/" itself.
        const auto item = queueItem("/no such name at all", 1, foundBelow("/"));
        QCOMPARE(wipe(item), 2);
        QCOMPARE(item->errornr(), 2);
    }

    void nothingIsLogged()
    {
        const Scratch scratch;
        InterferingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const RecordedLog log;

        QCOMPARE(wipe(queueItem(scratch.file("erased", 5000), 4)), 1);
        QCOMPARE(wipe(queueItem(scratch.file("no method", 5000), 99)), 2);
        QCOMPARE(wipe(queueItem(scratch.path("missing"), 4)), 2);
        QCOMPARE(wipe(queueItem(scratch.folder("folder"), 4)), 2);
        const QByteArray grown = scratch.file("grown", 5000);
        calls.beforeSync = [&] { QCOMPARE(::truncate(grown.constData(), 5001), 0); };
        QCOMPARE(wipe(queueItem(grown, 4)), 2);
        const QByteArray replaced = scratch.file("replaced", 5000);
        calls.beforeSync = [&] {
            ::unlink(replaced.constData());
            scratch.file("replaced", "precious");
        };
        QCOMPARE(wipe(queueItem(replaced, 4)), 2);

        QCOMPARE(log.lines(), QStringList());
    }

    void noDescriptorIsLeftOpen()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        scratch.folder("folder");
        const int before = openDescriptors();

        QCOMPARE(wipe(queueItem(scratch.file("one", 5000), 4)), 1);
        QCOMPARE(wipe(queueItem(scratch.file("two", 5000), 99)), 2);
        QCOMPARE(wipe(queueItem(scratch.path("missing"), 4)), 2);
        QCOMPARE(wipe(queueItem(scratch.path("folder"), 4)), 2);

        QCOMPARE(openDescriptors(), before);
    }

    void failedFstatLeavesItsDescriptorOpen()
    {
        class FaultyStatus final : public RecordingSystemCalls
        {
          public:
            int status(int, FileStatus &) override { return -EIO; }
        } calls;
        const SystemCalls::Replacement replacement(calls);
        const Scratch scratch;
        const int before = openDescriptors();
        const auto item = queueItem(scratch.file("file", "precious"), 4);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), 5);
        QCOMPARE(openDescriptors(), before + 5);
        QCOMPARE(Scratch::content(item->fullpath()), QByteArray("precious"));
    }
};

QTEST_GUILESS_MAIN(FileWiperKindsTest)
#include "FileWiperKindsTest.moc"
