#include "ui/ControlButton.h"

#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"
#include "ui/ReturnKey.h"
#include "ui/Typography.h"

#include <QPainter>

ControlButton::ControlButton(QWidget *parent) : QAbstractButton(parent)
{
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    FocusRing::setRadius(this, ControlPaint::radius);
}

bool ControlButton::isHovered() const
{
    return isEnabled() && (underMouse() || isDown());
}

void ControlButton::paintControl(QPainter &painter) const
{
    QColor ground;
    if (isEnabled())
        ground = DesignColors::color(isDown()      ? ColorRole::ControlPressed
                                     : isHovered() ? ColorRole::ControlHover
                                                   : ColorRole::Control);
    ControlPaint::box(painter, rect(), ground, DesignColors::color(ColorRole::EdgeControl));
    painter.setFont(Typography::font(TextStyle::BodyMedium));
    painter.setPen(DesignColors::color(isEnabled() ? ColorRole::Text : ColorRole::TextDisabled));
}

void ControlButton::keyPressEvent(QKeyEvent *event)
{
    if (!ReturnKey::clicks(*this, *event))
        QAbstractButton::keyPressEvent(event);
}
