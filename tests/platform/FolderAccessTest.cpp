#include "platform/FolderAccess.h"

#include "kit/Scratch.h"
#include "platform/FolderChain.h"
#include "platform/ScriptedSystemCalls.h"

#include <QTest>

#include <cerrno>

using LastLink = SystemCalls::LastLink;

namespace {

/// Every case is asked of a system that knows openat2, of one that does not, and of one whose
/// filter forbids it.
void addSystems()
{
    QTest::addColumn<int>("openat2Error");
    QTest::newRow("with openat2") << 0;
    QTest::newRow("openat2 is unknown") << ENOSYS;
    QTest::newRow("openat2 is forbidden") << EPERM;
}

bool isFolderAt(const Descriptor &folder, const QByteArray &path)
{
    FileStatus opened;
    FileStatus named;
    SystemCalls &calls = SystemCalls::real();
    return calls.status(folder.fd(), opened) >= 0 &&
           calls.statusAt(SystemCalls::startFolder, path.constData(), LastLink::Follow, named) >=
               0 &&
           opened.isSameFile(named);
}

QByteArray canonical(const QByteArray &path)
{
    return QFile::encodeName(QFileInfo(QFile::decodeName(path)).canonicalFilePath());
}

} // namespace

class FolderAccessTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void aFolderIsOpenedByItsPath_data() { addSystems(); }
    void aFolderIsOpenedByItsPath();
    void theGivenFolderItselfIsOpened_data() { addSystems(); }
    void theGivenFolderItselfIsOpened();
    void theRootFolderMayBeTheGivenEnd_data() { addSystems(); }
    void theRootFolderMayBeTheGivenEnd();
    void belowZeroAllOfThePathIsGiven_data() { addSystems(); }
    void belowZeroAllOfThePathIsGiven();
    void aLinkInTheGivenEndIsFollowed_data();
    void aLinkInTheGivenEndIsFollowed();
    void aLinkInTheFoundEndIsNotFollowed_data();
    void aLinkInTheFoundEndIsNotFollowed();
    void aFoundEndBelowALinkIsStillFreeOfLinks_data() { addSystems(); }
    void aFoundEndBelowALinkIsStillFreeOfLinks();
    void whatIsMissingOrNoFolderFails_data();
    void whatIsMissingOrNoFolderFails();
    void anEmptyPathIsMissing();
    void aGivenLengthBeyondThePathGivesAllOfIt_data() { addSystems(); }
    void aGivenLengthBeyondThePathGivesAllOfIt();
    void aGivenEndLongerThanTheSystemTakesFails_data() { addSystems(); }
    void aGivenEndLongerThanTheSystemTakesFails();
    void aPathTooLongAsAWholeIsReachedThroughItsEnds_data() { addSystems(); }
    void aPathTooLongAsAWholeIsReachedThroughItsEnds();
    void noDescriptorIsLeftOpen_data() { addSystems(); }
    void noDescriptorIsLeftOpen();
    void aPathWithoutLinksTakesOneCall();

  private:
    std::unique_ptr<Scratch> scratch_;
    std::unique_ptr<ScriptedSystemCalls> calls_;
    std::unique_ptr<SystemCalls::Replacement> replacement_;
};

/// given/a/b/c, and beside it outside/b/c.
void FolderAccessTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    for (const char *folder :
         {"given", "given/a", "given/a/b", "given/a/b/c", "outside", "outside/b", "outside/b/c"})
        QVERIFY(!scratch_->folder(folder).isEmpty());
    calls_ = std::make_unique<ScriptedSystemCalls>();
    replacement_ = std::make_unique<SystemCalls::Replacement>(*calls_);
}

void FolderAccessTest::cleanup()
{
    replacement_.reset();
    calls_.reset();
    scratch_.reset();
}

void FolderAccessTest::aFolderIsOpenedByItsPath()
{
    QFETCH(int, openat2Error);
    calls_->openat2Error = openat2Error;
    const QByteArray path = scratch_->path("given/a/b/c");
    QVERIFY(isFolderAt(FolderAccess::open(path, scratch_->path("given").size()), path));
}

void FolderAccessTest::theGivenFolderItselfIsOpened()
{
    QFETCH(int, openat2Error);
    calls_->openat2Error = openat2Error;
    const QByteArray path = scratch_->path("given");
    QVERIFY(isFolderAt(FolderAccess::open(path, path.size()), path));
}

