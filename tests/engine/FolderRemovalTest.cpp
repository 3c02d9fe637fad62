#include "engine/FolderRemoval.h"

#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <memory>

namespace {

using Contents = FolderRemoval::Contents;

/// Makes so many folders "d", one in the other, in the folder; whether that went well. No path of
/// theirs is used, since it would be longer than the system allows.
bool makeNested(const QByteArray &folder, int levels)
{
    int fd = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < levels && fd >= 0; ++level) {
        const int made = ::mkdirat(fd, "d", 0755);
        const int next = made == 0 ? ::openat(fd, "d", O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
        ::close(fd);
        fd = next;
    }
    const int file = fd < 0 ? -1 : ::openat(fd, "file", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (file >= 0)
        ::close(file);
    if (fd >= 0)
        ::close(fd);
    return file >= 0;
}

/// Lets something happen once, when the walk asks for the entries for the n-th time.
class MeddlingInAListing final : public ForwardingSystemCalls
{
  public:
    MeddlingInAListing(int call, std::function<void()> deed) : call_(call), deed_(std::move(deed))
    {
    }

    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        if (++calls_ == call_)
            deed_();
        return ForwardingSystemCalls::readFolder(fd, buffer, capacity);
    }

  private:
    int call_;
    int calls_ = 0;
    std::function<void()> deed_;
};

/// Fails to unlink names that begin with "stuck".
class FaultyUnlink final : public ForwardingSystemCalls
{
  public:
    int unlink(int folder, const char *name) override
    {
        return QByteArrayView(name).startsWith("stuck")
                   ? -EBUSY
                   : ForwardingSystemCalls::unlink(folder, name);
    }
};

} // namespace

class FolderRemovalTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { scratch_ = std::make_unique<Scratch>(); }
    void cleanup();

    void allThatAFolderHoldsGoesOrOnlyWhatIsHidden_data();
    void allThatAFolderHoldsGoesOrOnlyWhatIsHidden();
    void aHiddenTreeOf5000LevelsGoes();
    void askingWhetherItIsEmptyChangesNothing();
    void whatWentIsNamedWithItsPath();
    void whatCannotBeRemovedKeepsTheFolderAndTheRestIsGone();

    void theFolderThatWasJudgedIsTheOneThatIsRemoved();
    void aNameThatBecameAnotherFolderMeanwhileStays();
    void aNameThatWasTakenAwayMeanwhileIsAFailure();
    void theParentIsReachedOnce();

    void ofALinkOnlyTheLinkGoes();
    void aLinkThatBecameAFolderIsAFailure();

    void aFolderWithoutAParentIsAFailure();
    void aPathLongerThanTheSystemAllowsIsAFailure();

  private:
    std::unique_ptr<Scratch> scratch_;
};

/// A deep tree that a test failed to remove is out of Qt's reach.
void FolderRemovalTest::cleanup()
{
    const QString folder = QString::fromUtf8(scratch_->path());
    QCOMPARE(QProcess::execute(QStringLiteral("rm"), {QStringLiteral("-rf"), folder}), 0);
    scratch_.reset();
}

void FolderRemovalTest::allThatAFolderHoldsGoesOrOnlyWhatIsHidden_data()
{
    QTest::addColumn<bool>("isAll");
    QTest::addColumn<bool>("hasVisible");
    QTest::addColumn<int>("error");
    QTest::newRow("all, with a visible file") << true << true << 0;
    QTest::newRow("all, hidden only") << true << false << 0;
    QTest::newRow("hidden only, with a visible file") << false << true << ENOTEMPTY;
    QTest::newRow("hidden only") << false << false << 0;
}

void FolderRemovalTest::allThatAFolderHoldsGoesOrOnlyWhatIsHidden()
{
    QFETCH(bool, isAll);
    QFETCH(bool, hasVisible);
    QFETCH(int, error);
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("top/.hidden");
    scratch_->file("top/.hidden/visible", 1);
    if (hasVisible)
        scratch_->file("top/visible", QByteArray("kept"));
    FolderRemoval removal(top, {});
    QCOMPARE(removal.isEmpty(), !hasVisible);
    QCOMPARE(removal.remove(isAll ? Contents::All : Contents::HiddenOnly), error);
    QCOMPARE(Scratch::exists(top), error != 0);
    QCOMPARE(Scratch::exists(top + "/visible"), error != 0);
}

void FolderRemovalTest::aHiddenTreeOf5000LevelsGoes()
{
    const QByteArray top = scratch_->folder("top");
    QVERIFY(makeNested(scratch_->folder("top/.hidden"), 5000));
    FolderRemoval removal(top, {});
    QVERIFY(removal.isEmpty());
    QCOMPARE(removal.remove(Contents::HiddenOnly), 0);
    QVERIFY(!Scratch::exists(top));
    const QByteArray levels = QByteArray("/d").repeated(5000);
    QVERIFY(removal.removedEntries() ==
            std::vector<QByteArray>{top + "/.hidden" + levels + "/file"});
}

void FolderRemovalTest::askingWhetherItIsEmptyChangesNothing()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->file("top/.hidden", 1);
    FolderRemoval removal(top, {});
    QVERIFY(removal.isEmpty());
    QVERIFY(removal.isEmpty());
    scratch_->file("top/visible", 1);
    QVERIFY(!removal.isEmpty());
    QVERIFY(Scratch::exists(scratch_->path("top/.hidden")));
    QVERIFY(removal.removedEntries().empty());
}

