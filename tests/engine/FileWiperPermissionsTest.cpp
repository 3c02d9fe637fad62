#include "engine/RecordingSystemCalls.h"
#include "engine/WipeOneFile.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"

#include <QTest>

namespace {

ScanFacts linkFacts()
{
    ScanFacts facts;
    facts.isLink = true;
    return facts;
}

class FailingSync final : public RecordingSystemCalls
{
  public:
    int sync(int fd) override
    {
        RecordingSystemCalls::sync(fd);
        return -EIO;
    }
};

/// Notes the permissions that each attempt to open a file for writing finds.
class NotingPermissions final : public RecordingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        if (access == Access::ReadWrite) {
            FileStatus found;
            ForwardingSystemCalls::statusAt(folder, path, lastLink, found);
            permissions.push_back(found.permissions);
        }
        return RecordingSystemCalls::open(folder, path, access, lastLink);
    }

    std::vector<std::uint32_t> permissions;
};

QByteArray unwritable(const Scratch &scratch, const QByteArray &name)
{
    const QByteArray path = scratch.file(name, "secret");
    ::chmod(path.constData(), 0);
    return path;
}

} // namespace

/// What permissions decide, seen by a user whom they bind.
class FileWiperPermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void permissionsBindThisProcess()
    {
        const Scratch scratch;
        QVERIFY(::geteuid() != 0);
        QCOMPARE(::open(unwritable(scratch, "file").constData(), O_RDWR | O_CLOEXEC), -1);
        QCOMPARE(errno, EACCES);
    }

    void fileNobodyMayWriteIsPermittedAndErasedAtTheSecondAttempt()
    {
        const Scratch scratch;
        NotingPermissions calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = unwritable(scratch, "file");
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 1);

        const std::vector<int> expected = {EACCES, 0};
        QCOMPARE(calls.attempts(), expected);
        const std::vector<std::uint32_t> permissions = {0, 0777};
        QCOMPARE(calls.permissions, permissions);
        QVERIFY(!Scratch::exists(path));
        QCOMPARE(item->errornr(), 0);
    }

    void repairedPermissionsArePutBackAsSoonAsTheFileIsOpen()
    {
        const Scratch scratch;
        const QByteArray path = unwritable(scratch, "file");
        class Looking final : public RecordingSystemCalls
        {
          public:
            int sync(int fd) override
            {
                ForwardingSystemCalls::status(fd, seen);
                return RecordingSystemCalls::sync(fd);
            }
            FileStatus seen;
        } calls;
        const SystemCalls::Replacement replacement(calls);

        ::chmod(path.constData(), 0400);
        QCOMPARE(wipe(queueItem(path, 1)), 1);
        QCOMPARE(calls.seen.permissions, 0400U);
    }

    void permissionsArePutBackWhereTheFileThenFails()
    {
        const Scratch scratch;
        FailingSync calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray path = unwritable(scratch, "file");
        ::chmod(path.constData(), 0440);
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), EIO);
        QCOMPARE(Scratch::permissions(path), mode_t(0440));
    }

    void permissionsArePutBackForAnUnknownMethod()
    {
        const Scratch scratch;
        const QByteArray path = unwritable(scratch, "file");

        QCOMPARE(wipe(queueItem(path, 11)), 2);
        QCOMPARE(Scratch::permissions(path), mode_t(0));
    }

    void permissionsArePutBackOnAnotherNameOfTheFile()
    {
        const Scratch scratch;
        const QByteArray path = scratch.file("name", "secret");
        const QByteArray other = scratch.path("other");
        QCOMPARE(::link(path.constData(), other.constData()), 0);
        ::chmod(path.constData(), 0400);

        QCOMPARE(wipe(queueItem(path, 1)), 1);

        QVERIFY(!Scratch::exists(path));
        QCOMPARE(Scratch::permissions(other), mode_t(0400));
        QCOMPARE(Scratch::content(other), QByteArray(6, '\0'));
    }

    void permissionsArePutBackOnTheTargetOfALink()
    {
        const Scratch scratch;
        const QByteArray target = scratch.file("target", "secret");
        ::chmod(target.constData(), 0400);
        const QByteArray link = scratch.link("link", "target");

        QCOMPARE(wipe(queueItem(link, 1, linkFacts())), 1);

        QVERIFY(!Scratch::exists(link));
        QCOMPARE(Scratch::permissions(target), mode_t(0400));
        QCOMPARE(Scratch::content(target), QByteArray(6, '\0'));
    }

    void targetOfALinkThatTookTheFilesPlaceIsNotPermitted()
    {
        const Scratch scratch;
        const QByteArray precious = unwritable(scratch, "precious");
        const QByteArray path = scratch.link("file", "precious");

        QCOMPARE(wipe(queueItem(path, 1)), 2);
        QCOMPARE(Scratch::permissions(precious), mode_t(0));
        QVERIFY(Scratch::exists(path));
    }

    void fileInAFolderThatMayNotBeChangedIsOverwrittenAndStays()
    {
        const Scratch scratch;
        RecordingSystemCalls calls;
        const SystemCalls::Replacement replacement(calls);
        const QByteArray folder = scratch.folder("folder");
        const QByteArray path = scratch.file("folder/file", "secret");
        ::chmod(folder.constData(), 0555);
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), EACCES);
        QCOMPARE(item->errormsg(), QStringLiteral("Permission denied"));
        QCOMPARE(Scratch::content(path), QByteArray(6, '\0'));
        ::chmod(folder.constData(), 0755);
    }

    void fileInAFolderThatMayNotBeEnteredFails()
    {
        const Scratch scratch;
        const QByteArray folder = scratch.folder("folder");
        const QByteArray path = scratch.file("folder/file", "secret");
        ::chmod(folder.constData(), 0);
        const auto item = queueItem(path, 1);

        QCOMPARE(wipe(item), 2);

        QCOMPARE(item->errornr(), EACCES);
        ::chmod(folder.constData(), 0755);
        QCOMPARE(Scratch::content(path), QByteArray("secret"));
    }
};

UNPRIVILEGED_TEST_MAIN(FileWiperPermissionsTest)
#include "FileWiperPermissionsTest.moc"
