#include "engine/FileUtils.h"
#include "kit/Scratch.h"

#include <QTest>

#include <sys/mount.h>

/// The system's own folders mounted below something that is erased: the classic accident with a
/// system in a folder. Needs root, for the mounts; it only scans.
class ProtectedMountsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void systemFoldersMountedBelowAnItemAreRefused_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("devices, bound") << QByteArray("/dev") << QByteArray();
        QTest::newRow("processes, bound") << QByteArray("/proc") << QByteArray();
        QTest::newRow("the kernel's objects, bound") << QByteArray("/sys") << QByteArray();
        QTest::newRow("the root folder, bound") << QByteArray("/") << QByteArray();
        QTest::newRow("processes, mounted anew") << QByteArray("proc") << QByteArray("proc");
        QTest::newRow("the kernel's objects, mounted anew")
            << QByteArray("sysfs") << QByteArray("sysfs");
    }
    void systemFoldersMountedBelowAnItemAreRefused()
    {
        QFETCH(QByteArray, source);
        QFETCH(QByteArray, type);
        const Scratch scratch;
        scratch.folder("system");
        const QByteArray inside = scratch.folder("system/inside");
        const QByteArray file = scratch.file("system/file", 5);
        const unsigned long flags = type.isEmpty() ? MS_BIND : MS_RDONLY;
        QCOMPARE(::mount(source.constData(), inside.constData(),
                         type.isEmpty() ? nullptr : type.constData(), flags, nullptr),
                 0);

        FileUtils scanner;
        const ScanReport report = scanner.readFilesFromPath(scratch.path("system"));
        const ScanFailures failures = scanner.takeScanFailures();

        QCOMPARE(::umount2(inside.constData(), MNT_DETACH), 0);
        QCOMPARE(report.files.size(), std::size_t(1));
        QCOMPARE(report.files.front()->fullpath(), file);
        QCOMPARE(report.folders.count(inside), std::size_t(0));
        QCOMPARE(failures.size(), std::size_t(1));
        QCOMPARE(failures.front().path, inside);
        QCOMPARE(failures.front().errornr, 0);
        QCOMPARE(failures.front().errormsg,
                 QStringLiteral("Refused: a part of the system itself is never erased"));
    }

    void anOrdinaryFileSystemMountedBelowAnItemIsWalked()
    {
        const Scratch scratch;
        scratch.folder("top");
        const QByteArray inside = scratch.folder("top/inside");
        QCOMPARE(::mount("tmpfs", inside.constData(), "tmpfs", 0, nullptr), 0);
        scratch.file("top/inside/file", 5);

        const ScanReport report = FileUtils().readFilesFromPath(scratch.path("top"));

        QCOMPARE(::umount2(inside.constData(), MNT_DETACH), 0);
        QCOMPARE(report.files.size(), std::size_t(1));
    }
};

QTEST_GUILESS_MAIN(ProtectedMountsTest)
#include "ProtectedMountsTest.moc"
