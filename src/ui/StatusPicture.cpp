#include "ui/StatusPicture.h"

#include "support/MainStatusToImage.h"
#include "ui/Pictures.h"

#include <QPainter>
#include <QPainterPath>

namespace {

/// The disc that the badge stands on ends this far from the badge's own edge.
constexpr double discInset = 1.0 / 32;

/// What is left of the picture beside the badge's disc.
QPainterPath beside(const QRectF &picture, const QRectF &badge)
{
    const double inset = badge.width() * discInset;
    QPainterPath all;
    all.addRect(picture);
    QPainterPath disc;
    disc.addEllipse(badge.adjusted(inset, inset, -inset, -inset));
    return all.subtracted(disc);
}

} // namespace

StatusPicture::StatusPicture(QWidget *parent) : QWidget(parent)
{
}

void StatusPicture::setRunStatus(std::int64_t runStatus)
{
    if (runStatus_ == runStatus)
        return;
    runStatus_ = runStatus;
    update();
}

void StatusPicture::setBadge(const QRect &picture, const QRect &badge)
{
    picture_ = picture;
    badge_ = badge;
    update();
}

void StatusPicture::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QString name = MainStatusToImage::imageName(runStatus_);
    if (!hasBadge()) {
        Pictures::paint(painter, name, QRectF(rect()));
        return;
    }
    painter.save();
    painter.setClipPath(beside(picture_, badge_));
    Pictures::paint(painter, name, picture_);
    painter.restore();
    Pictures::paint(painter, QStringLiteral("attention_badge"), badge_);
}