void FolderRemovalTest::whatWentIsNamedWithItsPath()
{
    const QByteArray top = scratch_->folder("top");
    const QByteArray folder = scratch_->folder("top/folder");
    const QByteArray file = scratch_->file("top/file", 1);
    const QByteArray deeper = scratch_->file("top/folder/file", 1);
    const QByteArray link = scratch_->link("top/link", "/nothing");
    FolderRemoval removal(top, {});
    QCOMPARE(removal.remove(Contents::All), 0);
    std::vector<QByteArray> entries = removal.removedEntries();
    std::sort(entries.begin(), entries.end());
    QVERIFY(entries == (std::vector<QByteArray>{file, deeper, link}));
    QVERIFY(removal.removedFolders() == std::vector<QByteArray>{folder});
}

void FolderRemovalTest::whatCannotBeRemovedKeepsTheFolderAndTheRestIsGone()
{
    const QByteArray top = scratch_->folder("top");
    scratch_->folder("top/.a");
    scratch_->folder("top/.b");
    const QByteArray first = scratch_->file("top/.a/file", 1);
    const QByteArray stuck = scratch_->file("top/.a/stuck", QByteArray("kept"));
    scratch_->file("top/.b/file", 1);
    FaultyUnlink calls;
    const SystemCalls::Replacement replacement(calls);
    FolderRemoval removal(top, {});
    QCOMPARE(removal.remove(Contents::HiddenOnly), EBUSY);
    QCOMPARE(Scratch::content(stuck), QByteArray("kept"));
    QVERIFY(!Scratch::exists(first));
    QVERIFY(!Scratch::exists(scratch_->path("top/.b")));
    QCOMPARE(removal.removedEntries().size(), std::size_t(2));
}

void FolderRemovalTest::theFolderThatWasJudgedIsTheOneThatIsRemoved()
{
    const QByteArray top = scratch_->folder("top");
    FolderRemoval removal(top, {});
    QVERIFY(removal.isEmpty());
    const QByteArray moved = scratch_->path("moved");
    QCOMPARE(::rename(top.constData(), moved.constData()), 0);
    scratch_->folder("top");
    const QByteArray hidden = scratch_->file("top/.hidden", QByteArray("kept"));
    QCOMPARE(removal.remove(Contents::HiddenOnly), ENOENT);
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
    QVERIFY(Scratch::exists(moved));
}

void FolderRemovalTest::aNameThatBecameAnotherFolderMeanwhileStays()
{
    const QByteArray top = scratch_->folder("top");
    // Asked for the second time, the walk is at the end of the folder.
    MeddlingInAListing calls(2, [this, &top] {
        ::rename(top.constData(), scratch_->path("moved").constData());
        scratch_->folder("top");
    });
    const SystemCalls::Replacement replacement(calls);
    FolderRemoval removal(top, {});
    QCOMPARE(removal.remove(Contents::All), ENOENT);
    QVERIFY(Scratch::exists(top));
    QVERIFY(Scratch::exists(scratch_->path("moved")));
}

void FolderRemovalTest::aNameThatWasTakenAwayMeanwhileIsAFailure()
{
    const QByteArray top = scratch_->folder("top");
    MeddlingInAListing calls(1, [&top] { ::rmdir(top.constData()); });
    const SystemCalls::Replacement replacement(calls);
    FolderRemoval removal(top, {});
    QCOMPARE(removal.remove(Contents::All), ENOENT);
}

void FolderRemovalTest::theParentIsReachedOnce()
{
    scratch_->folder("parent");
    const QByteArray top = scratch_->folder("parent/top");
    FolderRemoval removal(top, {});
    QCOMPARE(::rename(scratch_->path("parent").constData(), scratch_->path("moved").constData()),
             0);
    scratch_->folder("parent");
    const QByteArray other = scratch_->folder("parent/top");
    QCOMPARE(removal.remove(Contents::All), 0);
    QVERIFY(Scratch::exists(other));
    QVERIFY(!Scratch::exists(scratch_->path("moved/top")));
}

void FolderRemovalTest::ofALinkOnlyTheLinkGoes()
{
    scratch_->folder("target");
    const QByteArray hidden = scratch_->file("target/.hidden", QByteArray("kept"));
    const QByteArray link = scratch_->link("link", "target");
    ScanFacts facts;
    facts.isLink = true;
    FolderRemoval removal(link, facts);
    QVERIFY(removal.isEmpty());
    QCOMPARE(removal.remove(Contents::All), 0);
    QVERIFY(!Scratch::exists(link));
    QCOMPARE(Scratch::content(hidden), QByteArray("kept"));
    QVERIFY(removal.removedEntries().empty());
}

void FolderRemovalTest::aLinkThatBecameAFolderIsAFailure()
{
    const QByteArray folder = scratch_->folder("link");
    ScanFacts facts;
    facts.isLink = true;
    QCOMPARE(FolderRemoval(folder, facts).remove(Contents::All), ENOLINK);
    QVERIFY(Scratch::exists(folder));
}

void FolderRemovalTest::aFolderWithoutAParentIsAFailure()
{
    FolderRemoval removal(scratch_->path("missing/folder"), {});
    QVERIFY(removal.isEmpty());
    QCOMPARE(removal.remove(Contents::All), ENOENT);
}

void FolderRemovalTest::aPathLongerThanTheSystemAllowsIsAFailure()
{
    FolderRemoval removal(scratch_->path() + QByteArray("/d").repeated(5000), {});
    QVERIFY(removal.isEmpty());
    QCOMPARE(removal.remove(Contents::All), ENAMETOOLONG);
}

QTEST_GUILESS_MAIN(FolderRemovalTest)
#include "FolderRemovalTest.moc"
