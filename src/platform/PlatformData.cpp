#include "platform/PlatformData.h"

namespace {

const QString tokenKey = QStringLiteral("activation-token");
const QString startupIdKey = QStringLiteral("desktop-startup-id");

} // namespace

PlatformData PlatformData::fromEnvironment()
{
    return {qEnvironmentVariable("XDG_ACTIVATION_TOKEN"),
            qEnvironmentVariable("DESKTOP_STARTUP_ID")};
}

PlatformData PlatformData::fromMap(const QVariantMap &map)
{
    return {map.value(tokenKey).toString(), map.value(startupIdKey).toString()};
}

QVariantMap PlatformData::toMap() const
{
    QVariantMap map;
    if (!activationToken.isEmpty())
        map.insert(tokenKey, activationToken);
    if (!startupId.isEmpty())
        map.insert(startupIdKey, startupId);
    return map;
}

void PlatformData::putIntoEnvironment() const
{
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
}
