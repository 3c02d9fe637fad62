#include "platform/FolderListing.h"

#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QSemaphore>
#include <QTest>

#include <cerrno>
#include <thread>

namespace {

QByteArrayList names(const FolderListing::Result &result)
{
    QByteArrayList names;
    for (const FolderListing::Entry &entry : result.entries)
        names.append(entry.name);
    return names;
}

const FolderListing::Entry &entry(const FolderListing::Result &result, const QByteArray &name)
{
    const auto found =
        std::find_if(result.entries.begin(), result.entries.end(),
                     [&name](const FolderListing::Entry &each) { return each.name == name; });
    Q_ASSERT(found != result.entries.end());
    return *found;
}

FolderListing::Result read(const QByteArray &folder)
{
    return FolderListing::read(folder, false);
}

/// Lets a folder be opened only when it is told to.
class SlowFolders : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        gate.acquire();
        return ForwardingSystemCalls::open(folder, path, access, lastLink);
    }
    QSemaphore gate;
};

} // namespace

class FolderListingTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void foldersComeFirstThenNamesWithoutRegardToCase();
    void namesAreBytes();
    void filesHaveTheirSizes();
    void aLinkToAFolderCanBeEntered();
    void whatIsNoFolderSaysSo();
    void whatIsNotThereSaysSo();
    void hiddenNamesAreTold();
    void aCancelledReadingEndsEarly();
    void aSlowFolderKeepsNobodyWaiting();
    void aCancelledReadingIsNotTold();
};

void FolderListingTest::foldersComeFirstThenNamesWithoutRegardToCase()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("b", QByteArray()).isEmpty() &&
            !scratch.file("A", QByteArray()).isEmpty() &&
            !scratch.file("c", QByteArray()).isEmpty() && !scratch.folder("z").isEmpty());
    QCOMPARE(names(read(scratch.path())), (QByteArrayList{"z", "A", "b", "c"}));
}

void FolderListingTest::namesAreBytes()
{
    const Scratch scratch;
    const QByteArray name = "caf\xe9\n\x01";
    QVERIFY(!scratch.file(name, QByteArray()).isEmpty());
    QCOMPARE(names(read(scratch.path())), QByteArrayList{name});
}

void FolderListingTest::filesHaveTheirSizes()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("f", qsizetype(4100)).isEmpty());
    const auto result = read(scratch.path());
    QCOMPARE(entry(result, "f").size, std::int64_t(4100));
    QCOMPARE(entry(result, "f").kind, FileKind::Regular);
}

void FolderListingTest::aLinkToAFolderCanBeEntered()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("folder").isEmpty() && !scratch.link("in", "folder").isEmpty() &&
            !scratch.link("out", "nowhere").isEmpty());
    const auto result = read(scratch.path());
    QCOMPARE(entry(result, "in").kind, FileKind::Link);
    QVERIFY(entry(result, "in").isFolder);
    QVERIFY(!entry(result, "out").isFolder);
}

void FolderListingTest::whatIsNoFolderSaysSo()
{
    const Scratch scratch;
    QCOMPARE(read(scratch.file("f", QByteArray())).error, ENOTDIR);
}

void FolderListingTest::whatIsNotThereSaysSo()
{
    const Scratch scratch;
    const auto result = read(scratch.path("missing"));
    QCOMPARE(result.error, ENOENT);
    QCOMPARE(result.folder, scratch.path("missing"));
}

void FolderListingTest::hiddenNamesAreTold()
{
    const Scratch scratch;
    QVERIFY(!scratch.file(".f", QByteArray()).isEmpty() &&
            !scratch.file("f", QByteArray()).isEmpty());
    const auto result = read(scratch.path());
    QVERIFY(entry(result, ".f").isHidden());
    QVERIFY(!entry(result, "f").isHidden());
}

void FolderListingTest::aCancelledReadingEndsEarly()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("f", QByteArray()).isEmpty());
    QVERIFY(FolderListing::read(scratch.path(), true).entries.empty());
}

void FolderListingTest::aSlowFolderKeepsNobodyWaiting()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("f", QByteArray()).isEmpty());
    SlowFolders slow;
    const SystemCalls::Replacement replacement(slow);
    QByteArrayList seen;
    std::thread::id where;
    FolderListing::start(scratch.path(), [&](const FolderListing::Result &result) {
        seen = names(result);
        where = std::this_thread::get_id();
    });
    QCoreApplication::processEvents();
    QVERIFY(seen.isEmpty());
    slow.gate.release();
    QTRY_COMPARE(seen, QByteArrayList{"f"});
    QCOMPARE(where, std::this_thread::get_id());
}

void FolderListingTest::aCancelledReadingIsNotTold()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("f", QByteArray()).isEmpty());
    SlowFolders slow;
    const SystemCalls::Replacement replacement(slow);
    bool isTold = false;
    const auto cancel = FolderListing::start(scratch.path(), [&](const auto &) { isTold = true; });
    *cancel = true;
    slow.gate.release();
    // The thread lets go of it when it ends.
    QTRY_COMPARE(cancel.use_count(), 1L);
    QCoreApplication::processEvents();
    QVERIFY(!isTold);
}

QTEST_GUILESS_MAIN(FolderListingTest)
#include "FolderListingTest.moc"