void FolderAccessTest::theRootFolderMayBeTheGivenEnd()
{
    QFETCH(int, openat2Error);
    calls_->openat2Error = openat2Error;
    QVERIFY(isFolderAt(FolderAccess::open("/", 1), "/"));
    // The scratch folder's own path may hold links, which are none of the user's here.
    const QByteArray path = canonical(scratch_->path("given/a"));
    QVERIFY(isFolderAt(FolderAccess::open(path, 1), path));
    QVERIFY(!scratch_->link("given/link", "a").isEmpty());
    QVERIFY(!FolderAccess::open(canonical(scratch_->path("given")) + "/link", 1).isOpen());
}

void FolderAccessTest::belowZeroAllOfThePathIsGiven()
{
    QFETCH(int, openat2Error);
    calls_->openat2Error = openat2Error;
    QVERIFY(!scratch_->link("given/link", "a").isEmpty());
    const QByteArray path = scratch_->path("given/link/b");
    QVERIFY(isFolderAt(FolderAccess::open(path, -1), path));
}

void FolderAccessTest::aLinkInTheGivenEndIsFollowed_data()
{
    QTest::addColumn<int>("openat2Error");
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<QByteArray>("found");
    for (const int error : {0, ENOSYS, EPERM}) {
        QTest::addRow("as its last component, openat2 answers %d", error)
            << error << QByteArray("link") << QByteArray("/b/c");
        QTest::addRow("further up, openat2 answers %d", error)
            << error << QByteArray("link/b") << QByteArray("/c");
        QTest::addRow("with nothing below, openat2 answers %d", error)
            << error << QByteArray("link") << QByteArray();
    }
}

void FolderAccessTest::aLinkInTheGivenEndIsFollowed()
{
    QFETCH(int, openat2Error);
    QFETCH(QByteArray, given);
    QFETCH(QByteArray, found);
    QVERIFY(!scratch_->link("link", scratch_->path("outside")).isEmpty());
    calls_->openat2Error = openat2Error;
    const QByteArray path = scratch_->path(given + found);
    const Descriptor folder = FolderAccess::open(path, scratch_->path(given).size());
    QVERIFY(isFolderAt(folder, QByteArray(path).replace("/link", "/outside")));
}

void FolderAccessTest::aLinkInTheFoundEndIsNotFollowed_data()
{
    QTest::addColumn<int>("openat2Error");
    QTest::addColumn<QByteArray>("swapped");
    for (const int error : {0, ENOSYS, EPERM}) {
        QTest::addRow("first, openat2 answers %d", error) << error << QByteArray("given/a");
        QTest::addRow("in the middle, openat2 answers %d", error)
            << error << QByteArray("given/a/b");
        QTest::addRow("last, openat2 answers %d", error) << error << QByteArray("given/a/b/c");
    }
}

/// The component became a link to a folder that holds the very same names.
void FolderAccessTest::aLinkInTheFoundEndIsNotFollowed()
{
    QFETCH(int, openat2Error);
    QFETCH(QByteArray, swapped);
    const QByteArray aside = scratch_->path("aside");
    QCOMPARE(::rename(scratch_->path(swapped).constData(), aside.constData()), 0);
    QVERIFY(!scratch_->link(swapped, aside).isEmpty());
    const QByteArray path = scratch_->path("given/a/b/c");
    QVERIFY(isFolderAt(
        Descriptor(SystemCalls::real().open(SystemCalls::startFolder, path.constData(),
                                            SystemCalls::Access::Folder, LastLink::Follow)),
        path));

    calls_->openat2Error = openat2Error;
    const Descriptor folder = FolderAccess::open(path, scratch_->path("given").size());
    QVERIFY(!folder.isOpen());
    QCOMPARE(folder.error(), openat2Error == 0 ? ELOOP : ENOTDIR);
}

void FolderAccessTest::aFoundEndBelowALinkIsStillFreeOfLinks()
{
    QFETCH(int, openat2Error);
    QVERIFY(!scratch_->link("link", "given").isEmpty());
    QVERIFY(!scratch_->link("given/inner", "a").isEmpty());
    calls_->openat2Error = openat2Error;
    const qsizetype givenLength = scratch_->path("link").size();
    QVERIFY(!FolderAccess::open(scratch_->path("link/inner/b"), givenLength).isOpen());
    QVERIFY(FolderAccess::open(scratch_->path("link/a/b"), givenLength).isOpen());
}

