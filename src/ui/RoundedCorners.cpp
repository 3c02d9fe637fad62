#include "ui/RoundedCorners.h"

#include <QPainter>

namespace {

constexpr double edgeWidth = 1;
constexpr QColor edgeColor(0, 0, 0, 51);

} // namespace

RoundedCorners::RoundedCorners(int radius, QObject *parent)
    : QGraphicsEffect(parent), radius_(radius)
{
}

void RoundedCorners::draw(QPainter *painter)
{
    QPoint offset;
    const QPixmap content = sourcePixmap(Qt::LogicalCoordinates, &offset, NoPad);
    const QRectF bounds(offset, content.deviceIndependentSize());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(content);
    painter->setBrushOrigin(offset);
    painter->drawRoundedRect(bounds, radius_, radius_);
    const double inset = edgeWidth / 2;
    painter->setPen(QPen(edgeColor, edgeWidth));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), radius_ - inset,
                             radius_ - inset);
    painter->restore();
}
