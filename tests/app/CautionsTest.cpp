#include "app/Cautions.h"

#include <QSet>
#include <QTest>

using FileSystemKind::CopyOnWrite;

Q_DECLARE_METATYPE(CautionCount)

namespace {

CautionCount of(std::int64_t links, std::int64_t hardLinks = 0)
{
    CautionCount count;
    count.links = links;
    count.hardLinks = hardLinks;
    return count;
}

CautionCount on(std::initializer_list<CopyOnWrite> kinds)
{
    CautionCount count;
    for (const CopyOnWrite kind : kinds) {
        ScanFacts facts;
        facts.copyOnWrite = kind;
        count.add(facts);
    }
    return count;
}

QStringList texts(const CautionTexts &cautions)
{
    QStringList texts;
    for (const Caution &caution : cautions)
        texts.append(caution.text);
    return texts;
}

QStringList kinds(const CautionTexts &cautions)
{
    QStringList kinds;
    for (const Caution &caution : cautions)
        kinds.append(caution.kind);
    return kinds;
}

QStringList list(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromLatin1(text));
    return list;
}

} // namespace

class CautionsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void eachFactHasItsSentence_data();
    void eachFactHasItsSentence();
    void theGravestComesFirst();
    void theNumberDoesNotMakeAnotherKind();
    void aFileCountsForEachOfItsFacts();
};

void CautionsTest::eachFactHasItsSentence_data()
{
    QTest::addColumn<CautionCount>("count");
    QTest::addColumn<bool>("skipLinkTargets");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("plain files") << on({CopyOnWrite::None, CopyOnWrite::None}) << false
                                 << QStringList();
    QTest::newRow("a link") << of(1) << false
                            << list({"1 symbolic link: the file it points to will be overwritten"});
    QTest::newRow("links") << of(2) << false
                           << list({"2 symbolic links: the files they point to will be "
                                    "overwritten"});
    QTest::newRow("a link whose target is left alone")
        << of(1) << true << list({"1 symbolic link will be removed; the file it points to stays"});
    QTest::newRow("links whose targets are left alone")
        << of(2) << true
        << list({"2 symbolic links will be removed; the files they point to stay"});
    QTest::newRow("very many links") << of(1'000'000) << true
                                     << list({"1,000,000 symbolic links will be removed; the files "
                                              "they point to stay"});
    QTest::newRow("a hard link")
        << of(0, 1) << true
        << list({"1 file has other names (hard links), which will show the overwritten data"});
    QTest::newRow("hard links")
        << of(0, 3) << false
        << list({"3 files have other names (hard links), which will show the overwritten data"});
    QTest::newRow("btrfs") << on({CopyOnWrite::Btrfs, CopyOnWrite::Btrfs}) << false
                           << list({"btrfs: overwriting in place may leave old copies"});
    QTest::newRow("two file systems")
        << on({CopyOnWrite::Overlayfs, CopyOnWrite::Zfs}) << true
        << list({"zfs: overwriting in place may leave old copies",
                 "overlayfs: overwriting in place may leave old copies"});
}

void CautionsTest::eachFactHasItsSentence()
{
    QFETCH(CautionCount, count);
    QFETCH(bool, skipLinkTargets);
    QTEST(texts(Cautions::texts(count, skipLinkTargets)), "texts");
}

void CautionsTest::theGravestComesFirst()
{
    CautionCount count = on({CopyOnWrite::Btrfs});
    count.links = 2;
    count.hardLinks = 3;
    QCOMPARE(texts(Cautions::texts(count, false)),
             list({"2 symbolic links: the files they point to will be overwritten",
                   "3 files have other names (hard links), which will show the overwritten data",
                   "btrfs: overwriting in place may leave old copies"}));
}

void CautionsTest::theNumberDoesNotMakeAnotherKind()
{
    CautionCount count = on({CopyOnWrite::Btrfs, CopyOnWrite::Zfs});
    count.links = 1;
    count.hardLinks = 1;
    CautionCount more = count;
    more.links = 20'000;
    more.hardLinks = 3;
    const QStringList kinds = ::kinds(Cautions::texts(count, false));
    QCOMPARE(::kinds(Cautions::texts(more, true)), kinds);
    QCOMPARE(QSet<QString>(kinds.begin(), kinds.end()).size(), 4);
}

void CautionsTest::aFileCountsForEachOfItsFacts()
{
    ScanFacts facts;
    facts.isLink = true;
    facts.copyOnWrite = CopyOnWrite::F2fs;
    CautionCount count;
    count.add(facts);
    facts = {};
    facts.hasOtherNames = true;
    count.add(facts);

    QCOMPARE(count.links, 1);
    QCOMPARE(count.hardLinks, 1);
    QCOMPARE(count.byFileSystem.at(std::size_t(CopyOnWrite::F2fs)), 1);
    QCOMPARE(count.copyOnWrite(), 1);
}

QTEST_APPLESS_MAIN(CautionsTest)
#include "CautionsTest.moc"
