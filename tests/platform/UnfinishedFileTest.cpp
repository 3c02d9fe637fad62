#include "platform/UnfinishedFile.h"

#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QDir>
#include <QTest>

#include <cerrno>

#include <sys/stat.h>

using Kind = UnfinishedFile::Kind;

Q_DECLARE_METATYPE(UnfinishedFile::Kind)

namespace {

/// Writes three bytes at a time, is interrupted before each, and fails when it was told to.
class StutteringWrites : public ForwardingSystemCalls
{
  public:
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        if (wasInterrupted_ = !wasInterrupted_; wasInterrupted_)
            return -EINTR;
        return error ? -error : real().write(fd, bytes, std::min<std::size_t>(count, 3));
    }
    int sync(int) override { return -EIO; }

    int error = 0;

  private:
    bool wasInterrupted_ = false;
};

/// A file system without permissions of its own.
class NoPermissions : public ForwardingSystemCalls
{
  public:
    int setPermissions(int, std::uint32_t) override
    {
        ++tries;
        return -EPERM;
    }

    int tries = 0;
};

/// Puts another file in a part's place, right behind the look whether it is still the same.
class SwappingAfterTheLook : public ForwardingSystemCalls
{
  public:
    explicit SwappingAfterTheLook(const Scratch &scratch) : scratch_(scratch) {}

    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        const int result = real().statusAt(folder, path, lastLink, status);
        if (swaps-- == 0)
            swap(scratch_);
        return result;
    }
    static void swap(const Scratch &scratch)
    {
        const auto part = scratch.path("a.deb.part");
        QCOMPARE(::rename(part.constData(), scratch.path("moved").constData()), 0);
        scratch.file("a.deb.part", "theirs");
    }

    int swaps = 0; ///< behind which look, from 0

  private:
    const Scratch &scratch_;
};

QByteArrayList namesIn(const QByteArray &folder)
{
    QByteArrayList names;
    for (const QString &name :
         QDir(QString::fromUtf8(folder))
             .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot))
        names.append(name.toUtf8());
    return names;
}

std::unique_ptr<UnfinishedFile> made(const Scratch &scratch, Kind kind)
{
    int error = 0;
    auto file = UnfinishedFile::make(scratch.path(), "a.deb", error, kind);
    return error == 0 ? std::move(file) : nullptr;
}

} // namespace

class UnfinishedFileTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { ::umask(022); }

    void nothingHasANameBeforeItIsKept();
    void whereItNeedsOneItIsAPart();
    void whatIsKeptHasItsNameAndPermissions_data() { kinds(); }
    void whatIsKeptHasItsNameAndPermissions();
    void theUsersMaskCounts_data() { kinds(); }
    void theUsersMaskCounts();
    void withoutPermissionsItIsKeptAllTheSame_data() { kinds(); }
    void withoutPermissionsItIsKeptAllTheSame();
    void whatIsNotKeptIsGone_data() { kinds(); }
    void whatIsNotKeptIsGone();
    void noNameIsTakenFromAnother_data() { kinds(); }
    void noNameIsTakenFromAnother();
    void aPartThatIsAnothersStays();
    void aPartThatWasExchangedStays();
    void whatTookThePartsPlaceIsNotKept_data();
    void whatTookThePartsPlaceIsNotKept();
    void theFileIsKeptThoughItsPartWasExchanged();
    void discardedItHasNoNameAndCanStillBeRead_data() { kinds(); }
    void discardedItHasNoNameAndCanStillBeRead();
    void whatIsKeptIsNotDiscarded_data() { kinds(); }
    void whatIsKeptIsNotDiscarded();
    void shortAndInterruptedWritesGoOn();
    void failuresAreErrorNumbers();
    void whatIsReadBackHasTheLengthThatWasAskedFor();
    void aFolderThatIsNoneIsAnError();

  private:
    static void kinds()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("nameless") << Kind::Nameless;
        QTest::newRow("named") << Kind::Named;
        QTest::newRow("one name") << Kind::OneName;
    }
};

