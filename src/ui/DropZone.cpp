#include "ui/DropZone.h"

#include "ui/DesignColors.h"
#include "ui/Typography.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double radius = 11;
constexpr double dashWidth = 1.5;
constexpr double dashLength = 6;
constexpr double frameWidth = 2;

/// Begins behind the upper left corner and goes round with the clock, so that the dashes do.
QPainterPath outline(const QRectF &rect, double cornerRadius)
{
    const double side = 2 * cornerRadius;
    QPainterPath path(QPointF(rect.left() + cornerRadius, rect.top()));
    path.arcTo(QRectF(rect.right() - side, rect.top(), side, side), 90, -90);
    path.arcTo(QRectF(rect.right() - side, rect.bottom() - side, side, side), 0, -90);
    path.arcTo(QRectF(rect.left(), rect.bottom() - side, side, side), -90, -90);
    path.arcTo(QRectF(rect.left(), rect.top(), side, side), 180, -90);
    path.closeSubpath();
    return path;
}

QPen dashes()
{
    QPen pen(DesignColors::color(ColorRole::DropDash), dashWidth);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({dashLength / dashWidth, dashLength / dashWidth});
    return pen;
}

} // namespace

DropZone::DropZone(QWidget *parent) : QWidget(parent)
{
}

void DropZone::setDrag(double drag)
{
    drag_ = drag;
    update();
}

void DropZone::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = frameWidth / 2;
    const QPainterPath path =
        outline(QRectF(rect()).adjusted(inset, inset, -inset, -inset), Typography::scaled(radius));
    painter.setOpacity(1 - drag_);
    painter.fillPath(path, DesignColors::color(ColorRole::DropBackground));
    painter.strokePath(path, dashes());
    painter.setOpacity(drag_);
    painter.fillPath(path, DesignColors::color(ColorRole::Tint));
    painter.strokePath(path, QPen(DesignColors::color(ColorRole::Focus), frameWidth));
}
