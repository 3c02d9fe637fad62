#include "support/MainStatusToImage.h"

#include "support/ImageSource.h"

namespace {

constexpr std::int64_t done = 4;
constexpr std::int64_t busy = 6;

} // namespace

MainStatusToImage::MainStatusToImage(const ImageSource &images) : images_(images)
{
}

QVariant MainStatusToImage::transformedValue(const QVariant &value) const
{
    return images_.imageNamed(imageName(value.toLongLong()));
}

QString MainStatusToImage::imageName(std::int64_t runStatus)
{
    switch (runStatus) {
    case busy:
        return QStringLiteral("icon_status_busy");
    case done:
        return QStringLiteral("icon_status_done");
    default:
        return QStringLiteral("icon_status_inactive");
    }
}
