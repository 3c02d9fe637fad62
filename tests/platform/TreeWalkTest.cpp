#include "platform/TreeWalk.h"

#include "kit/Scratch.h"
#include "platform/FakeTree.h"
#include "platform/PathBytes.h"
#include "platform/ScriptedSystemCalls.h"

#include <QSet>
#include <QTest>

#include <cerrno>
#include <cstdint>

namespace {

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

/// Notes all that it is told, one line each.
class RecordingVisitor final : public TreeVisitor
{
  public:
    bool enterFolder(const QByteArray &path) override
    {
        told.append("enter " + path);
        return !passedOver.contains(path);
    }
    bool openedFolder(const QByteArray &path, const FileStatus &status) override
    {
        FileStatus real;
        const int result = SystemCalls::real().statusAt(SystemCalls::startFolder, path.constData(),
                                                        LastLink::Stop, real);
        if (result >= 0 && !real.isSameFile(status))
            told.append("another folder opened");
        return !left.contains(path);
    }
    void visitEntry(int folder, const QByteArray &folderPath, const char *name,
                    FileKind kind) override
    {
        told.append("visit " + folderPath + " | " + name);
        kinds.append(kind);
        FileStatus status;
        if (SystemCalls::real().statusAt(folder, name, LastLink::Stop, status) < 0)
            told.append("not in the folder that is told");
        if (--visitsBeforeStop == 0)
            stops = true;
    }
    void leaveFolder(int parent, const QByteArray &path, const char *name) override
    {
        if (!path.endsWith(QByteArray("/") + name))
            told.append("left by another path, " + path);
        FileStatus status;
        const int result = SystemCalls::real().statusAt(parent, name, LastLink::Stop, status);
        told.append(QByteArray("leave ") + name + (result < 0 ? " (not there)" : ""));
    }
    void unreadableFolder(const QByteArray &path, int error) override
    {
        told.append("unreadable " + path + ' ' + QByteArray::number(error));
    }
    void unreadableEntry(const QByteArray &path, int error) override
    {
        told.append("unknown " + path + ' ' + QByteArray::number(error));
    }
    [[nodiscard]] bool shouldStop() const override { return stops; }

    [[nodiscard]] QByteArrayList sorted() const
    {
        QByteArrayList lines = told;
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    QByteArrayList told;
    QList<FileKind> kinds;
    QSet<QByteArray> passedOver; ///< not entered
    QSet<QByteArray> left;       ///< entered, opened, and then not read
    int visitsBeforeStop = 0;
    bool stops = false;
};

/// Counts what it is told, and how much of the stack lies between the calls.
class CountingVisitor final : public TreeVisitor
{
  public:
    bool enterFolder(const QByteArray &) override
    {
        ++entered;
        noteStack();
        return true;
    }
    bool openedFolder(const QByteArray &, const FileStatus &) override
    {
        ++opened;
        return true;
    }
    void visitEntry(int, const QByteArray &, const char *, FileKind) override
    {
        ++visited;
        noteStack();
    }
    void leaveFolder(int, const QByteArray &, const char *) override
    {
        ++left;
        noteStack();
    }
    void unreadableFolder(const QByteArray &, int) override { ++unreadable; }
    void unreadableEntry(const QByteArray &, int) override { ++unreadable; }
    [[nodiscard]] bool shouldStop() const override { return false; }

    [[nodiscard]] std::uintptr_t stackUsed() const { return highest_ - lowest_; }

    int entered = 0;
    int opened = 0;
    int visited = 0;
    int left = 0;
    int unreadable = 0;

  private:
    void noteStack()
    {
        const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        lowest_ = std::min(lowest_, here);
        highest_ = std::max(highest_, here);
    }

