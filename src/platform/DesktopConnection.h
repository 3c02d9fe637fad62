#pragma once

#include <QDBusConnection>
#include <QString>

/// The connections to the desktop's services (the session bus) and to the system's (the system
/// bus), or others by their names in tests.
///
/// Thread: main
namespace DesktopConnection {

inline QDBusConnection named(const QString &name)
{
    return name.isEmpty() ? QDBusConnection::sessionBus() : QDBusConnection(name);
}

inline QDBusConnection systemNamed(const QString &name)
{
    return name.isEmpty() ? QDBusConnection::systemBus() : QDBusConnection(name);
}

} // namespace DesktopConnection
