#include "engine/ProtectedPlaces.h"

#include "kit/Scratch.h"

#include <QTest>

namespace {

constexpr std::uint64_t ext4 = 0xEF53;

FileStatus statusOf(const QByteArray &path)
{
    FileStatus status;
    SystemCalls::real().statusAt(SystemCalls::startFolder, path.constData(),
                                 SystemCalls::LastLink::Stop, status);
    return status;
}

} // namespace

/// Only asks; nothing here is removed.
class ProtectedPlacesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void aProtectedPlaceIsRefusedByName_data();
    void aProtectedPlaceIsRefusedByName();
    void aProtectedPlaceIsRefusedByWhateverPathItIsReached_data();
    void aProtectedPlaceIsRefusedByWhateverPathItIsReached();
    void aPathThroughALinkOfTheUsersIsRefusedToo();
    void anEmptyPathIsRefused_data();
    void anEmptyPathIsRefused();
    void aPathThatEndsAboveItsFolderIsRefused_data();
    void aPathThatEndsAboveItsFolderIsRefused();
    void otherPlacesAreNotRefused_data();
    void otherPlacesAreNotRefused();
    void aLinkToAProtectedPlaceIsNotThePlace();
    void whatIsOfTheUserIsNotRefused_data();
    void whatIsOfTheUserIsNotRefused();

    void aPlaceIsContainedWhereverItIsMet_data();
    void aPlaceIsContainedWhereverItIsMet();
    void theKernelsOwnFileSystemsAreContained_data();
    void theKernelsOwnFileSystemsAreContained();
    void anOrdinaryFolderIsNotContained();
    void whatIsMetOnTheWayHasItsOwnWords();
};

void ProtectedPlacesTest::aProtectedPlaceIsRefusedByName_data()
{
    QTest::addColumn<QByteArray>("path");
    for (const char *path : {"/", "/proc", "/sys", "/dev"})
        QTest::newRow(path) << QByteArray(path);
}

void ProtectedPlacesTest::aProtectedPlaceIsRefusedByName()
{
    QFETCH(QByteArray, path);
    QCOMPARE(ProtectedPlaces::refusal(path), QStringLiteral("Refused: \"") +
                                                 QString::fromLatin1(path) +
                                                 QStringLiteral("\" is never erased"));
}

void ProtectedPlacesTest::aProtectedPlaceIsRefusedByWhateverPathItIsReached_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("place");
    const QString root = QStringLiteral("/");
    QTest::newRow("above a folder of the root") << QByteArray("/home/..") << root;
    QTest::newRow("above the root") << QByteArray("/..") << root;
    QTest::newRow("above the root, several times") << QByteArray("/../../..") << root;
    QTest::newRow("the root itself") << QByteArray("/.") << root;
    QTest::newRow("doubled slashes") << QByteArray("//") << root;
    QTest::newRow("proc itself") << QByteArray("/proc/.") << QStringLiteral("/proc");
    QTest::newRow("proc with a slash") << QByteArray("/proc/") << QStringLiteral("/proc");
    QTest::newRow("proc through sys") << QByteArray("/sys/../proc") << QStringLiteral("/proc");
    QTest::newRow("sys with doubled slashes") << QByteArray("//sys") << QStringLiteral("/sys");
    QTest::newRow("dev through proc") << QByteArray("/proc/../dev/.") << QStringLiteral("/dev");
}

void ProtectedPlacesTest::aProtectedPlaceIsRefusedByWhateverPathItIsReached()
{
    QFETCH(QByteArray, path);
    QFETCH(QString, place);
    QCOMPARE(ProtectedPlaces::refusal(path),
             QStringLiteral("Refused: \"%1\" is never erased").arg(place));
}

void ProtectedPlacesTest::aPathThroughALinkOfTheUsersIsRefusedToo()
{
    const Scratch scratch;
    scratch.link("link", "/");
    QCOMPARE(ProtectedPlaces::refusal(scratch.path("link/proc")),
             QStringLiteral("Refused: \"/proc\" is never erased"));
    QCOMPARE(ProtectedPlaces::refusal(scratch.path("link/")),
             QStringLiteral("Refused: \"/\" is never erased"));
}

void ProtectedPlacesTest::anEmptyPathIsRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("no path") << QByteArray();
    QTest::newRow("empty path") << QByteArray("");
}

