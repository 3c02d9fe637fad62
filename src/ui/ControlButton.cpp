#include "ui/ControlButton.h"

#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"

#include <QKeyEvent>

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

void ControlButton::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || event->modifiers() & ~Qt::KeypadModifier) {
        QAbstractButton::keyPressEvent(event);
        return;
    }
    if (!event->isAutoRepeat())
        click();
}
