#include "ui/PictureIcon.h"

#include "ui/Pictures.h"

void PictureIcon::paint(QPainter *painter, const QRect &rect, QIcon::Mode, QIcon::State)
{
    Pictures::paint(*painter, name_, QRectF(rect));
}

QPixmap PictureIcon::pixmap(const QSize &size, QIcon::Mode, QIcon::State)
{
    return Pictures::pixmap(name_, size, 1);
}

QIconEngine *PictureIcon::clone() const
{
    return new PictureIcon(name_);
}

bool PictureIcon::isNull()
{
    return !Pictures::exists(name_);
}

QString PictureIcon::iconName()
{
    return name_;
}