void UnfinishedFileTest::nothingHasANameBeforeItIsKept()
{
    const Scratch scratch;
    const auto file = made(scratch, Kind::Nameless);
    QVERIFY(file);
    QCOMPARE(file->write("all of it"), 0);
    QCOMPARE(namesIn(scratch.path()), QByteArrayList());
}

void UnfinishedFileTest::whereItNeedsOneItIsAPart()
{
    const Scratch scratch;
    const auto file = made(scratch, Kind::Named);
    QVERIFY(file);
    QCOMPARE(namesIn(scratch.path()), QByteArrayList{"a.deb.part"});
    QCOMPARE(Scratch::permissions(scratch.path("a.deb.part")), mode_t(0600));
}

void UnfinishedFileTest::whatIsKeptHasItsNameAndPermissions()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    QByteArray name;
    {
        const auto file = made(scratch, kind);
        QCOMPARE(file->write("one "), 0);
        QCOMPARE(file->write("two"), 0);
        QCOMPARE(file->sync(), 0);
        QCOMPARE(file->keep("a", ".deb", name), 0);
    }
    QCOMPARE(name, QByteArray("a.deb"));
    QCOMPARE(namesIn(scratch.path()), QByteArrayList{"a.deb"});
    QCOMPARE(Scratch::content(scratch.path("a.deb")), QByteArray("one two"));
    QCOMPARE(Scratch::permissions(scratch.path("a.deb")), mode_t(0644));
}

void UnfinishedFileTest::theUsersMaskCounts()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    ::umask(077);
    QByteArray name;
    QCOMPARE(made(scratch, kind)->keep("a", "", name), 0);
    QCOMPARE(Scratch::permissions(scratch.path("a")), mode_t(0600));
}

void UnfinishedFileTest::withoutPermissionsItIsKeptAllTheSame()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    NoPermissions calls;
    const SystemCalls::Replacement replacement(calls);
    QByteArray name;
    QCOMPARE(made(scratch, kind)->keep("a", ".deb", name), 0);
    QCOMPARE(calls.tries, 1);
    QCOMPARE(namesIn(scratch.path()), QByteArrayList{"a.deb"});
    QCOMPARE(Scratch::permissions(scratch.path("a.deb")), mode_t(0600));
}

void UnfinishedFileTest::whatIsNotKeptIsGone()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    QCOMPARE(made(scratch, kind)->write("bytes"), 0);
    QCOMPARE(namesIn(scratch.path()), QByteArrayList());
}

void UnfinishedFileTest::noNameIsTakenFromAnother()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    scratch.file("a.deb", "theirs");
    scratch.link("a (2).deb", "nowhere");
    scratch.folder("a (3).deb");
    QByteArray name;
    QCOMPARE(made(scratch, kind)->keep("a", ".deb", name), 0);
    QCOMPARE(name, QByteArray("a (4).deb"));
    QCOMPARE(Scratch::content(scratch.path("a.deb")), QByteArray("theirs"));
    QVERIFY(!Scratch::exists(scratch.path("nowhere")));
}

void UnfinishedFileTest::aPartThatIsAnothersStays()
{
    const Scratch scratch;
    scratch.file("a.deb.part", "theirs");
    {
        const auto file = made(scratch, Kind::Named);
        QVERIFY(Scratch::exists(scratch.path("a.deb (2).part")));
    }
    QCOMPARE(namesIn(scratch.path()), QByteArrayList{"a.deb.part"});
    QCOMPARE(Scratch::content(scratch.path("a.deb.part")), QByteArray("theirs"));
}

void UnfinishedFileTest::aPartThatWasExchangedStays()
{
    const Scratch scratch;
    const auto path = scratch.path("a.deb.part");
    auto file = made(scratch, Kind::Named);
    SwappingAfterTheLook::swap(scratch);
    file.reset();
    QCOMPARE(Scratch::content(path), QByteArray("theirs"));
}

void UnfinishedFileTest::whatTookThePartsPlaceIsNotKept_data()
{
    QTest::addColumn<bool>("isBehindTheLook");
    QTest::newRow("before") << false;
    QTest::newRow("in the last moment") << true;
}

