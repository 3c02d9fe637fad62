#include "ui/ImageView.h"

#include "ui/DropDrawing.h"
#include "ui/FileDrop.h"
#include "ui/Typography.h"

#include <QDragEnterEvent>
#include <QPainter>

ImageView::ImageView(QWidget *parent) : QWidget(parent)
{
    awakeFromNib();
}

void ImageView::awakeFromNib()
{
    setAcceptDrops(true);
}

Qt::DropAction ImageView::draggingEntered(const QMimeData *) const
{
    return Qt::CopyAction;
}

Qt::DropAction ImageView::draggingUpdated(const QMimeData *) const
{
    return Qt::CopyAction;
}

bool ImageView::performDragOperation(const QMimeData *dragged)
{
    return FileDrop::perform(dragged);
}

void ImageView::setSpread(double spread)
{
    spread_ = spread;
    update();
}

QSize ImageView::sizeHint() const
{
    const QSizeF size = DropDrawing::size();
    return {Typography::scaled(size.width()), Typography::scaled(size.height())};
}

void ImageView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    DropDrawing::paint(painter, QRectF(rect()), spread_);
}

void ImageView::dragEnterEvent(QDragEnterEvent *event)
{
    const int items = FileDrop::count(event->mimeData());
    if (items == 0) {
        event->ignore();
        return;
    }
    FileDrop::accept(event, draggingEntered(event->mimeData()));
    if (event->isAccepted())
        Q_EMIT dragStateChanged(items);
}

void ImageView::dragMoveEvent(QDragMoveEvent *event)
{
    FileDrop::accept(event, draggingUpdated(event->mimeData()));
}

void ImageView::dragLeaveEvent(QDragLeaveEvent *)
{
    Q_EMIT dragStateChanged(-1);
}

void ImageView::dropEvent(QDropEvent *event)
{
    FileDrop::accept(event, draggingUpdated(event->mimeData()));
    if (event->isAccepted())
        performDragOperation(event->mimeData());
    Q_EMIT dragStateChanged(-1);
}