void ProtectedPlacesTest::anEmptyPathIsRefused()
{
    QFETCH(QByteArray, path);
    QCOMPARE(ProtectedPlaces::refusal(path),
             QStringLiteral("Refused: an empty path names nothing"));
}

void ProtectedPlacesTest::aPathThatEndsAboveItsFolderIsRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("existing folder") << QByteArray("folder/..");
    QTest::newRow("with a slash") << QByteArray("folder/../");
    QTest::newRow("missing folder") << QByteArray("missing/..");
}

void ProtectedPlacesTest::aPathThatEndsAboveItsFolderIsRefused()
{
    QFETCH(QByteArray, name);
    const Scratch scratch;
    scratch.folder("folder");
    QCOMPARE(ProtectedPlaces::refusal(scratch.path(name)),
             QStringLiteral("Refused: \"..\" names no file or folder of its own"));
}

void ProtectedPlacesTest::otherPlacesAreNotRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    for (const char *path : {"/proc/self", "/sys/kernel", "/dev/null", "/home", "/tmp", "/procfs",
                             "/no such folder", "/tmp/..."})
        QTest::newRow(path) << QByteArray(path);
}

void ProtectedPlacesTest::otherPlacesAreNotRefused()
{
    QFETCH(QByteArray, path);
    QVERIFY(ProtectedPlaces::refusal(path).isNull());
}

void ProtectedPlacesTest::aLinkToAProtectedPlaceIsNotThePlace()
{
    const Scratch scratch;
    for (const char *place : {"/", "/proc", "/sys", "/dev"}) {
        const QByteArray link = scratch.link("link", place);
        QVERIFY(ProtectedPlaces::refusal(link).isNull());
        QCOMPARE(::unlink(link.constData()), 0);
    }
}

void ProtectedPlacesTest::whatIsOfTheUserIsNotRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("folder") << QByteArray("folder");
    QTest::newRow("file") << QByteArray("file");
    QTest::newRow("dangling link") << QByteArray("dangling");
    QTest::newRow("missing") << QByteArray("missing");
    QTest::newRow("folder called like a protected place") << QByteArray("proc");
}

void ProtectedPlacesTest::whatIsOfTheUserIsNotRefused()
{
    QFETCH(QByteArray, name);
    const Scratch scratch;
    scratch.folder("folder");
    scratch.folder("proc");
    scratch.file("file", 1);
    scratch.link("dangling", "nothing");
    QVERIFY(ProtectedPlaces::refusal(scratch.path(name)).isNull());
}

void ProtectedPlacesTest::aPlaceIsContainedWhereverItIsMet_data()
{
    aProtectedPlaceIsRefusedByName_data();
}

void ProtectedPlacesTest::aPlaceIsContainedWhereverItIsMet()
{
    QFETCH(QByteArray, path);
    QVERIFY(ProtectedPlaces().contains(statusOf(path), ext4));
}

void ProtectedPlacesTest::theKernelsOwnFileSystemsAreContained_data()
{
    QTest::addColumn<quint64>("type");
    QTest::newRow("proc") << quint64(0x9FA0);
    QTest::newRow("sysfs") << quint64(0x62656572);
    QTest::newRow("cgroup2") << quint64(0x63677270);
}

void ProtectedPlacesTest::theKernelsOwnFileSystemsAreContained()
{
    QFETCH(quint64, type);
    const Scratch scratch;
    QVERIFY(ProtectedPlaces().contains(statusOf(scratch.path()), type));
}

void ProtectedPlacesTest::anOrdinaryFolderIsNotContained()
{
    const Scratch scratch;
    QVERIFY(!ProtectedPlaces().contains(statusOf(scratch.path()), ext4));
    // The same number of an inode, on another device.
    FileStatus other = statusOf("/");
    other.device = ~other.device;
    QVERIFY(!ProtectedPlaces().contains(other, ext4));
}

void ProtectedPlacesTest::whatIsMetOnTheWayHasItsOwnWords()
{
    QCOMPARE(ProtectedPlaces::refusalOnTheWay(),
             QStringLiteral("Refused: a part of the system itself is never erased"));
}

QTEST_APPLESS_MAIN(ProtectedPlacesTest)
#include "ProtectedPlacesTest.moc"
