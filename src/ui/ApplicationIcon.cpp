#include "ui/ApplicationIcon.h"

#include "ui/Pictures.h"

namespace {

constexpr int largestSimpleOne = 32;

} // namespace

QString ApplicationIcon::pictureName(int pixels)
{
    return pixels <= largestSimpleOne ? QStringLiteral("application_icon_small")
                                      : QStringLiteral("application_icon");
}

QIcon ApplicationIcon::icon()
{
    QIcon icon;
    for (const int pixels : {16, 22, 24, 32, 48, 64, 128, 256, 512})
        icon.addPixmap(Pictures::pixmap(pictureName(pixels), QSize(pixels, pixels), 1));
    return icon;
}
