#include "engine/FileUtils.h"

#include "engine/RecordedLog.h"
#include "kit/ForwardingSystemCalls.h"
#include "kit/Scratch.h"

#include <QTest>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

namespace {

constexpr qsizetype longest = 240; // characters

bool isFolder(const QByteArray &path)
{
    struct stat status = {};
    return ::lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

qsizetype characterCount(const QByteArray &path)
{
    return QString::fromUtf8(path).toUcs4().size();
}

/// Another process makes the folder just before this one would.
class FasterNeighbour final : public ForwardingSystemCalls
{
  public:
    int makeFolder(const char *path) override
    {
        ForwardingSystemCalls::makeFolder(path);
        return ForwardingSystemCalls::makeFolder(path);
    }
};

QString failureLine(const QByteArray &path, int error)
{
    return QStringLiteral("+[FileUtils createFolder:allowAlternative:] ") +
           QString::fromUtf8(path) + QStringLiteral(": ") +
           QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

class FileUtilsCreateFolderTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { scratch_ = std::make_unique<Scratch>(); }
    /// Qt leaves names that are not UTF-8 behind.
    void cleanup()
    {
        std::error_code ignored;
        std::filesystem::remove_all(scratch_->path().constData(), ignored);
        scratch_.reset();
    }

    void noLocationAnswersNone_data();
    void noLocationAnswersNone();
    void aMissingFolderIsMade_data();
    void aMissingFolderIsMade();
    void theFoldersAboveAreMadeToo();
    void withoutAlternativeAnExistingFolderComesBackAndNothingIsMade();
    void withAlternativeAnExistingFolderBackupMakesBackup1();
    void withBackup1AlsoPresentBackup2IsMade();
    void theFirstFreeNumberIsTaken();
    void numbersGoOnAfterNine();
    void theNumberFollowsAnExtension();
    void onlyFoldersBlockANumberedName();
    void aLinkToAFolderBlocksANumberedName();

    void a300CharacterPathIsMadeAtItsFirst240Characters_data();
    void a300CharacterPathIsMadeAtItsFirst240Characters();
    void aPathOf240CharactersIsNotCut();
    void aPathOf241CharactersLosesItsLast();
    void noLetterIsCutInTwo_data();
    void noLetterIsCutInTwo();
    void bytesThatAreNotUtf8AreNoObstacle();
    void anExistingFolderWithALongPathComesBackUncut();
    void theAlternativeOfALongPathIsNumberedAfterItsCut();

    void whereAFileStandsNoFolderIsMade_data();
    void whereAFileStandsNoFolderIsMade();
    void belowAFileNoFolderIsMade();
    void aNameLongerThanTheSystemAllowsIsAFailure();
    void aFolderThatSomebodyElseMakesMeanwhileIsASuccess();

    void aCutThatEndsAtASlashLosesTheSlash()
    {
        const Scratch scratch;
        const QByteArray top =
            scratch.path() + '/' + QByteArray(239 - scratch.path().size() - 1, 'a');
        QCOMPARE(top.size(), 239);
        const QByteArray path = top + "/" + QByteArray(60, 'b');
        QCOMPARE(::mkdir(top.constData(), 0755), 0);
        QCOMPARE(::mkdir(path.constData(), 0755), 0);
        QCOMPARE(FileUtils::createFolder(FileUrl(path), true).path(), top + ".1");
    }

  private:
    /// The path of a folder in the scratch folder, filled up with more folders of the letter so
    /// that it has so many characters.
    [[nodiscard]] QByteArray longPath(qsizetype characters, const QByteArray &letter) const;

    std::unique_ptr<Scratch> scratch_;
};

QByteArray FileUtilsCreateFolderTest::longPath(qsizetype characters, const QByteArray &letter) const
{
    constexpr qsizetype component = 50;
    QByteArray path = scratch_->path();
    qsizetype count = characterCount(path);
    for (qsizetype inComponent = 0; count < characters; ++count) {
        const bool isSeparator = inComponent == 0 && count + 1 < characters;
        path += isSeparator ? QByteArray("/") : letter;
        inComponent = inComponent == component ? 0 : inComponent + 1;
    }
    return path;
}

void FileUtilsCreateFolderTest::noLocationAnswersNone_data()
{
    QTest::addColumn<bool>("allowAlternative");
    QTest::newRow("with an alternative") << true;
    QTest::newRow("without") << false;
}

void FileUtilsCreateFolderTest::noLocationAnswersNone()
{
    QFETCH(bool, allowAlternative);
    QVERIFY(FileUtils::createFolder(FileUrl(), allowAlternative).isNull());
}

void FileUtilsCreateFolderTest::aMissingFolderIsMade_data()
{
    noLocationAnswersNone_data();
}

void FileUtilsCreateFolderTest::aMissingFolderIsMade()
{
    QFETCH(bool, allowAlternative);
    const FileUrl url(scratch_->path("Backup"));
    QVERIFY(FileUtils::createFolder(url, allowAlternative) == url);
    QVERIFY(isFolder(url.path()));
    QVERIFY(!Scratch::exists(scratch_->path("Backup.1")));
}

void FileUtilsCreateFolderTest::theFoldersAboveAreMadeToo()
{
    const FileUrl url(scratch_->path("a/b c/\xFF/d"));
    QVERIFY(FileUtils::createFolder(url, false) == url);
    QVERIFY(isFolder(url.path()));
}

void FileUtilsCreateFolderTest::withoutAlternativeAnExistingFolderComesBackAndNothingIsMade()
{
    const FileUrl url(scratch_->folder("Backup"));
    scratch_->file("Backup/file", QByteArray("kept"));
    QVERIFY(FileUtils::createFolder(url, false) == url);
    QVERIFY(!Scratch::exists(scratch_->path("Backup.1")));
    QCOMPARE(Scratch::content(scratch_->path("Backup/file")), QByteArray("kept"));
}

void FileUtilsCreateFolderTest::withAlternativeAnExistingFolderBackupMakesBackup1()
{
    const FileUrl url(scratch_->folder("Backup"));
    const FileUrl made = FileUtils::createFolder(url, true);
    QCOMPARE(made.path(), scratch_->path("Backup.1"));
    QVERIFY(isFolder(made.path()));
    QVERIFY(isFolder(url.path()));
}

void FileUtilsCreateFolderTest::withBackup1AlsoPresentBackup2IsMade()
{
    const FileUrl url(scratch_->folder("Backup"));
    scratch_->folder("Backup.1");
    const FileUrl made = FileUtils::createFolder(url, true);
    QCOMPARE(made.path(), scratch_->path("Backup.2"));
    QVERIFY(isFolder(made.path()));
}

void FileUtilsCreateFolderTest::theFirstFreeNumberIsTaken()
{
    const FileUrl url(scratch_->folder("Backup"));
    scratch_->folder("Backup.1");
    scratch_->folder("Backup.3");
    QCOMPARE(FileUtils::createFolder(url, true).path(), scratch_->path("Backup.2"));
    QCOMPARE(FileUtils::createFolder(url, true).path(), scratch_->path("Backup.4"));
}

void FileUtilsCreateFolderTest::numbersGoOnAfterNine()
{
    const FileUrl url(scratch_->folder("Backup"));
    for (int number = 1; number <= 11; ++number)
        QCOMPARE(FileUtils::createFolder(url, true).path(),
                 scratch_->path("Backup.") + QByteArray::number(number));
}

void FileUtilsCreateFolderTest::theNumberFollowsAnExtension()
{
    const FileUrl url(scratch_->folder("Backup.old"));
    QCOMPARE(FileUtils::createFolder(url, true).path(), scratch_->path("Backup.old.1"));
}

/// The name is then taken all the same, so there is no folder.
void FileUtilsCreateFolderTest::onlyFoldersBlockANumberedName()
{
    const FileUrl url(scratch_->folder("Backup"));
    const QByteArray file = scratch_->file("Backup.1", QByteArray("kept"));
    const RecordedLog log;
    QVERIFY(FileUtils::createFolder(url, true).isNull());
    QVERIFY(!Scratch::exists(scratch_->path("Backup.2")));
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine(file, EEXIST)));
}

