#include "app/run/FolderOrder.h"

#include <QTest>

namespace {

QByteArrayList ordered(const QByteArrayList &paths)
{
    FolderMap folders;
    for (const QByteArray &path : paths)
        folders[path];
    QByteArrayList order;
    for (const auto &folder : FolderOrder::deepestFirst(folders))
        order.append(folder.first);
    return order;
}

} // namespace

class FolderOrderTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void noFoldersHaveNoOrder();
    void aSubFolderComesBeforeTheFolderThatHoldsIt_data();
    void aSubFolderComesBeforeTheFolderThatHoldsIt();
    void theOrderDoesNotRegardCase();
    void foldersThatDifferOnlyInCaseAreBothOffered();
    void eachFolderKeepsItsFacts();
};

void FolderOrderTest::noFoldersHaveNoOrder()
{
    QCOMPARE(ordered({}), QByteArrayList());
}

void FolderOrderTest::aSubFolderComesBeforeTheFolderThatHoldsIt_data()
{
    QTest::addColumn<QByteArrayList>("folders");
    QTest::newRow("a chain") << QByteArrayList({"/a", "/a/b", "/a/b/c", "/a/b/c/d"});
    QTest::newRow("siblings") << QByteArrayList({"/a", "/a/x", "/a/y", "/a/x/z"});
    QTest::newRow("mixed case") << QByteArrayList({"/A", "/A/b", "/A/b/C", "/A/B", "/A/B/c"});
    QTest::newRow("names that begin alike")
        << QByteArrayList({"/a", "/a b", "/a/b", "/a-", "/a-/b", "/a0", "/a0/b"});
    QTest::newRow("not UTF-8") << QByteArrayList({"/\xff", "/\xff/\xfe", "/\xff/\x01"});
    QTest::newRow("the root folder's own") << QByteArrayList({"/", "/a"});
}

void FolderOrderTest::aSubFolderComesBeforeTheFolderThatHoldsIt()
{
    QFETCH(QByteArrayList, folders);
    const QByteArrayList order = ordered(folders);
    QCOMPARE(order.size(), folders.size());
    for (const QByteArray &folder : folders) {
        for (const QByteArray &below : folders) {
            const QByteArray prefix = folder.endsWith('/') ? folder : folder + '/';
            if (below != folder && below.startsWith(prefix))
                QVERIFY2(order.indexOf(below) < order.indexOf(folder), below.constData());
        }
    }
}

void FolderOrderTest::theOrderDoesNotRegardCase()
{
    QCOMPARE(ordered({"/B", "/a", "/C", "/d"}), QByteArrayList({"/d", "/C", "/B", "/a"}));
}

void FolderOrderTest::foldersThatDifferOnlyInCaseAreBothOffered()
{
    const QByteArrayList order = ordered({"/a", "/A"});
    QCOMPARE(order.size(), 2);
    QVERIFY(order.contains("/a") && order.contains("/A"));
}

void FolderOrderTest::eachFolderKeepsItsFacts()
{
    FolderMap folders;
    folders["/a"].givenLength = 1;
    folders["/a/b"].isLink = true;
    const FileUtils::FolderPaths order = FolderOrder::deepestFirst(folders);
    QCOMPARE(order.size(), std::size_t(2));
    QCOMPARE(order[0].first, "/a/b");
    QVERIFY(order[0].second.isLink);
    QCOMPARE(order[1].first, "/a");
    QCOMPARE(order[1].second.givenLength, 1);
}

QTEST_APPLESS_MAIN(FolderOrderTest)
#include "FolderOrderTest.moc"
