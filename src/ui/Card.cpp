#include "ui/Card.h"

#include "ui/ControlPaint.h"

#include <QPainter>

void Card::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    ControlPaint::box(painter, rect(), DesignColors::color(ColorRole::Surface),
                      DesignColors::color(ColorRole::Edge), cornerRadius);
}
