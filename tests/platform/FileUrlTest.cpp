#include "platform/FileUrl.h"

#include <QTest>

class FileUrlTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void thePathIsKeptByteByByte_data();
    void thePathIsKeptByteByByte();
    void theUriIsPercentEncoded_data() { thePathIsKeptByteByByte_data(); }
    void theUriIsPercentEncoded();
    void onlyUnreservedCharactersAndTheSlashStandForThemselves();
    void noLocationIsNotTheEmptyPath();
    void locationsAreEqualByTheirPath();
};

void FileUrlTest::thePathIsKeptByteByByte_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("uri");
    QTest::newRow("plain") << QByteArray("/a/b") << QByteArray("file:///a/b");
    QTest::newRow("blanks") << QByteArray("/a b") << QByteArray("file:///a%20b");
    QTest::newRow("a semicolon") << QByteArray("/a;b") << QByteArray("file:///a%3Bb");
    QTest::newRow("percent signs")
        << QByteArray("/100%/%2F%00") << QByteArray("file:///100%25/%252F%2500");
    QTest::newRow("question mark and hash")
        << QByteArray("/a?b#c") << QByteArray("file:///a%3Fb%23c");
    QTest::newRow("non-ASCII letters") << QByteArray("/\xc3\xa4") << QByteArray("file:///%C3%A4");
    QTest::newRow("bytes that are not UTF-8")
        << QByteArray("/\xff\xfe") << QByteArray("file:///%FF%FE");
    QTest::newRow("a newline") << QByteArray("/a\nb") << QByteArray("file:///a%0Ab");
    QTest::newRow("doubled slashes and dots")
        << QByteArray("//a/./../b/") << QByteArray("file:////a/./../b/");
    QTest::newRow("the root folder") << QByteArray("/") << QByteArray("file:///");
}

void FileUrlTest::thePathIsKeptByteByByte()
{
    QFETCH(QByteArray, path);
    QCOMPARE(FileUrl(path).path(), path);
}

void FileUrlTest::theUriIsPercentEncoded()
{
    QFETCH(QByteArray, path);
    QTEST(FileUrl(path).toUri(), "uri");
    QCOMPARE(QByteArray::fromPercentEncoding(FileUrl(path).toUri().mid(7)), path);
}

void FileUrlTest::onlyUnreservedCharactersAndTheSlashStandForThemselves()
{
    QByteArray plain;
    for (int byte = 1; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        if (FileUrl(QByteArray(1, character)).toUri() == "file://" + QByteArray(1, character))
            plain += character;
    }
    QCOMPARE(plain, "-./0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz~");
}

void FileUrlTest::noLocationIsNotTheEmptyPath()
{
    QVERIFY(FileUrl().isNull());
    QVERIFY(FileUrl(QByteArray()).isNull());
    QVERIFY(!FileUrl("").isNull());
    QVERIFY(!FileUrl("/").isNull());
}

void FileUrlTest::locationsAreEqualByTheirPath()
{
    QVERIFY(FileUrl("/a") == FileUrl("/a"));
    QVERIFY(FileUrl("/a") != FileUrl("/A"));
    QVERIFY(FileUrl("/a") != FileUrl("/a/"));
}

QTEST_APPLESS_MAIN(FileUrlTest)
#include "FileUrlTest.moc"
