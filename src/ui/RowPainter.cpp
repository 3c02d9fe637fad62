#include "ui/RowPainter.h"

#include "support/ExtensionImage.h"
#include "support/ImageSource.h"
#include "support/StatusToImage.h"
#include "ui/DesignColors.h"
#include "ui/MiddleElision.h"
#include "ui/Pictures.h"
#include "ui/RowTexts.h"
#include "ui/TableRole.h"
#include "ui/Typography.h"

#include <QIcon>
#include <QPainter>

namespace {

constexpr double progressHeight = 3;

QRect middle(TableLayout::Span span, const QRect &row)
{
    return {span.x, row.top() + (row.height() - span.width) / 2, span.width, span.width};
}

TextStyle styleOf(const QModelIndex &row, bool isName)
{
    return isName && RowPainter::isInWork(row) ? TextStyle::BodyStrong : TextStyle::Body;
}

ColorRole colorOf(bool isFolder, RowPainter::Selection selection)
{
    if (selection == RowPainter::Selection::Active)
        return ColorRole::TextOnSelection;
    if (selection == RowPainter::Selection::Inactive)
        return ColorRole::TextOnInactiveSelection;
    return isFolder ? ColorRole::TextSecondary : ColorRole::Text;
}

} // namespace

bool RowPainter::isInWork(const QModelIndex &row)
{
    return row.data(TableRole::IsInWork).toBool();
}

void RowPainter::paintGround(QPainter &painter, const QModelIndex &row, const QRect &rect) const
{
    if (!isInWork(row))
        return;
    painter.fillRect(rect, DesignColors::color(ColorRole::TintRow));
    paintProgress(painter, row, rect);
}

void RowPainter::paintProgress(QPainter &painter, const QModelIndex &row, const QRect &rect) const
{
    if (!isInWork(row))
        return;
    const int height = Typography::scaled(progressHeight);
    const QRectF track(rect.left(), rect.bottom() + 1 - height, rect.width(), height);
    QRectF bar = track;
    bar.setWidth(track.width() * row.data(TableRole::Progress).toDouble());
    painter.fillRect(track, DesignColors::color(ColorRole::Track));
    painter.fillRect(bar, DesignColors::color(ColorRole::Blue));
}

void RowPainter::paintContents(QPainter &painter, const QModelIndex &row, const QRect &rect,
                               Selection selection) const
{
    paintIcons(painter, row, rect);
    for (const Cell cell : {Name, Folder, Last})
        paintText(painter, row, cell, rect, selection);
}

void RowPainter::paintIcons(QPainter &painter, const QModelIndex &row, const QRect &rect) const
{
    const TableLayout::Columns columns =
        TableLayout::columns(kind_, rect.width(), Typography::factor());
    const QVariant type = ExtensionImage(*images_).transformedValue(row.data(TableRole::FileName));
    type.value<QIcon>().paint(&painter, middle(columns.typeIcon, rect));
    if (columns.statusIcon.width > 0)
        paintStatus(painter, row, middle(columns.statusIcon, rect));
}

void RowPainter::paintStatus(QPainter &painter, const QModelIndex &row, const QRect &rect) const
{
    const QVariant icon = StatusToImage(*images_).transformedValue(row.data(TableRole::Status));
    if (icon.isValid())
        icon.value<QIcon>().paint(&painter, rect);
    else if (isInWork(row))
        Pictures::paint(painter, QStringLiteral("row_in_work"), rect);
}

QString RowPainter::text(const QModelIndex &row, Cell cell) const
{
    const int first = kind_ == TableKind::ErrorLog ? 0 : 1; // after the status
    return row.siblingAtColumn(first + int(cell)).data().toString();
}

TableLayout::Span RowPainter::span(Cell cell, int width) const
{
    const TableLayout::Columns columns = TableLayout::columns(kind_, width, Typography::factor());
    return cell == Name ? columns.name : cell == Folder ? columns.folder : columns.last;
}

void RowPainter::paintText(QPainter &painter, const QModelIndex &row, Cell cell, const QRect &rect,
                           Selection selection) const
{
    const TableLayout::Span place = span(cell, rect.width());
    const QFont font = Typography::font(styleOf(row, cell == Name));
    const bool isError = cell == Last && kind_ == TableKind::ErrorLog;
    const QFontMetrics metrics(font);
    const QString whole = text(row, cell);
    const QString shown = isError ? metrics.elidedText(whole, Qt::ElideRight, place.width)
                                  : MiddleElision::elided(whole, metrics, place.width);
    const bool isRight = cell == Last && kind_ != TableKind::ErrorLog;
    painter.setFont(font);
    painter.setPen(DesignColors::color(colorOf(cell == Folder, selection)));
    painter.drawText(QRect(place.x, rect.top(), place.width, rect.height()),
                     int((isRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter) |
                         Qt::TextSingleLine,
                     RowTexts::isolated(shown));
}

QString RowPainter::elidedText(const QModelIndex &row, int x, int width) const
{
    for (const Cell cell : {Name, Folder, Last}) {
        const TableLayout::Span place = span(cell, width);
        if (x < place.x || x >= place.end())
            continue;
        const QFontMetrics metrics(Typography::font(styleOf(row, cell == Name)));
        const QString whole = text(row, cell);
        return metrics.horizontalAdvance(whole) > place.width ? whole : QString();
    }
    return {};
}