void FileUtilsCreateFolderTest::aLinkToAFolderBlocksANumberedName()
{
    const FileUrl url(scratch_->folder("Backup"));
    scratch_->link("Backup.1", "Backup");
    QCOMPARE(FileUtils::createFolder(url, true).path(), scratch_->path("Backup.2"));
}

void FileUtilsCreateFolderTest::a300CharacterPathIsMadeAtItsFirst240Characters_data()
{
    noLocationAnswersNone_data();
}

void FileUtilsCreateFolderTest::a300CharacterPathIsMadeAtItsFirst240Characters()
{
    QFETCH(bool, allowAlternative);
    const QByteArray path = longPath(300, "a");
    QCOMPARE(path.size(), 300);
    const FileUrl made = FileUtils::createFolder(FileUrl(path), allowAlternative);
    QCOMPARE(made.path(), path.first(240));
    QVERIFY(isFolder(path.first(240)));
    QVERIFY(!Scratch::exists(path));
}

void FileUtilsCreateFolderTest::aPathOf240CharactersIsNotCut()
{
    const QByteArray path = longPath(240, "a");
    QCOMPARE(FileUtils::createFolder(FileUrl(path), false).path(), path);
    QVERIFY(isFolder(path));
}

void FileUtilsCreateFolderTest::aPathOf241CharactersLosesItsLast()
{
    const QByteArray path = longPath(241, "a");
    QCOMPARE(FileUtils::createFolder(FileUrl(path), false).path(), path.first(240));
    QVERIFY(isFolder(path.first(240)));
    QVERIFY(!Scratch::exists(path));
}

