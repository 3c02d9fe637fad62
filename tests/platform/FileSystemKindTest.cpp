#include "platform/FileSystemKind.h"

#include <QTest>

class FileSystemKindTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void fileSystemsThatWriteNewBlocksAreKnown_data();
    void fileSystemsThatWriteNewBlocksAreKnown();
    void theKernelsOwnFileSystemsAreKnown_data();
    void theKernelsOwnFileSystemsAreKnown();
};

void FileSystemKindTest::fileSystemsThatWriteNewBlocksAreKnown_data()
{
    QTest::addColumn<quint64>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("btrfs") << quint64(0x9123683E) << QString(QLatin1String("btrfs"));
    QTest::newRow("ZFS") << quint64(0x2FC12FC1) << QString(QLatin1String("zfs"));
    QTest::newRow("bcachefs") << quint64(0xCA451A4E) << QString(QLatin1String("bcachefs"));
    QTest::newRow("F2FS") << quint64(0xF2F52010) << QString(QLatin1String("f2fs"));
    QTest::newRow("NILFS2") << quint64(0x3434) << QString(QLatin1String("nilfs2"));
    QTest::newRow("JFFS2") << quint64(0x72B6) << QString(QLatin1String("jffs2"));
    QTest::newRow("UBIFS") << quint64(0x24051905) << QString(QLatin1String("ubifs"));
    QTest::newRow("overlay") << quint64(0x794C7630) << QString(QLatin1String("overlayfs"));
    QTest::newRow("ext4") << quint64(0xEF53) << QString();
    QTest::newRow("tmpfs") << quint64(0x01021994) << QString();
    QTest::newRow("XFS") << quint64(0x58465342) << QString();
    QTest::newRow("FAT") << quint64(0x4D44) << QString();
    QTest::newRow("NFS") << quint64(0x6969) << QString();
    QTest::newRow("none") << quint64(0) << QString();
    // A type is 32 bits wide; a sign that was extended would look like this.
    QTest::newRow("btrfs with its sign extended") << quint64(0xFFFFFFFF9123683E) << QString();
}

void FileSystemKindTest::fileSystemsThatWriteNewBlocksAreKnown()
{
    QFETCH(quint64, type);
    QTEST(QString(FileSystemKind::name(FileSystemKind::copyOnWrite(type))), "name");
}

void FileSystemKindTest::theKernelsOwnFileSystemsAreKnown_data()
{
    QTest::addColumn<quint64>("type");
    QTest::addColumn<bool>("isKernelInterface");
    QTest::newRow("proc") << quint64(0x9FA0) << true;
    QTest::newRow("sysfs") << quint64(0x62656572) << true;
    QTest::newRow("cgroup") << quint64(0x27E0EB) << true;
    QTest::newRow("cgroup 2") << quint64(0x63677270) << true;
    QTest::newRow("devpts") << quint64(0x1CD1) << true;
    QTest::newRow("debugfs") << quint64(0x64626720) << true;
    QTest::newRow("tracefs") << quint64(0x74726163) << true;
    QTest::newRow("securityfs") << quint64(0x73636673) << true;
    QTest::newRow("bpf") << quint64(0xCAFE4A11) << true;
    QTest::newRow("efivarfs") << quint64(0xDE5E81E4) << true;
    QTest::newRow("configfs") << quint64(0x62656570) << true;
    QTest::newRow("pstore") << quint64(0x6165676C) << true;
    QTest::newRow("selinuxfs") << quint64(0xF97CFF8C) << true;
    QTest::newRow("ext4") << quint64(0xEF53) << false;
    QTest::newRow("tmpfs, which /dev is of, too") << quint64(0x01021994) << false;
    QTest::newRow("btrfs") << quint64(0x9123683E) << false;
    QTest::newRow("FUSE") << quint64(0x65735546) << false;
    QTest::newRow("none") << quint64(0) << false;
}

void FileSystemKindTest::theKernelsOwnFileSystemsAreKnown()
{
    QFETCH(quint64, type);
    QTEST(FileSystemKind::isKernelInterface(type), "isKernelInterface");
}

QTEST_APPLESS_MAIN(FileSystemKindTest)
#include "FileSystemKindTest.moc"
