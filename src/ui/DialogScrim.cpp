#include "ui/DialogScrim.h"

#include "ui/DesignColors.h"
#include "ui/FramelessWindow.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

DialogScrim::DialogScrim(QWidget *window) : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    window->installEventFilter(this);
    setGeometry(window->rect());
    raise();
    show();
}

bool DialogScrim::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void DialogScrim::paintEvent(QPaintEvent *)
{
    const auto *window = qobject_cast<FramelessWindow *>(parentWidget());
    const int radius = window ? window->cornerRadius() : 0;
    QPainterPath path;
    path.addRoundedRect(rect(), radius, radius);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, DesignColors::color(ColorRole::Scrim));
}