void UnfinishedFileTest::whatTookThePartsPlaceIsNotKept()
{
    QFETCH(bool, isBehindTheLook);
    const Scratch scratch;
    SwappingAfterTheLook calls(scratch);
    const SystemCalls::Replacement replacement(calls);
    auto file = made(scratch, Kind::OneName);
    QCOMPARE(file->write("ours"), 0);
    if (!isBehindTheLook) {
        calls.swaps = -1;
        SwappingAfterTheLook::swap(scratch);
    }
    QByteArray name;
    QCOMPARE(file->keep("a", ".deb", name), ENOENT);
    file.reset();
    QCOMPARE(namesIn(scratch.path()), (QByteArrayList{"a.deb.part", "moved"}));
    QCOMPARE(Scratch::content(scratch.path("a.deb.part")), QByteArray("theirs"));
    QCOMPARE(Scratch::content(scratch.path("moved")), QByteArray("ours"));
}

void UnfinishedFileTest::theFileIsKeptThoughItsPartWasExchanged()
{
    const Scratch scratch;
    auto file = made(scratch, Kind::Named);
    QCOMPARE(file->write("ours"), 0);
    SwappingAfterTheLook::swap(scratch);
    QByteArray name;
    QCOMPARE(file->keep("a", ".deb", name), 0);
    file.reset();
    QCOMPARE(Scratch::content(scratch.path("a.deb")), QByteArray("ours"));
    QCOMPARE(Scratch::content(scratch.path("a.deb.part")), QByteArray("theirs"));
}

void UnfinishedFileTest::discardedItHasNoNameAndCanStillBeRead()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    const auto file = made(scratch, kind);
    QCOMPARE(file->write("bytes"), 0);
    file->discard();
    QCOMPARE(namesIn(scratch.path()), QByteArrayList());
    QCOMPARE(file->content(5), QByteArray("bytes"));
    QCOMPARE(file->sync(), 0);
}

void UnfinishedFileTest::whatIsKeptIsNotDiscarded()
{
    QFETCH(Kind, kind);
    const Scratch scratch;
    const auto file = made(scratch, kind);
    QByteArray name;
    QCOMPARE(file->keep("a", ".deb", name), 0);
    file->discard();
    QCOMPARE(namesIn(scratch.path()), QByteArrayList{"a.deb"});
}

void UnfinishedFileTest::shortAndInterruptedWritesGoOn()
{
    const Scratch scratch;
    StutteringWrites calls;
    const SystemCalls::Replacement replacement(calls);
    const auto file = made(scratch, Kind::Nameless);
    QCOMPARE(file->write("0123456789"), 0);
    QCOMPARE(file->content(10), QByteArray("0123456789"));
}

void UnfinishedFileTest::failuresAreErrorNumbers()
{
    const Scratch scratch;
    StutteringWrites calls;
    calls.error = ENOSPC;
    const SystemCalls::Replacement replacement(calls);
    const auto file = made(scratch, Kind::Nameless);
    QCOMPARE(file->write("bytes"), ENOSPC);
    QCOMPARE(file->sync(), EIO);
}

void UnfinishedFileTest::whatIsReadBackHasTheLengthThatWasAskedFor()
{
    const Scratch scratch;
    const auto file = made(scratch, Kind::Nameless);
    const QByteArray bytes(100'000, 'x');
    QCOMPARE(file->write(bytes), 0);
    QCOMPARE(file->content(100'000), bytes);
    QVERIFY(!file->content(99'999));
    QVERIFY(!file->content(100'001));
}

void UnfinishedFileTest::aFolderThatIsNoneIsAnError()
{
    const Scratch scratch;
    int error = 0;
    QVERIFY(!UnfinishedFile::make(scratch.path("nowhere"), "a", error));
    QCOMPARE(error, ENOENT);
    QVERIFY(!UnfinishedFile::make(scratch.file("file", "x"), "a", error));
    QCOMPARE(error, ENOTDIR);
    QVERIFY(!UnfinishedFile::make("", "a", error));
    QCOMPARE(error, ENOENT);
}

QTEST_MAIN(UnfinishedFileTest)
#include "UnfinishedFileTest.moc"
