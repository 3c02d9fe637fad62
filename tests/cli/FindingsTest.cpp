#include "cli/Findings.h"

#include <QTest>

namespace {

QueueArray::Item itemOf(const QByteArray &path, double size, const ScanFacts &facts = {})
{
    const QueueArray::Item item = QueueObject::create();
    item->setFullpath(path);
    item->setFilename(path.mid(1));
    item->setFilepath("/");
    item->setFilesize(size);
    item->setScanFacts(facts);
    return item;
}

ScanFacts link()
{
    ScanFacts facts;
    facts.isLink = true;
    return facts;
}

ScanFacts hardLinkedOnCopyOnWrite()
{
    ScanFacts facts;
    facts.hasOtherNames = true;
    facts.copyOnWrite = FileSystemKind::CopyOnWrite::Btrfs;
    return facts;
}

const QString plain = QStringLiteral("Found:   2 files (1.50 KB) and 0 folders\n"
                                     "Method:  1-Pass Zero\n");

Findings plainFindings()
{
    Findings findings;
    findings.files = 2;
    findings.bytes = 1500;
    return findings;
}

} // namespace

class FindingsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void sumsUpTheQueueAndTheFolders()
    {
        EraseRun run;
        run.addObjectsFromArray({itemOf("/a", 10), itemOf("/b", 5, link()), itemOf("/c", 0),
                                 itemOf("/d", 7, hardLinkedOnCopyOnWrite())});
        run.addFolderObjectsToQueueFromDict({{"/x", {}}, {"/y", link()}, {"/y/z", {}}});

        const Findings findings = Findings::of(run);

        QCOMPARE(findings.files, 4);
        QCOMPARE(findings.bytes, 22.0);
        QCOMPARE(findings.folders, 3);
        QCOMPARE(findings.links, 1);
        QCOMPARE(findings.hardLinks, 1);
        QCOMPARE(findings.copyOnWrite, 1);
    }

    void aFileOfUnknownSizeCountsAsAFileOnly()
    {
        EraseRun run;
        run.addObjectsFromArray({itemOf("/a", 10), itemOf("/missing", -1)});

        const Findings findings = Findings::of(run);

        QCOMPARE(findings.files, 2);
        QCOMPARE(findings.bytes, 10.0);
    }

    void nothingMeansNeitherFilesNorFolders()
    {
        Findings findings;
        QVERIFY(findings.isEmpty());
        findings.folders = 1;
        QVERIFY(!findings.isEmpty());
        findings = {};
        findings.files = 1;
        QVERIFY(!findings.isEmpty());
    }

    void countsAreSaidInTheSingularAndThePlural_data()
    {
        QTest::addColumn<int>("files");
        QTest::addColumn<int>("folders");
        QTest::addColumn<QString>("line");
        QTest::newRow("none") << 0 << 0
                              << QStringLiteral("Found:   0 files (0 Bytes) and 0 folders\n");
        QTest::newRow("one") << 1 << 1
                             << QStringLiteral("Found:   1 file (0 Bytes) and 1 folder\n");
        QTest::newRow("two") << 2 << 2
                             << QStringLiteral("Found:   2 files (0 Bytes) and 2 folders\n");
    }
    void countsAreSaidInTheSingularAndThePlural()
    {
        QFETCH(int, files);
        QFETCH(int, folders);
        QFETCH(QString, line);
        Findings findings;
        findings.files = files;
        findings.folders = folders;

        QCOMPARE(findings.text(4, false),
                 line + QStringLiteral("Method:  3-Pass DoD 5220.22-M (E)\n"));
    }

    void plainFilesNeedNoCaution()
    {
        QCOMPARE(plainFindings().text(1, false), plain);
        QCOMPARE(plainFindings().text(1, true), plain);
    }

    void linksAreSaidWithWhatBecomesOfTheirTargets_data()
    {
        QTest::addColumn<int>("links");
        QTest::addColumn<bool>("leavesTargets");
        QTest::addColumn<QString>("line");
        QTest::newRow("one, overwritten")
            << 1 << false
            << QStringLiteral(
                   "Caution: 1 symbolic link; the files they point to will be overwritten\n");
        QTest::newRow("two, overwritten")
            << 2 << false
            << QStringLiteral(
                   "Caution: 2 symbolic links; the files they point to will be overwritten\n");
        QTest::newRow("two, left alone")
            << 2 << true
            << QStringLiteral(
                   "Caution: 2 symbolic links; the files they point to will be left alone\n");
    }
    void linksAreSaidWithWhatBecomesOfTheirTargets()
    {
        QFETCH(int, links);
        QFETCH(bool, leavesTargets);
        QFETCH(QString, line);
        Findings findings = plainFindings();
        findings.links = links;

        QCOMPARE(findings.text(1, leavesTargets), plain + line);
    }

    void otherNamesAreSaid()
    {
        Findings findings = plainFindings();
        findings.hardLinks = 1;
        QCOMPARE(findings.text(1, false),
                 plain + QStringLiteral("Caution: 1 file has other names (hard links); what the "
                                        "other names hold is overwritten with them\n"));
        findings.hardLinks = 2;
        QCOMPARE(findings.text(1, false),
                 plain + QStringLiteral("Caution: 2 files have other names (hard links); what the "
                                        "other names hold is overwritten with them\n"));
    }

    void fileSystemsThatWriteNewBlocksAreSaid()
    {
        Findings findings = plainFindings();
        findings.copyOnWrite = 1;
        QCOMPARE(findings.text(1, false),
                 plain +
                     QStringLiteral("Caution: 1 file is on a file system that writes new blocks "
                                    "instead of the old ones; overwriting does not reach the old "
                                    "data\n"));
        findings.copyOnWrite = 2;
        QVERIFY(findings.text(1, false).contains(QStringLiteral("Caution: 2 files are on a file")));
    }

    void theQuestionNamesFilesOrWhereThereAreNoneFolders_data()
    {
        QTest::addColumn<int>("files");
        QTest::addColumn<int>("folders");
        QTest::addColumn<QString>("question");
        QTest::newRow("one file") << 1 << 0 << QStringLiteral("Erase 1 file? [y/N] ");
        QTest::newRow("files and folders") << 2 << 5 << QStringLiteral("Erase 2 files? [y/N] ");
        QTest::newRow("one folder") << 0 << 1 << QStringLiteral("Erase 1 folder? [y/N] ");
        QTest::newRow("folders") << 0 << 2 << QStringLiteral("Erase 2 folders? [y/N] ");
    }
    void theQuestionNamesFilesOrWhereThereAreNoneFolders()
    {
        QFETCH(int, files);
        QFETCH(int, folders);
        QFETCH(QString, question);
        Findings findings;
        findings.files = files;
        findings.folders = folders;

        QCOMPARE(findings.question(), question);
    }
};

QTEST_GUILESS_MAIN(FindingsTest)
#include "FindingsTest.moc"
