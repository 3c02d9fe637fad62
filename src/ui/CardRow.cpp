#include "ui/CardRow.h"

#include "ui/ControlPaint.h"
#include "ui/Pictures.h"
#include "ui/Typography.h"

#include <QListView>
#include <QPainter>

namespace {

constexpr int symbolSide = 16;

} // namespace

void CardRow::paint(QPainter *painter, const QStyleOptionViewItem &option,
                    const QModelIndex &index) const
{
    const auto *view = qobject_cast<const QListView *>(option.widget);
    if (view && view->currentIndex() == index)
        ControlPaint::fill(*painter, option.rect, DesignColors::color(ColorRole::GhostHover));
    paintContents(*painter, option.rect, index);
}

QSize CardRow::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return {0, Typography::scaled(rowHeight)};
}

void CardRow::paintSymbol(QPainter &painter, const QString &name, const QRect &row, int left,
                          const QColor &color)
{
    const int side = Typography::scaled(symbolSide);
    Pictures::paint(painter, name, QRectF(left, row.top() + (row.height() - side) / 2, side, side),
                    color);
}

void CardRow::paintText(QPainter &painter, const QRect &place, const QString &text, bool isStrong)
{
    painter.setFont(Typography::font(isStrong ? TextStyle::BodyStrong : TextStyle::Body));
    painter.setPen(DesignColors::color(ColorRole::Text));
    painter.drawText(place, int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}
