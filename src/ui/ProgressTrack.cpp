#include "ui/ProgressTrack.h"

#include "ui/DesignColors.h"
#include "ui/HorizonProgressIndicator.h"

#include <QPainter>

ProgressTrack::ProgressTrack(QWidget *parent)
    : QWidget(parent), indicator_(new HorizonProgressIndicator(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize ProgressTrack::sizeHint() const
{
    return indicator_->sizeHint();
}

void ProgressTrack::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), DesignColors::color(ColorRole::Track));
}

void ProgressTrack::resizeEvent(QResizeEvent *)
{
    indicator_->setGeometry(rect());
}