    std::uintptr_t lowest_ = UINTPTR_MAX;
    std::uintptr_t highest_ = 0;
};

void walk(TreeVisitor &visitor, const QByteArray &path)
{
    TreeWalk(visitor).walk(
        Descriptor(SystemCalls::current().open(SystemCalls::startFolder, path.constData(),
                                               Access::Folder, LastLink::Stop)),
        path);
}

QByteArrayList sorted(QByteArrayList lines)
{
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// A folder below another, and so on, with a file before and a folder "side" beside each.
bool makeLadder(const Scratch &scratch, int levels)
{
    QByteArray path = "top";
    bool isMade = !scratch.folder(path).isEmpty();
    for (int level = 0; level < levels; ++level) {
        path += "/d";
        isMade = isMade && !scratch.folder(path).isEmpty() &&
                 !scratch.file(path + "/file", "x").isEmpty() &&
                 !scratch.folder(path + "/side").isEmpty() &&
                 !scratch.file(path + "/side/inner", "x").isEmpty();
    }
    return isMade;
}

/// What a walk of the ladder tells, sorted.
QByteArrayList ladderLines(const Scratch &scratch, int levels)
{
    QByteArrayList lines;
    QByteArray path = scratch.path("top");
    for (int level = 0; level < levels; ++level) {
        path += "/d";
        lines << "enter " + path << "visit " + path + " | file"
              << "enter " + path + "/side"
              << "visit " + path + "/side | inner"
              << "leave side"
              << "leave d";
    }
    return sorted(lines);
}

constexpr int deeperThanOpen = 2 * int(TreeWalk::openFolders);
/// The folders on the way down, the one where the walk began, and those in hand.
constexpr std::size_t openAtMost = TreeWalk::openFolders + 4;

} // namespace

class TreeWalkTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void anEmptyFolderTellsNothing();
    void everyEntryIsToldOnce();
    void entriesThatAreNoFoldersComeFirst();
    void aFolderIsLeftAfterAllThatIsBelowIt();
    void aFolderThatIsNotEnteredIsPassedOver();
    void aFolderThatIsTurnedDownOnceItIsOpenTellsNothingButItsLeaving();
    void theFolderWhereTheWalkBeginsCanBeTurnedDown();
    void linksAreVisitedAndNeverEntered();
    void specialFilesAreVisitedWithTheirKind();
    void namesAreBytes_data();
    void namesAreBytes();
    void theRootFoldersPathGetsNoSecondSlash();
    void oneWalkerWalksSeveralTrees();

    void kindsTheFileSystemDoesNotTellAreLookedUp();
    void anEntryWhoseKindCannotBeFoundOutIsToldAndTheOthersAreVisited();
    void aFolderThatCannotBeOpenedIsToldAndTheWalkGoesOn_data();
    void aFolderThatCannotBeOpenedIsToldAndTheWalkGoesOn();
    void aFolderThatBecameALinkIsNotEntered();
    void aFolderThatCannotBeReadToItsEndTellsWhatItHasRead();
    void aFolderWhoseStatusFailsIsTold();

    void aStopEndsTheWalkAfterTheEntry();
    void aStopBetweenFoldersEntersNoOther();
    void aWalkStoppedBeforehandTellsOneEntryAtMost();

    void parentsClosedOnTheWayDownAreFoundAgain();
    void aFolderMovedElsewhereMeanwhileLosesNothing();
    void aFolderMovedElsewhereLeadsNowhereElse();
    void aParentThatCannotBeFoundAgainIsToldAndTheWalkGoesOn();
    void anotherFolderOfTheParentsNameIsNotTakenForIt();
    void nothingIsToldOfALostParentButThatItIsLost();

