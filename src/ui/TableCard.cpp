#include "ui/TableCard.h"

#include "ui/DesignColors.h"
#include "ui/Hairline.h"

#include <QPainter>
#include <QPainterPath>

void TableCard::clip(QPainter &painter, const QSizeF &size)
{
    QPainterPath outline;
    outline.addRoundedRect(QRectF(QPointF(0, 0), size), radius, radius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(outline);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void TableCard::paintEdge(QPainter &painter, const QSizeF &size)
{
    const double width = hairline(painter);
    const double inset = width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(DesignColors::color(ColorRole::Edge), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(QPointF(0, 0), size).adjusted(inset, inset, -inset, -inset),
                            radius - inset, radius - inset);
    painter.setRenderHint(QPainter::Antialiasing, false);
}
