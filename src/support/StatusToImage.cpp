#include "support/StatusToImage.h"

#include "support/ImageSource.h"

namespace {

constexpr std::int64_t pending = 0;
constexpr std::int64_t wiped = 1;

} // namespace

StatusToImage::StatusToImage(const ImageSource &images) : images_(images)
{
}

QVariant StatusToImage::transformedValue(const QVariant &value) const
{
    const QString name = imageName(value.toLongLong());
    return name.isNull() ? QVariant() : images_.imageNamed(name);
}

QString StatusToImage::imageName(std::int64_t status)
{
    switch (status) {
    case pending:
        return QString();
    case wiped:
        return QStringLiteral("img_status_ok");
    default:
        return QStringLiteral("img_status_nok");
    }
}
