#include "platform/FolderReader.h"

#include "kit/Scratch.h"
#include "platform/Descriptor.h"
#include "platform/ScriptedSystemCalls.h"

#include <QMap>
#include <QTest>

#include <cerrno>

namespace {

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

Descriptor openFolder(const QByteArray &path)
{
    return Descriptor(SystemCalls::real().open(SystemCalls::startFolder, path.constData(),
                                               Access::Folder, LastLink::Stop));
}

/// What the reader tells of the folder: each name with its kinds, one per time that it was told.
QMap<QByteArray, QList<FileKind>> readAll(FolderReader &reader)
{
    QMap<QByteArray, QList<FileKind>> entries;
    FolderReader::Entry entry{};
    while (reader.next(entry))
        entries[entry.name].append(entry.kind);
    return entries;
}

} // namespace

class FolderReaderTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void anEmptyFolderHasNoEntries();
    void everyEntryComesWithItsKindAndWithoutTheDots();
    void kindsTheFileSystemDoesNotTellAreUnknown();
    void aFolderOfManyBuffersIsReadOnceAndWhole();
    void namesAreBytesUpToTheirFullLength();
    void anErrorEndsTheReadingAndIsKept_data();
    void anErrorEndsTheReadingAndIsKept();
    void whatIsNoFolderFails();
    void theFolderStaysOpen();
};

void FolderReaderTest::anEmptyFolderHasNoEntries()
{
    const Scratch scratch;
    const Descriptor folder = openFolder(scratch.path());
    FolderReader reader(folder.fd());
    QVERIFY(readAll(reader).isEmpty());
    QCOMPARE(reader.error(), 0);
    FolderReader::Entry entry{};
    QVERIFY(!reader.next(entry));
}

void FolderReaderTest::everyEntryComesWithItsKindAndWithoutTheDots()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("file", "x").isEmpty() && !scratch.file(".hidden", "x").isEmpty());
    QVERIFY(!scratch.file("...", "x").isEmpty() && !scratch.file("..x", "x").isEmpty());
    QVERIFY(!scratch.folder("folder").isEmpty() && !scratch.link("link", "folder").isEmpty());
    QCOMPARE(::mkfifo(scratch.path("fifo").constData(), 0644), 0);
    QCOMPARE(::mknod(scratch.path("sock").constData(), S_IFSOCK | 0644, 0), 0);
    const Descriptor folder = openFolder(scratch.path());
    FolderReader reader(folder.fd());
    const QMap<QByteArray, QList<FileKind>> expected = {
        {"file", {FileKind::Regular}},  {".hidden", {FileKind::Regular}},
        {"...", {FileKind::Regular}},   {"..x", {FileKind::Regular}},
        {"folder", {FileKind::Folder}}, {"link", {FileKind::Link}},
        {"fifo", {FileKind::Fifo}},     {"sock", {FileKind::Socket}},
    };
    QCOMPARE(readAll(reader), expected);
    QCOMPARE(reader.error(), 0);
}

void FolderReaderTest::kindsTheFileSystemDoesNotTellAreUnknown()
{
    const Scratch scratch;
    QVERIFY(!scratch.file("file", "x").isEmpty() && !scratch.folder("folder").isEmpty());
    ScriptedSystemCalls calls;
    calls.blanksKinds = true;
    const SystemCalls::Replacement replacement(calls);
    const Descriptor folder = openFolder(scratch.path());
    FolderReader reader(folder.fd());
    const QMap<QByteArray, QList<FileKind>> expected = {{"file", {FileKind::Unknown}},
                                                        {"folder", {FileKind::Unknown}}};
    QCOMPARE(readAll(reader), expected);
}

void FolderReaderTest::aFolderOfManyBuffersIsReadOnceAndWhole()
{
    const Scratch scratch;
    QList<QByteArray> names;
    for (int number = 0; number < 1000; ++number) {
        names.append(QByteArray::number(number).rightJustified(200, '0'));
        QVERIFY(!scratch.file(names.last(), "").isEmpty());
    }
    const Descriptor folder = openFolder(scratch.path());
    FolderReader reader(folder.fd());
    const QMap<QByteArray, QList<FileKind>> entries = readAll(reader);
    QCOMPARE(entries.keys(), names);
    for (const QList<FileKind> &kinds : entries)
        QCOMPARE(kinds, QList<FileKind>({FileKind::Regular}));
}

void FolderReaderTest::namesAreBytesUpToTheirFullLength()
{
    const Scratch scratch;
    const QList<QByteArray> names = {QByteArray(255, 'n'), "new\nline", "not UTF-8 \xff\xfe",
                                     " blanks ", "\\"};
    for (const QByteArray &name : names)
        QVERIFY(!scratch.file(name, "").isEmpty());
    const Descriptor folder = openFolder(scratch.path());
    FolderReader reader(folder.fd());
    QList<QByteArray> sorted = names;
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(readAll(reader).keys(), sorted);
}

void FolderReaderTest::anErrorEndsTheReadingAndIsKept_data()
{
    QTest::addColumn<int>("readsBeforeError");
    QTest::addColumn<int>("error");
    QTest::newRow("at the first read") << 0 << EIO;
    QTest::newRow("in the middle") << 2 << EIO;
    QTest::newRow("of a folder removed meanwhile") << 1 << ENOENT;
}

void FolderReaderTest::anErrorEndsTheReadingAndIsKept()
{
    QFETCH(int, readsBeforeError);
    QFETCH(int, error);
    const Scratch scratch;
    for (int number = 0; number < 100; ++number)
        QVERIFY(!scratch.file(QByteArray::number(number), "").isEmpty());
    ScriptedSystemCalls calls;
    calls.folderCapacity = 512;
    calls.readFolderError = error;
    calls.readsBeforeError = readsBeforeError;
    const SystemCalls::Replacement replacement(calls);
    const Descriptor folder = openFolder(scratch.path());
    FolderReader reader(folder.fd());
    const qsizetype count = readAll(reader).size();
    QCOMPARE(count > 0, readsBeforeError > 0);
    QVERIFY(count < 100);
    QCOMPARE(reader.error(), error);
}

void FolderReaderTest::whatIsNoFolderFails()
{
    const Scratch scratch;
    const QByteArray file = scratch.file("file", "x");
    const Descriptor opened(SystemCalls::real().open(SystemCalls::startFolder, file.constData(),
                                                     Access::Read, LastLink::Stop));
    FolderReader reader(opened.fd());
    QVERIFY(readAll(reader).isEmpty());
    QCOMPARE(reader.error(), ENOTDIR);
}

void FolderReaderTest::theFolderStaysOpen()
{
    const Scratch scratch;
    const Descriptor folder = openFolder(scratch.path());
    {
        FolderReader reader(folder.fd());
        QVERIFY(readAll(reader).isEmpty());
    }
    FileStatus status;
    QCOMPARE(SystemCalls::real().status(folder.fd(), status), 0);
}

QTEST_APPLESS_MAIN(FolderReaderTest)
#include "FolderReaderTest.moc"
