#include "ui/Appearance.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr QLatin1String identifierKey("appearance");

} // namespace

QByteArray Appearance::archived(const QString &identifier)
{
    return QJsonDocument(QJsonObject{{identifierKey, identifier}}).toJson(QJsonDocument::Compact);
}

QString Appearance::unarchived(const QByteArray &bytes)
{
    const QJsonValue value = QJsonDocument::fromJson(bytes).object().value(identifierKey);
    return value.isString() ? value.toString() : QString();
}