    void aHundredThousandLevelsNeedFewDescriptorsAndNoStack();
    void aMillionEntriesAreEachToldOnce();
    void aThousandFoldersOnEachOfManyLevelsAreEachEnteredOnce();
    void noDescriptorIsLeftOpen_data();
    void noDescriptorIsLeftOpen();
};

void TreeWalkTest::anEmptyFolderTellsNothing()
{
    const Scratch scratch;
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    QCOMPARE(visitor.told, QByteArrayList());
}

void TreeWalkTest::everyEntryIsToldOnce()
{
    const Scratch scratch;
    for (const char *folder : {"a", "a/b", "a/b/c", "d", ".hidden", "empty"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"1", "a/2", "a/3", "a/b/c/4", "d/5", ".hidden/.6"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    const QByteArray top = scratch.path();
    QCOMPARE(visitor.sorted(),
             sorted({"visit " + top + " | 1", "enter " + top + "/a", "visit " + top + "/a | 2",
                     "visit " + top + "/a | 3", "enter " + top + "/a/b", "enter " + top + "/a/b/c",
                     "visit " + top + "/a/b/c | 4", "leave c", "leave b", "leave a",
                     "enter " + top + "/d", "visit " + top + "/d | 5", "leave d",
                     "enter " + top + "/.hidden", "visit " + top + "/.hidden | .6", "leave .hidden",
                     "enter " + top + "/empty", "leave empty"}));
}

void TreeWalkTest::entriesThatAreNoFoldersComeFirst()
{
    const Scratch scratch;
    for (int number = 0; number < 20; ++number) {
        const QByteArray text = QByteArray::number(number);
        QVERIFY(!scratch.file("file " + text, "x").isEmpty());
        QVERIFY(!scratch.folder("folder " + text).isEmpty());
    }
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    QCOMPARE(visitor.told.size(), 60);
    for (const QByteArray &line : visitor.told.first(20))
        QVERIFY(line.startsWith("visit "));
}

void TreeWalkTest::aFolderIsLeftAfterAllThatIsBelowIt()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("a").isEmpty() && !scratch.folder("a/b").isEmpty());
    QVERIFY(!scratch.file("a/b/file", "x").isEmpty());
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    const QByteArray top = scratch.path();
    QCOMPARE(visitor.told, QByteArrayList({"enter " + top + "/a", "enter " + top + "/a/b",
                                           "visit " + top + "/a/b | file", "leave b", "leave a"}));
}

void TreeWalkTest::aFolderThatIsNotEnteredIsPassedOver()
{
    const Scratch scratch;
    for (const char *folder : {"a", "a/b", "c"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    QVERIFY(!scratch.file("a/b/file", "x").isEmpty() && !scratch.file("c/file", "x").isEmpty());
    RecordingVisitor visitor;
    visitor.passedOver = {scratch.path("a")};
    walk(visitor, scratch.path());
    QCOMPARE(visitor.sorted(), sorted({"enter " + scratch.path("a"), "enter " + scratch.path("c"),
                                       "visit " + scratch.path("c") + " | file", "leave c"}));
}

void TreeWalkTest::aFolderThatIsTurnedDownOnceItIsOpenTellsNothingButItsLeaving()
{
    const Scratch scratch;
    for (const char *folder : {"a", "a/b", "c"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    QVERIFY(!scratch.file("a/file", "x").isEmpty() && !scratch.file("c/file", "x").isEmpty());
    RecordingVisitor visitor;
    visitor.left = {scratch.path("a")};
    walk(visitor, scratch.path());
    QCOMPARE(visitor.sorted(),
             sorted({"enter " + scratch.path("a"), "leave a", "enter " + scratch.path("c"),
                     "visit " + scratch.path("c") + " | file", "leave c"}));
}

void TreeWalkTest::theFolderWhereTheWalkBeginsCanBeTurnedDown()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("a").isEmpty() && !scratch.file("file", "x").isEmpty());
    RecordingVisitor visitor;
    visitor.left = {scratch.path()};
    walk(visitor, scratch.path());
    QCOMPARE(visitor.told, QByteArrayList());
}

void TreeWalkTest::linksAreVisitedAndNeverEntered()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("top").isEmpty() && !scratch.folder("outside").isEmpty());
    QVERIFY(!scratch.file("outside/file", "x").isEmpty());
    QVERIFY(!scratch.link("top/to a folder", scratch.path("outside")).isEmpty());
    QVERIFY(!scratch.link("top/to itself", "to itself").isEmpty());
    QVERIFY(!scratch.link("top/to nothing", "nothing").isEmpty());
    QVERIFY(!scratch.link("top/to above", "..").isEmpty());
    for (const bool blanksKinds : {false, true}) {
        ScriptedSystemCalls calls;
        calls.blanksKinds = blanksKinds;
        const SystemCalls::Replacement replacement(calls);
        RecordingVisitor visitor;
        const QByteArray top = scratch.path("top");
        walk(visitor, top);
        QCOMPARE(visitor.sorted(),
                 sorted({"visit " + top + " | to a folder", "visit " + top + " | to itself",
                         "visit " + top + " | to nothing", "visit " + top + " | to above"}));
        QCOMPARE(visitor.kinds, QList<FileKind>(4, FileKind::Link));
    }
}

void TreeWalkTest::specialFilesAreVisitedWithTheirKind()
{
    for (const bool blanksKinds : {false, true}) {
        ScriptedSystemCalls calls;
        calls.blanksKinds = blanksKinds;
        const SystemCalls::Replacement replacement(calls);
        for (const auto &[type, kind] : {std::pair(mode_t(S_IFIFO), FileKind::Fifo),
                                         std::pair(mode_t(S_IFSOCK), FileKind::Socket),
                                         std::pair(mode_t(S_IFREG), FileKind::Regular)}) {
            const Scratch scratch;
            QCOMPARE(::mknod(scratch.path("it").constData(), type | 0644, 0), 0);
            RecordingVisitor visitor;
            walk(visitor, scratch.path());
            QCOMPARE(visitor.told, QByteArrayList({"visit " + scratch.path() + " | it"}));
            QCOMPARE(visitor.kinds, QList<FileKind>({kind}));
        }
    }
}

void TreeWalkTest::namesAreBytes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9 \xff\xc0\x80");
    QTest::newRow("a newline") << QByteArray("two\nlines");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("one byte") << QByteArray("\x01");
    QTest::newRow("blanks") << QByteArray("  ");
    QTest::newRow("percent and semicolon") << QByteArray("%2F;%00");
    QTest::newRow("three dots") << QByteArray("...");
}