void FolderAccessTest::whatIsMissingOrNoFolderFails_data()
{
    QTest::addColumn<int>("openat2Error");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("error");
    for (const int openat2Error : {0, ENOSYS, EPERM}) {
        QTest::addRow("a missing found folder, openat2 answers %d", openat2Error)
            << openat2Error << QByteArray("given/a/missing") << ENOENT;
        QTest::addRow("a missing folder above it, openat2 answers %d", openat2Error)
            << openat2Error << QByteArray("given/missing/b") << ENOENT;
        QTest::addRow("a missing given folder, openat2 answers %d", openat2Error)
            << openat2Error << QByteArray("never") << ENOENT;
        QTest::addRow("a file, openat2 answers %d", openat2Error)
            << openat2Error << QByteArray("given/file") << ENOTDIR;
        QTest::addRow("a folder below a file, openat2 answers %d", openat2Error)
            << openat2Error << QByteArray("given/file/b") << ENOTDIR;
    }
}

void FolderAccessTest::whatIsMissingOrNoFolderFails()
{
    QFETCH(int, openat2Error);
    QFETCH(QByteArray, path);
    QFETCH(int, error);
    QVERIFY(!scratch_->file("given/file", "x").isEmpty());
    calls_->openat2Error = openat2Error;
    const Descriptor folder =
        FolderAccess::open(scratch_->path(path), scratch_->path("given").size());
    QVERIFY(!folder.isOpen());
    QCOMPARE(folder.error(), error);
}

void FolderAccessTest::anEmptyPathIsMissing()
{
    QCOMPARE(FolderAccess::open(QByteArray(), 0).error(), ENOENT);
    QCOMPARE(FolderAccess::open("", 0).error(), ENOENT);
    QCOMPARE(FolderAccess::open("", -1).error(), ENOENT);
}

void FolderAccessTest::aGivenLengthBeyondThePathGivesAllOfIt()
{
    QFETCH(int, openat2Error);
    calls_->openat2Error = openat2Error;
    QVERIFY(!scratch_->link("link", "given").isEmpty());
    const QByteArray path = scratch_->path("link");
    QVERIFY(isFolderAt(FolderAccess::open(path, path.size() + 5), path));
}

void FolderAccessTest::aGivenEndLongerThanTheSystemTakesFails()
{
    QFETCH(int, openat2Error);
    const FolderChain chain(scratch_->path("given"), QByteArray(250, 'n'), 17);
    QVERIFY(chain.isComplete());
    calls_->openat2Error = openat2Error;
    const QByteArray path = chain.bottomPath();
    const Descriptor folder = FolderAccess::open(path, path.size());
    QVERIFY(!folder.isOpen());
    QCOMPARE(folder.error(), ENAMETOOLONG);
}

void FolderAccessTest::aPathTooLongAsAWholeIsReachedThroughItsEnds()
{
    QFETCH(int, openat2Error);
    const FolderChain chain(scratch_->path("given"), QByteArray(250, 'n'), 17);
    QVERIFY(chain.isComplete());
    calls_->openat2Error = openat2Error;
    const QByteArray path = chain.bottomPath();
    const qsizetype givenLength = path.size() - 4 * 251;
    QVERIFY(path.size() > PATH_MAX && givenLength < PATH_MAX);
    const Descriptor folder = FolderAccess::open(path, givenLength);
    QVERIFY(folder.isOpen());
    FileStatus status;
    QCOMPARE(SystemCalls::real().status(folder.fd(), status), 0);
    QCOMPARE(status.hardLinks, std::uint64_t(2)); // of the chain, only the deepest holds no folder
}

void FolderAccessTest::noDescriptorIsLeftOpen()
{
    QFETCH(int, openat2Error);
    calls_->openat2Error = openat2Error;
    QVERIFY(!scratch_->link("link", "given").isEmpty());
    QVERIFY(!scratch_->link("given/a/inner", "b").isEmpty());
    const qsizetype givenLength = scratch_->path("link").size();
    {
        const Descriptor folder = FolderAccess::open(scratch_->path("link/a/b/c"), givenLength);
        QVERIFY(folder.isOpen());
        QCOMPARE(calls_->openNow(), 1);
    }
    QVERIFY(!FolderAccess::open(scratch_->path("link/a/inner/c"), givenLength).isOpen());
    QVERIFY(!FolderAccess::open(scratch_->path("link/a/b/missing"), givenLength).isOpen());
    QCOMPARE(calls_->openNow(), 0);
    QVERIFY(calls_->mostOpen() <= 3);
}

void FolderAccessTest::aPathWithoutLinksTakesOneCall()
{
    bool wasOpened = false;
    calls_->beforeOpen = [&wasOpened](const QByteArray &) { wasOpened = true; };
    QVERIFY(FolderAccess::open(canonical(scratch_->path("given/a/b")), 1).isOpen());
    QVERIFY(!wasOpened);
}

QTEST_APPLESS_MAIN(FolderAccessTest)
#include "FolderAccessTest.moc"