void FileUtilsCreateFolderTest::noLetterIsCutInTwo_data()
{
    QTest::addColumn<QByteArray>("letter");
    QTest::newRow("two bytes") << QByteArray("\xC3\xA9");
    QTest::newRow("three bytes") << QByteArray("\xE2\x82\xAC");
    QTest::newRow("four bytes") << QByteArray("\xF0\x9F\x98\x80");
}

void FileUtilsCreateFolderTest::noLetterIsCutInTwo()
{
    QFETCH(QByteArray, letter);
    const QByteArray path = longPath(300, letter);
    QCOMPARE(characterCount(path), 300);
    const FileUrl made = FileUtils::createFolder(FileUrl(path), false);
    QVERIFY(isFolder(made.path()));
    QVERIFY(path.startsWith(made.path()));
    QVERIFY(made.path().isValidUtf8());
    QCOMPARE(characterCount(made.path()), longest);
}

void FileUtilsCreateFolderTest::bytesThatAreNotUtf8AreNoObstacle()
{
    const QByteArray path = longPath(300, "\xFF");
    const FileUrl made = FileUtils::createFolder(FileUrl(path), false);
    QCOMPARE(made.path(), path.first(240));
    QVERIFY(isFolder(made.path()));
}

void FileUtilsCreateFolderTest::anExistingFolderWithALongPathComesBackUncut()
{
    const QByteArray path = longPath(300, "a");
    std::filesystem::create_directories(path.constData());
    QCOMPARE(FileUtils::createFolder(FileUrl(path), false).path(), path);
    QVERIFY(!Scratch::exists(path.first(240)));
}

void FileUtilsCreateFolderTest::theAlternativeOfALongPathIsNumberedAfterItsCut()
{
    const QByteArray path = longPath(300, "a");
    std::filesystem::create_directories(path.constData());
    QCOMPARE(FileUtils::createFolder(FileUrl(path), true).path(), path.first(240));
    QCOMPARE(FileUtils::createFolder(FileUrl(path), true).path(), path.first(240) + ".1");
    QVERIFY(isFolder(path.first(240) + ".1"));
}

void FileUtilsCreateFolderTest::whereAFileStandsNoFolderIsMade_data()
{
    noLocationAnswersNone_data();
}

void FileUtilsCreateFolderTest::whereAFileStandsNoFolderIsMade()
{
    QFETCH(bool, allowAlternative);
    const QByteArray file = scratch_->file("Backup", QByteArray("kept"));
    const RecordedLog log;
    QVERIFY(FileUtils::createFolder(FileUrl(file), allowAlternative).isNull());
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QVERIFY(!Scratch::exists(scratch_->path("Backup.1")));
    QCOMPARE(log.lines(), QStringList(failureLine(file, EEXIST)));
}

void FileUtilsCreateFolderTest::belowAFileNoFolderIsMade()
{
    const QByteArray file = scratch_->file("file", QByteArray("kept"));
    const RecordedLog log;
    QVERIFY(FileUtils::createFolder(FileUrl(file + "/a/b"), false).isNull());
    QCOMPARE(Scratch::content(file), QByteArray("kept"));
    QCOMPARE(log.lines(), QStringList(failureLine(file + "/a/b", ENOTDIR)));
}

void FileUtilsCreateFolderTest::aNameLongerThanTheSystemAllowsIsAFailure()
{
    // 130 characters of two bytes are within the limit of characters, not within that of a name.
    const QByteArray path = scratch_->path(QByteArray("\xC3\xA9").repeated(130));
    const RecordedLog log;
    QVERIFY(FileUtils::createFolder(FileUrl(path), false).isNull());
    QCOMPARE(log.lines(), QStringList(failureLine(path, ENAMETOOLONG)));
}

void FileUtilsCreateFolderTest::aFolderThatSomebodyElseMakesMeanwhileIsASuccess()
{
    FasterNeighbour calls;
    const SystemCalls::Replacement replacement(calls);
    const FileUrl url(scratch_->path("a/b"));
    QVERIFY(FileUtils::createFolder(url, false) == url);
    QVERIFY(isFolder(url.path()));
}

QTEST_GUILESS_MAIN(FileUtilsCreateFolderTest)
#include "FileUtilsCreateFolderTest.moc"