void TreeWalkTest::namesAreBytes()
{
    QFETCH(QByteArray, name);
    const Scratch scratch;
    QVERIFY(!scratch.folder(name).isEmpty());
    QVERIFY(!scratch.file(name + '/' + name, "x").isEmpty());
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    QCOMPARE(visitor.told,
             QByteArrayList({"enter " + scratch.path(name),
                             "visit " + scratch.path(name) + " | " + name, "leave " + name}));
}

void TreeWalkTest::theRootFoldersPathGetsNoSecondSlash()
{
    FakeTree tree;
    const FakeTree::Node folder = tree.add(FakeTree::top, "folder", FileKind::Folder);
    tree.add(tree.add(folder, "inner", FileKind::Folder), "file", FileKind::Regular);
    const SystemCalls::Replacement replacement(tree);
    RecordingVisitor visitor;
    TreeWalk(visitor).walk(Descriptor(tree.openNode(FakeTree::top)), "/");
    // The folders are in memory only, so the disk knows nothing of them.
    visitor.told.removeAll("not in the folder that is told");
    visitor.told.removeAll("another folder opened");
    QCOMPARE(visitor.told,
             QByteArrayList({"enter /folder", "enter /folder/inner", "visit /folder/inner | file",
                             "leave inner (not there)", "leave folder (not there)"}));
}

void TreeWalkTest::oneWalkerWalksSeveralTrees()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("file", "x").isEmpty());
    RecordingVisitor visitor;
    TreeWalk walker(visitor);
    for (int time = 0; time < 2; ++time)
        walker.walk(Descriptor(SystemCalls::current().open(SystemCalls::startFolder,
                                                           scratch.path().constData(),
                                                           Access::Folder, LastLink::Stop)),
                    scratch.path());
    QCOMPARE(visitor.told, QByteArrayList(2, "visit " + scratch.path() + " | file"));
}

void TreeWalkTest::kindsTheFileSystemDoesNotTellAreLookedUp()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, 3));
    ScriptedSystemCalls calls;
    calls.blanksKinds = true;
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QCOMPARE(visitor.sorted(), ladderLines(scratch, 3));
}

