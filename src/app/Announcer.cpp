#include "app/Announcer.h"

#include <QAccessible>

Announcer::Announcer(QWidget *window) : QWidget(window)
{
    setFixedSize(0, 0);
    setFocusPolicy(Qt::NoFocus);
}

void Announcer::announce(const QString &text)
{
    if (text.isEmpty())
        return;
    setAccessibleName(text);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    Q_EMIT announced(text);
}
