#include "ui/PopupCard.h"

#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr double cardRadius = 8;

} // namespace

PopupCard::PopupCard(QWidget *opener) : QWidget(opener->window()), opener_(opener)
{
    hide();
    connect(opener, &QObject::destroyed, this, &QObject::deleteLater);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *now) {
        const bool isInside = now && (now == this || isAncestorOf(now));
        if (isOpen() && !isInside)
            close();
    });
}

QRect PopupCard::keptInside(const QRect &wanted, const QRect &bounds)
{
    const QSize size = wanted.size().boundedTo(bounds.size());
    const int x = std::clamp(wanted.x(), bounds.x(), bounds.x() + bounds.width() - size.width());
    const int y = std::clamp(wanted.y(), bounds.y(), bounds.y() + bounds.height() - size.height());
    return {QPoint(x, y), size};
}

void PopupCard::openAt(const QRect &wanted, QWidget *focus)
{
    if (!opener_ || isOpen())
        return;
    QWidget *window = opener_->window();
    setParent(window);
    setGeometry(window->rect());
    constexpr int margin = 8;
    cardRect_ = keptInside(wanted, rect().adjusted(margin, margin, -margin, -margin));
    cardPlaced(cardRect_);
    window->installEventFilter(this);
    raise();
    show();
    focus->setFocus(Qt::PopupFocusReason);
    Q_EMIT opened();
}

void PopupCard::close()
{
    if (!isOpen())
        return;
    const QWidget *focused = window()->focusWidget();
    const bool isFocusMine = focused && (focused == this || isAncestorOf(focused));
    window()->removeEventFilter(this);
    if (isFocusMine && opener_)
        opener_->setFocus(Qt::PopupFocusReason);
    hide();
    Q_EMIT closed();
}

void PopupCard::prepareList(QListView *view)
{
    view->setFrameShape(QFrame::NoFrame);
    view->setUniformItemSizes(true);
    view->setMouseTracking(true);
    view->setSelectionMode(QAbstractItemView::NoSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->viewport()->setAutoFillBackground(false);
    view->installEventFilter(this);
    FocusRing::setNone(view);
    connect(view, &QListView::entered, view, &QListView::setCurrentIndex);
}

bool PopupCard::event(QEvent *event)
{
    // Qt asks the focused widget first, and then what it lies in.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

bool PopupCard::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        close();
    return QWidget::eventFilter(watched, event);
}

void PopupCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    ControlPaint::menuShadow(painter, cardRect_);
    ControlPaint::box(painter, cardRect_, DesignColors::color(ColorRole::Menu),
                      DesignColors::color(ColorRole::Edge), cardRadius);
}

void PopupCard::mousePressEvent(QMouseEvent *event)
{
    if (!cardRect_.contains(event->pos()))
        close();
}

void PopupCard::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        event->ignore();
}

void PopupCard::wheelEvent(QWheelEvent *event)
{
    // What lies below must not scroll away under the card.
    event->accept();
}
