#include "ui/ReturnKey.h"

#include <QAbstractButton>
#include <QKeyEvent>

bool ReturnKey::isAlone(const QKeyEvent &event)
{
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return isReturn && (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

bool ReturnKey::clicks(QAbstractButton &button, const QKeyEvent &event)
{
    if (!isAlone(event))
        return false;
    if (!event.isAutoRepeat())
        button.click();
    return true;
}
