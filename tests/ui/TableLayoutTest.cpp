#include "ui/TableLayout.h"

#include <QTest>

using TableLayout::Columns;
using TableLayout::Span;

Q_DECLARE_METATYPE(TableKind)

class TableLayoutTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void theReadyTableStandsAsDesigned();
    void theErasingTableStandsAsDesigned();
    void theErrorLogStandsAsDesigned();
    void extraWidthGoesToNameAndFolder_data();
    void extraWidthGoesToNameAndFolder();
    void aNarrowTableKeepsItsSizes();
    void anExtremelyNarrowTableHasNoNegativeWidth();
    void everythingGrowsWithTheType();
    void sectionsFillTheWidth_data();
    void sectionsFillTheWidth();
    void theRowIsTheFifthVisibleOne_data();
    void theRowIsTheFifthVisibleOne();
};

void TableLayoutTest::theReadyTableStandsAsDesigned()
{
    const Columns columns = TableLayout::columns(TableKind::Ready, 656, 1);
    QCOMPARE(columns.statusIcon.width, 0);
    QCOMPARE(columns.typeIcon, (Span{16, 16}));
    QCOMPARE(columns.name, (Span{40, 280}));
    QCOMPARE(columns.folder, (Span{336, 190}));
    QCOMPARE(columns.last.end(), 632);
    QVERIFY(columns.isLastRightAligned);
}

void TableLayoutTest::theErasingTableStandsAsDesigned()
{
    const Columns columns = TableLayout::columns(TableKind::Erasing, 656, 1);
    QCOMPARE(columns.statusIcon, (Span{12, 16}));
    QCOMPARE(columns.typeIcon, (Span{40, 16}));
    QCOMPARE(columns.name, (Span{64, 272}));
    QCOMPARE(columns.folder, (Span{352, 174}));
    QCOMPARE(columns.last.end(), 632);
    QVERIFY(columns.isLastRightAligned);
}

void TableLayoutTest::theErrorLogStandsAsDesigned()
{
    const Columns columns = TableLayout::columns(TableKind::ErrorLog, 688, 1);
    QCOMPARE(columns.statusIcon.width, 0);
    QCOMPARE(columns.typeIcon, (Span{16, 16}));
    QCOMPARE(columns.name, (Span{40, 216}));
    QCOMPARE(columns.folder, (Span{272, 200}));
    QCOMPARE(columns.last, (Span{488, 184}));
    QVERIFY(!columns.isLastRightAligned);
}

void TableLayoutTest::extraWidthGoesToNameAndFolder_data()
{
    QTest::addColumn<int>("extra");
    QTest::addColumn<int>("name");
    QTest::addColumn<int>("folder");
    QTest::newRow("none") << 0 << 280 << 190;
    QTest::newRow("100") << 100 << 340 << 230;
    QTest::newRow("one") << 1 << 281 << 190;
    QTest::newRow("less: the smallest view") << -80 << 232 << 158;
}

void TableLayoutTest::extraWidthGoesToNameAndFolder()
{
    QFETCH(int, extra);
    QFETCH(int, name);
    QFETCH(int, folder);
    const Columns columns = TableLayout::columns(TableKind::Ready, 656 + extra, 1);
    QCOMPARE(columns.name, (Span{40, name}));
    QCOMPARE(columns.folder, (Span{columns.name.end() + 16, folder}));
    QCOMPARE(columns.last.x - columns.folder.end(), 10);
    QCOMPARE(columns.last.end(), 632 + extra);
}

void TableLayoutTest::aNarrowTableKeepsItsSizes()
{
    const Columns wide = TableLayout::columns(TableKind::Erasing, 656, 1);
    const Columns narrow = TableLayout::columns(TableKind::Erasing, 576, 1);
    QCOMPARE(narrow.last.width, wide.last.width);
    QCOMPARE(narrow.typeIcon, wide.typeIcon);
}

void TableLayoutTest::anExtremelyNarrowTableHasNoNegativeWidth()
{
    const Columns columns = TableLayout::columns(TableKind::Ready, 0, 1);
    QCOMPARE(columns.name.width, 0);
    QCOMPARE(columns.folder.width, 0);
}

void TableLayoutTest::everythingGrowsWithTheType()
{
    const Columns columns = TableLayout::columns(TableKind::Ready, 984, 1.5);
    QCOMPARE(columns.typeIcon, (Span{24, 24}));
    QCOMPARE(columns.name, (Span{60, 420}));
    QCOMPARE(columns.folder, (Span{504, 285}));
    QCOMPARE(columns.last.end(), 948);
}

void TableLayoutTest::sectionsFillTheWidth_data()
{
    QTest::addColumn<TableKind>("kind");
    QTest::addColumn<int>("count");
    QTest::newRow("ready") << TableKind::Ready << 4;
    QTest::newRow("erasing") << TableKind::Erasing << 4;
    QTest::newRow("error log") << TableKind::ErrorLog << 3;
}

void TableLayoutTest::sectionsFillTheWidth()
{
    QFETCH(TableKind, kind);
    constexpr int width = 777;
    const Columns columns = TableLayout::columns(kind, width, 1);
    const TableLayout::Sections sections = TableLayout::sections(kind, columns, width);
    QTEST(sections.count, "count");
    int sum = 0;
    for (int section = 0; section < sections.count; ++section) {
        QVERIFY(sections.widths[section] > 0);
        if (section == sections.count - 2)
            QCOMPARE(sum, columns.folder.x);
        sum += sections.widths[section];
    }
    QCOMPARE(sum, width);
}

void TableLayoutTest::theRowIsTheFifthVisibleOne_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("value");
    constexpr int last = 1000 * 28;
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("fifth") << 4 << 0;
    QTest::newRow("sixth") << 5 << 28;
    QTest::newRow("hundredth") << 99 << 95 * 28;
    QTest::newRow("at the end") << 1009 << last;
    QTest::newRow("last that there can be") << std::numeric_limits<int>::max() << last;
}

void TableLayoutTest::theRowIsTheFifthVisibleOne()
{
    QFETCH(int, row);
    QTEST(TableLayout::scrollValueForRow(row, 28, 1000 * 28), "value");
}

QTEST_APPLESS_MAIN(TableLayoutTest)
#include "TableLayoutTest.moc"