void TreeWalkTest::anEntryWhoseKindCannotBeFoundOutIsToldAndTheOthersAreVisited()
{
    const Scratch scratch;
    for (const char *name : {"one", "two", "three"})
        QVERIFY(!scratch.file(name, "x").isEmpty());
    ScriptedSystemCalls calls;
    calls.blanksKinds = true;
    calls.statusAtErrors = {{"two", EIO}};
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    QCOMPARE(visitor.sorted(),
             sorted({"visit " + scratch.path() + " | one", "unknown " + scratch.path("two") + " 5",
                     "visit " + scratch.path() + " | three"}));
}

void TreeWalkTest::aFolderThatCannotBeOpenedIsToldAndTheWalkGoesOn_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("without permission") << EACCES;
    QTest::newRow("removed meanwhile") << ENOENT;
    QTest::newRow("too many open files") << EMFILE;
}

void TreeWalkTest::aFolderThatCannotBeOpenedIsToldAndTheWalkGoesOn()
{
    QFETCH(int, error);
    const Scratch scratch;
    for (const char *folder : {"before", "closed", "later"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    for (const char *file : {"before/file", "closed/file", "later/file"})
        QVERIFY(!scratch.file(file, "x").isEmpty());
    ScriptedSystemCalls calls;
    calls.openErrors = {{"closed", error}};
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    const QByteArray top = scratch.path();
    QCOMPARE(visitor.sorted(),
             sorted({"enter " + top + "/before", "visit " + top + "/before | file", "leave before",
                     "enter " + top + "/closed",
                     "unreadable " + top + "/closed " + QByteArray::number(error), "leave closed",
                     "enter " + top + "/later", "visit " + top + "/later | file", "leave later"}));
}

void TreeWalkTest::aFolderThatBecameALinkIsNotEntered()
{
    const Scratch scratch;
    for (const char *folder : {"top", "top/swapped", "outside"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    QVERIFY(!scratch.file("outside/file", "x").isEmpty());
    ScriptedSystemCalls calls;
    calls.beforeOpen = [&scratch](const QByteArray &name) {
        if (name != "swapped")
            return;
        ::rmdir(scratch.path("top/swapped").constData());
        QVERIFY(!scratch.link("top/swapped", scratch.path("outside")).isEmpty());
    };
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QCOMPARE(visitor.told, QByteArrayList({"enter " + scratch.path("top/swapped"),
                                           "unreadable " + scratch.path("top/swapped") + ' ' +
                                               QByteArray::number(ENOTDIR),
                                           "leave swapped"}));
}

void TreeWalkTest::aFolderThatCannotBeReadToItsEndTellsWhatItHasRead()
{
    const Scratch scratch;
    for (int number = 0; number < 100; ++number)
        QVERIFY(!scratch.file(QByteArray::number(number), "").isEmpty());
    ScriptedSystemCalls calls;
    calls.folderCapacity = 512;
    calls.readFolderError = EIO;
    calls.readsBeforeError = 2;
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    QVERIFY(visitor.told.size() > 1 && visitor.told.size() < 100);
    QCOMPARE(visitor.told.takeLast(), "unreadable " + scratch.path() + " 5");
    for (const QByteArray &line : visitor.told)
        QVERIFY(line.startsWith("visit "));
}

void TreeWalkTest::aFolderWhoseStatusFailsIsTold()
{
    const Scratch scratch;
    QVERIFY(!scratch.folder("inner").isEmpty() && !scratch.file("inner/file", "x").isEmpty());
    QVERIFY(!scratch.file("file", "x").isEmpty());
    ScriptedSystemCalls calls;
    calls.statusError = EIO;
    calls.statusesBeforeError = 1;
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path());
    QCOMPARE(
        visitor.told,
        QByteArrayList({"visit " + scratch.path() + " | file", "enter " + scratch.path("inner"),
                        "unreadable " + scratch.path("inner") + " 5", "leave inner"}));
}

void TreeWalkTest::aStopEndsTheWalkAfterTheEntry()
{
    const Scratch scratch;
    for (int number = 0; number < 100; ++number)
        QVERIFY(!scratch.file(QByteArray::number(number), "").isEmpty());
    QVERIFY(!scratch.folder("folder").isEmpty() && !scratch.file("folder/file", "x").isEmpty());
    RecordingVisitor visitor;
    visitor.visitsBeforeStop = 17;
    walk(visitor, scratch.path());
    QCOMPARE(visitor.told.size(), 17);
    QVERIFY(visitor.told.last().startsWith("visit "));
}

void TreeWalkTest::aStopBetweenFoldersEntersNoOther()
{
    const Scratch scratch;
    for (const char *folder : {"a", "b", "c"}) {
        QVERIFY(!scratch.folder(folder).isEmpty());
        QVERIFY(!scratch.file(QByteArray(folder) + "/file", "x").isEmpty());
    }
    RecordingVisitor visitor;
    visitor.visitsBeforeStop = 1;
    walk(visitor, scratch.path());
    QCOMPARE(visitor.told.size(), 2);
    QVERIFY(visitor.told.at(0).startsWith("enter "));
    QVERIFY(visitor.told.at(1).startsWith("visit "));
}

void TreeWalkTest::aWalkStoppedBeforehandTellsOneEntryAtMost()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, 3));
    QVERIFY(!scratch.file("top/1", "x").isEmpty() && !scratch.file("top/2", "x").isEmpty());
    RecordingVisitor visitor;
    visitor.stops = true;
    walk(visitor, scratch.path("top"));
    QVERIFY(visitor.told.size() <= 1);
}

