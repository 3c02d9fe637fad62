#include "platform/UriList.h"

#include "platform/FileUrl.h"

#include <QSysInfo>
#include <QTest>

using Paths = std::vector<QByteArray>;

class UriListTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void locationsOfThisMachinesFilesAreTaken_data();
    void locationsOfThisMachinesFilesAreTaken();
    void whatLeavesADoubtIsLeftOut_data();
    void whatLeavesADoubtIsLeftOut();
    void theListMayEndItsLinesInAnyWay_data();
    void theListMayEndItsLinesInAnyWay();
    void theOrderIsThatOfTheListAndWhatIsRefusedLeavesNoGap();
    void commentsAndEmptyLinesAreNoLocations();
    void anEmptyListHasNoPaths();
    void everyByteThatANameCanHaveComesThrough();
};

void UriListTest::locationsOfThisMachinesFilesAreTaken_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("no host") << QByteArray("file:///a/b") << QByteArray("/a/b");
    QTest::newRow("no authority") << QByteArray("file:/a/b") << QByteArray("/a/b");
    QTest::newRow("localhost") << QByteArray("file://localhost/a") << QByteArray("/a");
    QTest::newRow("localhost in capitals") << QByteArray("file://LOCALHOST/a") << QByteArray("/a");
    QTest::newRow("the machine's own name")
        << QByteArray("file://" + QSysInfo::machineHostName().toUtf8() + "/a") << QByteArray("/a");
    QTest::newRow("scheme in capitals") << QByteArray("FILE:///a") << QByteArray("/a");
    QTest::newRow("a blank") << QByteArray("file:///a%20b") << QByteArray("/a b");
    QTest::newRow("a blank as it is") << QByteArray("file:///a b ") << QByteArray("/a b ");
    QTest::newRow("a byte that is not UTF-8") << QByteArray("file:///a%FFb%fe")
                                              << QByteArray("/a\xff"
                                                            "b\xfe");
    QTest::newRow("UTF-8 as it is") << QByteArray("file:///\xc3\xa4") << QByteArray("/\xc3\xa4");
    QTest::newRow("an encoded percent sign") << QByteArray("file:///a%252F") << QByteArray("/a%2F");
    QTest::newRow("encoded question mark and hash")
        << QByteArray("file:///a%3Fb%23c") << QByteArray("/a?b#c");
    QTest::newRow("an encoded newline") << QByteArray("file:///a%0Ab") << QByteArray("/a\nb");
    QTest::newRow("a plus sign is no blank") << QByteArray("file:///a+b") << QByteArray("/a+b");
    QTest::newRow("a folder's slash goes") << QByteArray("file:///a/b/") << QByteArray("/a/b");
    QTest::newRow("the root folder") << QByteArray("file:///") << QByteArray("/");
}

void UriListTest::locationsOfThisMachinesFilesAreTaken()
{
    QFETCH(const QByteArray, location);
    QFETCH(const QByteArray, path);

    QCOMPARE(UriList::paths(location), Paths{path});
}

void UriListTest::whatLeavesADoubtIsLeftOut_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::newRow("an encoded NUL") << QByteArray("file:///a%00b");
    QTest::newRow("a NUL as it is") << QByteArray("file:///a\0b", 11);
    QTest::newRow("an encoded slash") << QByteArray("file:///a%2Fb");
    QTest::newRow("an encoded slash in small letters") << QByteArray("file:///a%2fb");
    QTest::newRow("another machine") << QByteArray("file://elsewhere/a");
    QTest::newRow("a machine whose name begins like ours")
        << QByteArray("file://localhost.example/a");
    QTest::newRow("a host without a path") << QByteArray("file://localhost");
    QTest::newRow("a relative path") << QByteArray("file:a/b");
    QTest::newRow("a path alone") << QByteArray("/a/b");
    QTest::newRow("no path at all") << QByteArray("file:");
    QTest::newRow("a page") << QByteArray("http://localhost/a");
    QTest::newRow("a remote folder") << QByteArray("sftp://localhost/a");
    QTest::newRow("a scheme that begins like ours") << QByteArray("files:///a");
    QTest::newRow("a code cut short") << QByteArray("file:///a%2");
    QTest::newRow("a percent sign at the end") << QByteArray("file:///a%");
    QTest::newRow("a code that is none") << QByteArray("file:///a%G1");
    QTest::newRow("a sign in a code") << QByteArray("file:///a%+1");
    QTest::newRow("a blank in a code") << QByteArray("file:///a% 1");
    QTest::newRow("an X in a code") << QByteArray("file:///a%0x41");
    QTest::newRow("a query") << QByteArray("file:///a?b");
    QTest::newRow("a place in a file") << QByteArray("file:///a#b");
}

void UriListTest::whatLeavesADoubtIsLeftOut()
{
    QFETCH(const QByteArray, location);

    QCOMPARE(UriList::paths(location), Paths{});
}

void UriListTest::theListMayEndItsLinesInAnyWay_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("CR LF") << QByteArray("file:///a\r\nfile:///b\r\n");
    QTest::newRow("LF") << QByteArray("file:///a\nfile:///b\n");
    QTest::newRow("mixed, the last line without an end") << QByteArray("file:///a\r\nfile:///b");
    QTest::newRow("a NUL at the end") << QByteArray("file:///a\nfile:///b\0", 20);
    QTest::newRow("a NUL after the last line") << QByteArray("file:///a\r\nfile:///b\r\n\0", 23);
}

void UriListTest::theListMayEndItsLinesInAnyWay()
{
    QFETCH(const QByteArray, list);

    QCOMPARE(UriList::paths(list), (Paths{"/a", "/b"}));
}

void UriListTest::theOrderIsThatOfTheListAndWhatIsRefusedLeavesNoGap()
{
    QCOMPARE(
        UriList::paths("file:///z\r\nhttp://x/y\r\nfile:///a\r\nfile://far/b\r\nfile:///z\r\n"),
        (Paths{"/z", "/a", "/z"}));
}

void UriListTest::commentsAndEmptyLinesAreNoLocations()
{
    QCOMPARE(UriList::paths("#file:///a\r\n\r\n# two files\r\nfile:///b\r\n"), Paths{"/b"});
}

void UriListTest::anEmptyListHasNoPaths()
{
    QCOMPARE(UriList::paths(QByteArray()), Paths{});
    QCOMPARE(UriList::paths("\r\n"), Paths{});
}

void UriListTest::everyByteThatANameCanHaveComesThrough()
{
    QByteArray path("/");
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '/')
            path.append(char(byte));
    }

    QCOMPARE(UriList::paths(FileUrl(path).toUri()), Paths{path});
}

QTEST_MAIN(UriListTest)
#include "UriListTest.moc"
