#include "ui/TableHead.h"

#include "ui/ColorProperties.h"
#include "ui/DesignColors.h"
#include "ui/TableCard.h"
#include "ui/Typography.h"

#include <QPainter>

namespace {

constexpr double designHeight = 24;

} // namespace

TableHead::TableHead(TableKind kind, QWidget *table)
    : QHeaderView(Qt::Horizontal, table), kind_(kind)
{
    setSectionResizeMode(QHeaderView::Fixed);
    setSectionsClickable(false);
    setHighlightSections(false);
    setMinimumSectionSize(0);
    setFrameStyle(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
}

void TableHead::layOut(int width)
{
    const TableLayout::Columns columns = TableLayout::columns(kind_, width, Typography::factor());
    const TableLayout::Sections sections = TableLayout::sections(kind_, columns, width);
    for (int section = 0; section < std::min(sections.count, count()); ++section)
        resizeSection(section, sections.widths[section]);
}

QSize TableHead::sizeHint() const
{
    return {0, Typography::scaled(designHeight)};
}

QString TableHead::title(int section) const
{
    return model() ? model()->headerData(section, Qt::Horizontal).toString() : QString();
}

void TableHead::paintTitles(QPainter &painter) const
{
    const TableLayout::Columns columns = TableLayout::columns(kind_, width(), Typography::factor());
    const int first = kind_ == TableKind::ErrorLog ? 0 : 1; // the status has no title
    const QFont font = Typography::font(TextStyle::SmallMedium);
    const QFontMetrics metrics(font);
    const auto paintTitle = [&](int section, TableLayout::Span span, Qt::Alignment alignment) {
        painter.drawText(QRect(span.x, 0, span.width, height()),
                         int(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                         metrics.elidedText(title(section), Qt::ElideRight, span.width));
    };
    painter.setFont(font);
    painter.setPen(DesignColors::color(ColorRole::TextSecondary));
    paintTitle(first, columns.name, Qt::AlignLeft);
    paintTitle(first + 1, columns.folder, Qt::AlignLeft);
    paintTitle(first + 2, columns.last,
               columns.isLastRightAligned ? Qt::AlignRight : Qt::AlignLeft);
}

void TableHead::paintEvent(QPaintEvent *)
{
    QPainter painter(viewport());
    const QSizeF card(parentWidget()->size());
    TableCard::clip(painter, card);
    painter.fillRect(rect(), DesignColors::color(ColorRole::SurfaceHead));
    if (const auto color =
            ColorProperties::current(QStringLiteral("DefaultLine"), QLatin1String("bg")))
        painter.fillRect(QRect(0, height() - 1, width(), 1), *color);
    paintTitles(painter);
    painter.setClipping(false);
    TableCard::paintEdge(painter, card);
}