void TreeWalkTest::parentsClosedOnTheWayDownAreFoundAgain()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, deeperThanOpen));
    ScriptedSystemCalls calls;
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QCOMPARE(visitor.sorted(), ladderLines(scratch, deeperThanOpen));
    QVERIFY(calls.mostOpen() <= int(openAtMost));
}

/// At the deepest folder a folder half way up, whose parent is closed by then, goes elsewhere.
void TreeWalkTest::aFolderMovedElsewhereMeanwhileLosesNothing()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, deeperThanOpen));
    const QByteArray moved = scratch.path("top" + QByteArray("/d").repeated(10));
    const QByteArray elsewhere = scratch.path("elsewhere");
    int opened = 0;
    ScriptedSystemCalls calls;
    calls.beforeOpen = [&](const QByteArray &name) {
        if (name == "d" && ++opened == deeperThanOpen)
            QCOMPARE(::rename(moved.constData(), elsewhere.constData()), 0);
    };
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QVERIFY(Scratch::exists(elsewhere));

    // Only the moved folder itself is not there any more when it is left.
    QCOMPARE(visitor.told.count("leave d (not there)"), 1);
    std::replace(visitor.told.begin(), visitor.told.end(), QByteArray("leave d (not there)"),
                 QByteArray("leave d"));
    QCOMPARE(visitor.sorted(), ladderLines(scratch, deeperThanOpen));
}

/// The folder moves below another one that holds entries of the same names.
void TreeWalkTest::aFolderMovedElsewhereLeadsNowhereElse()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, deeperThanOpen));
    for (const char *folder : {"outside", "outside/side", "outside/other"})
        QVERIFY(!scratch.folder(folder).isEmpty());
    QVERIFY(!scratch.file("outside/file", "x").isEmpty());
    const QByteArray moved = scratch.path("top" + QByteArray("/d").repeated(10));
    const QByteArray inside = scratch.path("outside/d");
    int opened = 0;
    ScriptedSystemCalls calls;
    calls.beforeOpen = [&](const QByteArray &name) {
        if (name == "d" && ++opened == deeperThanOpen)
            QCOMPARE(::rename(moved.constData(), inside.constData()), 0);
    };
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QVERIFY(Scratch::exists(inside));
    for (const QByteArray &line : visitor.told)
        QVERIFY2(!line.contains("outside") && !line.contains("other"), line.constData());
    // Each of the folders above the moved one still had its folder "side" to be entered or left.
    QCOMPARE(visitor.told.count("leave side"), deeperThanOpen);
}

