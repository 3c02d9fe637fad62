#include "ui/TableHead.h"

#include "PaintedWidget.h"
#include "ThemedPreferences.h"
#include "ui/Typography.h"

#include <QFontMetrics>
#include <QStandardItemModel>
#include <QTest>

namespace {

constexpr QSize tableSize(400, 200);

/// The head of an error log with these titles.
QImage painted(const QString &name, const QString &last)
{
    QStandardItemModel model;
    model.setHorizontalHeaderLabels({name, QStringLiteral("Folder"), last});
    QWidget table;
    table.resize(tableSize);
    TableHead head(TableKind::ErrorLog, &table);
    head.setModel(&model);
    head.resize(tableSize.width(), head.sizeHint().height());
    return PaintedWidget::of(head, Qt::white);
}

QString elided(const QString &title, int width)
{
    return QFontMetrics(Typography::font(TextStyle::SmallMedium))
        .elidedText(title, Qt::ElideRight, width);
}

} // namespace

class TableHeadTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { PaintedWidget::useFontOf(13); }

    void aLongTitleIsElidedAtItsEnd();

  private:
    ThemedPreferences preferences_;
};

void TableHeadTest::aLongTitleIsElidedAtItsEnd()
{
    const QString title(100, QLatin1Char('W'));
    const TableLayout::Columns columns =
        TableLayout::columns(TableKind::ErrorLog, tableSize.width(), 1);
    const QString shortened = elided(title, columns.name.width);
    QVERIFY(shortened.endsWith(QChar(0x2026)) && shortened.startsWith(QLatin1String("WW")));
    const QString end = QStringLiteral("Error");
    QCOMPARE(painted(title, end), painted(shortened, end));
    // The last column's as well.
    QCOMPARE(painted(end, title), painted(end, elided(title, columns.last.width)));
}

QTEST_MAIN(TableHeadTest)
#include "TableHeadTest.moc"
