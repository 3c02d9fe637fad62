#include "platform/FileManager.h"

#include "kit/PrivateBus.h"

#include <QDBusContext>
#include <QTest>

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.FileManager1");

} // namespace

/// Keeps what it is asked to show and answers as it is told to.
class FakeFileManager : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

  public:
    bool appear(QDBusConnection bus)
    {
        return bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                                  QDBusConnection::ExportAllSlots) &&
               bus.registerService(serviceName);
    }

    bool refuses = false;
    bool hangs = false;
    int count = 0;
    QStringList uris;

  public Q_SLOTS:
    void ShowItems(const QStringList &givenUris, const QString & /*startupId*/)
    {
        ++count;
        uris = givenUris;
        setDelayedReply(hangs);
        if (refuses)
            sendErrorReply(QDBusError::Failed, QStringLiteral("no window"));
    }
};

class FileManagerTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theFilesAreShownByTheirBytes();
    void theCallReturnsAtOnce();
    void noFilesAreNotAskedFor();
    void withoutAFileManagerTheFolderIsOpened();
    void aFileManagerThatRefusesGivesWayToTheFolder();
    void aFileManagerThatHangsGivesWayToTheFolderAfterTheTimeLimit();
    void aFileManagerIsStartedOnDemand();
    void whereNothingOpensTheFolderTheCauseIsTold();
    void theCauseIsToldToNobodyWhereNobodyListens_data();
    void theCauseIsToldToNobodyWhereNobodyListens();

  private:
    void show(const std::vector<QByteArray> &paths, int milliseconds = 20000);

    std::unique_ptr<PrivateBus> bus_;
    std::unique_ptr<FakeFileManager> manager_;
    std::unique_ptr<Scratch> scratch_;
    QString connection_;
    QString opener_;
    QStringList problems_;
};

void FileManagerTest::init()
{
    bus_ = std::make_unique<PrivateBus>();
    QVERIFY(bus_->isThere());
    manager_ = std::make_unique<FakeFileManager>();
    scratch_ = std::make_unique<Scratch>();
    connection_ = bus_->connection().name();
    problems_.clear();
    const QByteArray script = scratch_->file(
        "opener", "#!/bin/sh\nprintf %s \"$1\" > '" + scratch_->path("part") + "' && mv '" +
                      scratch_->path("part") + "' '" + scratch_->path("opened") + "'\n");
    QVERIFY(::chmod(script.constData(), 0755) == 0);
    opener_ = QFile::decodeName(script);
}

void FileManagerTest::cleanup()
{
    manager_.reset();
    bus_.reset();
    scratch_.reset();
}

void FileManagerTest::show(const std::vector<QByteArray> &paths, int milliseconds)
{
    FileManager::showItems({paths.begin(), paths.end()},
                           [this](const QString &problem) { problems_.append(problem); },
                           {connection_, milliseconds, opener_});
}

void FileManagerTest::theFilesAreShownByTheirBytes()
{
    QVERIFY(manager_->appear(bus_->connection()));
    show({"/folder/a b", "/folder/\xFF"});
    QTRY_COMPARE(manager_->count, 1);
    QCOMPARE(manager_->uris, QStringList({QStringLiteral("file:///folder/a%20b"),
                                          QStringLiteral("file:///folder/%FF")}));
    QVERIFY(problems_.isEmpty());
}

void FileManagerTest::theCallReturnsAtOnce()
{
    QVERIFY(manager_->appear(bus_->connection()));
    show({"/folder/a"});
    QCOMPARE(manager_->count, 0);
    QTRY_COMPARE(manager_->count, 1);
}

void FileManagerTest::noFilesAreNotAskedFor()
{
    QVERIFY(manager_->appear(bus_->connection()));
    show({});
    show({"/folder/a"});
    QTRY_COMPARE(manager_->count, 1);
}

void FileManagerTest::withoutAFileManagerTheFolderIsOpened()
{
    show({"/some folder/a"});
    QTRY_VERIFY(Scratch::exists(scratch_->path("opened")));
    QCOMPARE(Scratch::content(scratch_->path("opened")), QByteArray("file:///some%20folder"));
    QVERIFY(problems_.isEmpty());
}

void FileManagerTest::aFileManagerThatRefusesGivesWayToTheFolder()
{
    manager_->refuses = true;
    QVERIFY(manager_->appear(bus_->connection()));
    show({"/folder/a"});
    QTRY_VERIFY(Scratch::exists(scratch_->path("opened")));
}

void FileManagerTest::aFileManagerThatHangsGivesWayToTheFolderAfterTheTimeLimit()
{
    manager_->hangs = true;
    QVERIFY(manager_->appear(bus_->connection()));
    show({"/folder/a"}, 300);
    QTRY_COMPARE(manager_->count, 1);
    QTRY_VERIFY(Scratch::exists(scratch_->path("opened")));
    QCOMPARE(Scratch::content(scratch_->path("opened")), QByteArray("file:///folder"));
    QCOMPARE(manager_->count, 1);
    QVERIFY(problems_.isEmpty());
}

/// This one ends at once, so that the folder is opened after all.
void FileManagerTest::aFileManagerIsStartedOnDemand()
{
    const QByteArray program =
        scratch_->file("manager", "#!/bin/sh\n: > '" + scratch_->path("started") + "'\nexit 1\n");
    QVERIFY(::chmod(program.constData(), 0755) == 0);
    const QByteArray services = scratch_->folder("services");
    QVERIFY(
        !scratch_
             ->file("services/org.freedesktop.FileManager1.service",
                    "[D-BUS Service]\nName=org.freedesktop.FileManager1\nExec=" + program + '\n')
             .isEmpty());
    const auto bus = std::make_unique<PrivateBus>(services);
    connection_ = bus->connection().name();
    show({"/folder/a"});
    QTRY_VERIFY(Scratch::exists(scratch_->path("opened")));
    QVERIFY(Scratch::exists(scratch_->path("started")));
}

void FileManagerTest::whereNothingOpensTheFolderTheCauseIsTold()
{
    manager_->refuses = true;
    QVERIFY(manager_->appear(bus_->connection()));
    opener_ = QStringLiteral("/nowhere/opener");
    show({"/folder/a"});
    QTRY_COMPARE(problems_, QStringList(QStringLiteral("no window")));
}

void FileManagerTest::theCauseIsToldToNobodyWhereNobodyListens_data()
{
    QTest::addColumn<bool>("hasBus");
    QTest::newRow("there is a bus") << true;
    QTest::newRow("there is none") << false;
}

void FileManagerTest::theCauseIsToldToNobodyWhereNobodyListens()
{
    QFETCH(bool, hasBus);
    const QString connection = hasBus ? connection_ : QStringLiteral("no bus");
    const QString opener = QStringLiteral("/nowhere/opener");
    FileManager::showItems({FileUrl("/folder/a")}, {}, {connection, 20000, opener});
    FileManager::showItems({FileUrl("/folder/a")},
                           [this](const QString &problem) { problems_.append(problem); },
                           {connection, 20000, opener});
    QTRY_COMPARE(problems_.size(), 1);
}

QTEST_GUILESS_MAIN(FileManagerTest)
#include "FileManagerTest.moc"