/// The folder moved away, and what held it bears another name by now: it can be found neither from
/// below nor from above.
void TreeWalkTest::aParentThatCannotBeFoundAgainIsToldAndTheWalkGoesOn()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, deeperThanOpen));
    QVERIFY(!scratch.folder("top/z").isEmpty() && !scratch.file("top/z/last", "x").isEmpty());
    const QByteArray parent = scratch.path("top" + QByteArray("/d").repeated(10));
    int opened = 0;
    ScriptedSystemCalls calls;
    calls.beforeOpen = [&](const QByteArray &name) {
        if (name != "d" || ++opened != deeperThanOpen)
            return;
        QCOMPARE(::rename((parent + "/d").constData(), scratch.path("elsewhere").constData()), 0);
        QCOMPARE(::rename(parent.constData(), scratch.path("renamed").constData()), 0);
    };
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QVERIFY(visitor.told.contains("unreadable " + parent + ' ' + QByteArray::number(ENOENT)));
    const qsizetype unreadable =
        std::count_if(visitor.told.begin(), visitor.told.end(),
                      [](const QByteArray &line) { return line.startsWith("unreadable "); });
    QCOMPARE(unreadable, 1);
    QVERIFY(visitor.told.contains("visit " + scratch.path("top/z") + " | last"));
}

/// As before, but the old name is borne by a new folder, which was not there when it was read.
void TreeWalkTest::anotherFolderOfTheParentsNameIsNotTakenForIt()
{
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, deeperThanOpen));
    const QByteArray parent = scratch.path("top" + QByteArray("/d").repeated(10));
    int opened = 0;
    ScriptedSystemCalls calls;
    calls.beforeOpen = [&](const QByteArray &name) {
        if (name != "d" || ++opened != deeperThanOpen)
            return;
        QCOMPARE(::rename((parent + "/d").constData(), scratch.path("elsewhere").constData()), 0);
        QCOMPARE(::rename(parent.constData(), scratch.path("renamed").constData()), 0);
        QCOMPARE(::mkdir(parent.constData(), 0755), 0);
        QCOMPARE(::mkdir((parent + "/d").constData(), 0755), 0);
    };
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    walk(visitor, scratch.path("top"));
    QVERIFY(visitor.told.contains("unreadable " + parent + ' ' + QByteArray::number(ENOENT)));
    // Nothing is left in that folder: neither the old sub-folder nor the new one of its name.
    const qsizetype told =
        visitor.told.indexOf("unreadable " + parent + ' ' + QByteArray::number(ENOENT));
    QCOMPARE(visitor.told.count("leave d"), deeperThanOpen - 1);
    QVERIFY(told > 0);
}

/// On each level "a" is walked before the way goes down through "d", and "z" after.
void TreeWalkTest::nothingIsToldOfALostParentButThatItIsLost()
{
    constexpr int levels = deeperThanOpen;
    constexpr int lost = 10;
    FakeTree tree;
    const FakeTree::Node elsewhere = tree.add(FakeTree::top, "elsewhere", FileKind::Folder);
    const FakeTree::Node top = tree.add(FakeTree::top, "top", FileKind::Folder);
    std::vector<FakeTree::Node> ladder = {top};
    for (int level = 1; level <= levels; ++level) {
        tree.add(ladder.back(), "a", FileKind::Folder);
        tree.add(ladder.back(), "z", FileKind::Folder);
        ladder.push_back(tree.add(ladder.back(), "d", FileKind::Folder));
    }
    int opened = 0;
    tree.beforeOpen = [&](const std::string &name) {
        if (name != "d" || ++opened != levels)
            return;
        tree.move(ladder[lost + 1], elsewhere, "moved");
        tree.move(ladder[lost], elsewhere, "renamed");
    };
    const SystemCalls::Replacement replacement(tree);
    RecordingVisitor visitor;
    TreeWalk(visitor).walk(Descriptor(tree.openNode(top)), "/top");

    const QByteArray lostPath = "/top" + QByteArray("/d").repeated(lost);
    const qsizetype told =
        visitor.told.indexOf("unreadable " + lostPath + ' ' + QByteArray::number(ENOENT));
    QVERIFY(told > 0);
    QVERIFY(visitor.told.contains("enter " + lostPath + "/a"));
    for (const QByteArray &line : visitor.told.mid(told + 1))
        QVERIFY2(!line.contains(lostPath + '/'), line.constData());
    // All other levels are walked whole.
    const qsizetype entered =
        std::count_if(visitor.told.begin(), visitor.told.end(),
                      [](const QByteArray &line) { return line.startsWith("enter "); });
    QCOMPARE(entered, 3 * levels - 1);
    QVERIFY(visitor.told.contains("enter /top/z"));
    QCOMPARE(tree.openNow(), std::size_t(0));
}

