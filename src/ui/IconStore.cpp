#include "ui/IconStore.h"

#include "ui/PictureIcon.h"
#include "ui/Pictures.h"

#include <QMimeDatabase>

const IconStore &IconStore::shared()
{
    static const IconStore store;
    return store;
}

QIcon IconStore::icon(const QString &name)
{
    return QIcon(new PictureIcon(name));
}

QVariant IconStore::imageNamed(const QString &name) const
{
    return Pictures::exists(name) ? QVariant::fromValue(icon(name)) : QVariant();
}

QVariant IconStore::iconForExtension(const QString &extension) const
{
    if (const QIcon *known = byExtension_.object(extension))
        return QVariant::fromValue(*known);
    const QIcon found = desktopIcon(extension);
    byExtension_.insert(extension, new QIcon(found));
    return QVariant::fromValue(found);
}

QIcon IconStore::desktopIcon(const QString &extension) const
{
    if (extension.isEmpty())
        return document_;
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QStringLiteral("a.") + extension,
                                                           QMimeDatabase::MatchExtension);
    const QIcon own = QIcon::fromTheme(type.iconName());
    return own.isNull() ? QIcon::fromTheme(type.genericIconName(), document_) : own;
}
