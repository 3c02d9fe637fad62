#include "platform/DesktopSettings.h"

#include "platform/DesktopConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

struct Setting
{
    QString group;
    QString key;

    bool operator==(const Setting &) const = default;
};

const Setting animations{QStringLiteral("org.gnome.desktop.interface"),
                         QStringLiteral("enable-animations")};
const Setting contrast{QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast")};
const Setting contrastTheme{QStringLiteral("org.gnome.desktop.a11y.interface"),
                            QStringLiteral("high-contrast")};

/// Read wraps its answer once more than the signal does.
QVariant unwrapped(const QDBusVariant &value)
{
    QVariant inner = value.variant();
    while (inner.userType() == qMetaTypeId<QDBusVariant>())
        inner = inner.value<QDBusVariant>().variant();
    return inner;
}

} // namespace

DesktopSettings::DesktopSettings(const QString &connection)
{
    QDBusConnection bus = DesktopConnection::named(connection);
    if (!bus.isConnected())
        return;
    bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                SLOT(takeSetting(QString, QString, QDBusVariant)));
    for (const Setting &setting : {animations, contrast, contrastTheme})
        ask(connection, setting.group, setting.key);
}

DesktopSettings &DesktopSettings::shared()
{
    static DesktopSettings settings;
    return settings;
}

void DesktopSettings::ask(const QString &connection, const QString &group, const QString &key)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    call << group << key;
    auto *watcher =
        new QDBusPendingCallWatcher(DesktopConnection::named(connection).asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, group, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        watcher->deleteLater();
        if (reply.isValid())
            takeSetting(group, key, reply.value());
    });
}

void DesktopSettings::takeSetting(const QString &group, const QString &key,
                                  const QDBusVariant &value)
{
    const bool wasReduced = prefersReducedMotion();
    const bool wasHigh = prefersHighContrast();
    const Setting setting{group, key};
    const QVariant inner = unwrapped(value);
    if (setting == animations)
        hasAnimations_ = inner.toBool();
    else if (setting == contrast)
        hasMoreContrast_ = inner.toUInt() == 1;
    else if (setting == contrastTheme)
        hasContrastTheme_ = inner.toBool();
    if (prefersReducedMotion() != wasReduced || prefersHighContrast() != wasHigh)
        Q_EMIT changed();
}