void TreeWalkTest::aHundredThousandLevelsNeedFewDescriptorsAndNoStack()
{
    constexpr int levels = 100'000;
    FakeTree tree;
    FakeTree::Node node = FakeTree::top;
    for (int level = 0; level < levels; ++level) {
        tree.add(node, "f", FileKind::Regular);
        node = tree.add(node, "d", FileKind::Folder);
    }
    const SystemCalls::Replacement replacement(tree);
    CountingVisitor visitor;
    TreeWalk(visitor).walk(Descriptor(tree.openNode(FakeTree::top)), "/top");
    QCOMPARE(visitor.entered, levels);
    QCOMPARE(visitor.opened, levels + 1);
    QCOMPARE(visitor.visited, levels);
    QCOMPARE(visitor.left, levels);
    QCOMPARE(visitor.unreadable, 0);
    QVERIFY(tree.mostOpen() <= openAtMost);
    QCOMPARE(tree.openNow(), std::size_t(0));
    QVERIFY(visitor.stackUsed() < 128 * 1024);
}

void TreeWalkTest::aMillionEntriesAreEachToldOnce()
{
    constexpr int files = 1'000'000;
    FakeTree tree;
    for (int file = 0; file < files; ++file)
        tree.add(FakeTree::top, std::to_string(file), FileKind::Regular);
    const SystemCalls::Replacement replacement(tree);
    CountingVisitor visitor;
    TreeWalk(visitor).walk(Descriptor(tree.openNode(FakeTree::top)), "/top");
    QCOMPARE(visitor.visited, files);
    QCOMPARE(visitor.entered, 0);
    QCOMPARE(visitor.unreadable, 0);
}

void TreeWalkTest::aThousandFoldersOnEachOfManyLevelsAreEachEnteredOnce()
{
    constexpr int levels = 2 * int(TreeWalk::openFolders);
    constexpr int wide = 1000;
    FakeTree tree;
    FakeTree::Node node = FakeTree::top;
    for (int level = 0; level < levels; ++level) {
        for (int folder = 0; folder < wide; ++folder)
            tree.add(tree.add(node, std::to_string(folder), FileKind::Folder), "f",
                     FileKind::Regular);
        node = tree.add(node, "500d", FileKind::Folder); // half of the others come later
    }
    const SystemCalls::Replacement replacement(tree);
    CountingVisitor visitor;
    TreeWalk(visitor).walk(Descriptor(tree.openNode(FakeTree::top)), "/top");
    QCOMPARE(visitor.entered, levels * (wide + 1));
    QCOMPARE(visitor.visited, levels * wide);
    QCOMPARE(visitor.left, levels * (wide + 1));
    QVERIFY(tree.mostOpen() <= openAtMost);
}

void TreeWalkTest::noDescriptorIsLeftOpen_data()
{
    QTest::addColumn<int>("visitsBeforeStop");
    QTest::newRow("after a whole walk") << 0;
    QTest::newRow("after a stop at the start") << 1;
    QTest::newRow("after a stop deep down") << deeperThanOpen;
}

void TreeWalkTest::noDescriptorIsLeftOpen()
{
    QFETCH(int, visitsBeforeStop);
    const Scratch scratch;
    QVERIFY(makeLadder(scratch, deeperThanOpen));
    ScriptedSystemCalls calls;
    const SystemCalls::Replacement replacement(calls);
    RecordingVisitor visitor;
    visitor.visitsBeforeStop = visitsBeforeStop;
    walk(visitor, scratch.path("top"));
    QVERIFY(!visitor.told.isEmpty());
    QCOMPARE(calls.openNow(), 0);
}

QTEST_APPLESS_MAIN(TreeWalkTest)
#include "TreeWalkTest.moc"
