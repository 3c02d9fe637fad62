#include "support/ExtensionImage.h"

#include "support/ImageSource.h"

#include <QStringView>

namespace {

QStringView lastComponent(QStringView path)
{
    while (path.endsWith(u'/'))
        path.chop(1);
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

} // namespace

ExtensionImage::ExtensionImage(const ImageSource &images) : images_(images)
{
}

QVariant ExtensionImage::transformedValue(const QVariant &value) const
{
    if (value.isNull())
        return QVariant();
    return getIconForFileExtension(lowerCaseExtension(value.toString()));
}

QVariant ExtensionImage::getIconForFileExtension(const QString &extension) const
{
    return images_.iconForExtension(extension);
}

QString ExtensionImage::lowerCaseExtension(const QString &path)
{
    const QStringView name = lastComponent(path);
    const qsizetype fullStop = name.lastIndexOf(u'.');
    return fullStop > 0 ? name.sliced(fullStop + 1).toString().toLower() : QString();
}
