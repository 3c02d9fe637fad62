#include "platform/UserDefaults.h"

#include "engine/RecordedLog.h"
#include "kit/Scratch.h"
#include "kit/Unprivileged.h"

#include <QTest>

namespace {

constexpr char settings[] = "[General]\nWipeMethod=6\n";
const QString method = QStringLiteral("WipeMethod");

} // namespace

/// What permissions do to the preferences.
class UserDefaultsPermissionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void anUnreadableFileFallsBackToTheDefaultsWithOneLine();
    void theFirstChangeMovesAnUnreadableFileAside();
    void aDamagedFileThatCannotBeMovedStaysAndChangesLiveInMemory();
    void changesLiveInMemoryWhereTheFolderCannotBeWritten();
    void whatAStoreCannotWriteAtItsEndIsALineInTheLog();
    void aFileThatCannotBeWrittenIsKept();
    void changesLiveInMemoryWhereTheFolderCannotBeMade();

  private:
    [[nodiscard]] bool write(const QByteArray &content) const
    {
        return !scratch_->file("Vantorel/Vantorel.ini", content).isEmpty();
    }
    [[nodiscard]] QByteArray file() const { return scratch_->path("Vantorel/Vantorel.ini"); }
    [[nodiscard]] bool allow(const QByteArray &path, mode_t mode) const
    {
        return ::chmod(path.constData(), mode) == 0;
    }

    std::unique_ptr<Scratch> scratch_;
};

void UserDefaultsPermissionsTest::init()
{
    scratch_ = std::make_unique<Scratch>();
    QVERIFY(!scratch_->folder("Vantorel").isEmpty());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QFile::decodeName(scratch_->path()));
}

void UserDefaultsPermissionsTest::cleanup()
{
    (void)allow(scratch_->path(), 0700);
    (void)allow(scratch_->path("Vantorel"), 0700);
    scratch_.reset();
}

void UserDefaultsPermissionsTest::anUnreadableFileFallsBackToTheDefaultsWithOneLine()
{
    QVERIFY(write(settings) && allow(file(), 0));
    const RecordedLog log;
    const UserDefaults defaults({{method, 4}});
    QCOMPARE(defaults.integer(method), std::int64_t(4));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(log.lines().first().contains(QLatin1String("Permission denied")),
             qUtf8Printable(log.lines().first()));
}

void UserDefaultsPermissionsTest::theFirstChangeMovesAnUnreadableFileAside()
{
    QVERIFY(write(settings) && allow(file(), 0));
    const RecordedLog log;
    UserDefaults().setValue(method, 7);
    QCOMPARE(Scratch::content(file()), QByteArray("[General]\nWipeMethod=7\n"));
    QVERIFY(allow(file() + ".damaged", 0600));
    QCOMPARE(Scratch::content(file() + ".damaged"), QByteArray(settings));
    QCOMPARE(log.lines().size(), 1);
}

void UserDefaultsPermissionsTest::aDamagedFileThatCannotBeMovedStaysAndChangesLiveInMemory()
{
    QVERIFY(write("[broken\nno setting\n") && allow(scratch_->path("Vantorel"), 0500));
    const RecordedLog log;
    {
        UserDefaults defaults({{method, 4}, {QStringLiteral("DarkMode"), true}});
        defaults.setValue(method, 7);
        defaults.setValue(QStringLiteral("DarkMode"), false);
        QCOMPARE(defaults.integer(method), std::int64_t(7));
        QVERIFY(!defaults.boolean(QStringLiteral("DarkMode")));
        defaults.remove(method);
        QCOMPARE(defaults.integer(method), std::int64_t(4));
    }
    QCOMPARE(log.lines().size(), 2);
    QCOMPARE(Scratch::content(file()), QByteArray("[broken\nno setting\n"));
}

void UserDefaultsPermissionsTest::changesLiveInMemoryWhereTheFolderCannotBeWritten()
{
    QVERIFY(allow(scratch_->path("Vantorel"), 0500));
    const RecordedLog log;
    UserDefaults defaults({{method, 4}});
    defaults.setValue(method, 7);
    QTRY_COMPARE(log.lines().size(), 1);
    QCOMPARE(defaults.integer(method), std::int64_t(7));
    defaults.setValue(method, 8);
    defaults.synchronize();
    QCOMPARE(defaults.integer(method), std::int64_t(8));
    QCOMPARE(log.lines().size(), 1);
    QVERIFY(!Scratch::exists(file()));
}

void UserDefaultsPermissionsTest::whatAStoreCannotWriteAtItsEndIsALineInTheLog()
{
    QVERIFY(allow(scratch_->path("Vantorel"), 0500));
    const RecordedLog log;
    UserDefaults().setValue(method, 7);
    QCOMPARE(log.lines().size(), 1);
}

void UserDefaultsPermissionsTest::aFileThatCannotBeWrittenIsKept()
{
    QVERIFY(write(settings) && allow(file(), 0400));
    const RecordedLog log;
    UserDefaults defaults;
    QCOMPARE(defaults.integer(method), std::int64_t(6));
    defaults.setValue(method, 7);
    defaults.synchronize();
    QCOMPARE(defaults.integer(method), std::int64_t(7));
    QCOMPARE(Scratch::content(file()), QByteArray(settings));
    QCOMPARE(log.lines().size(), 1);
}

void UserDefaultsPermissionsTest::changesLiveInMemoryWhereTheFolderCannotBeMade()
{
    QVERIFY(::rmdir(scratch_->path("Vantorel").constData()) == 0);
    QVERIFY(allow(scratch_->path(), 0500));
    const RecordedLog log;
    UserDefaults defaults;
    defaults.setValue(method, 7);
    defaults.synchronize();
    QCOMPARE(defaults.integer(method), std::int64_t(7));
    QCOMPARE(log.lines().size(), 1);
}

UNPRIVILEGED_TEST_MAIN(UserDefaultsPermissionsTest)
#include "UserDefaultsPermissionsTest.moc"
