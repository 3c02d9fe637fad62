#pragma once

#include <QDBusConnection>
#include <QString>

/// The connection to the desktop's services: the session bus, or one of another name in tests.
///
/// Thread: main
namespace DesktopConnection {

inline QDBusConnection named(const QString &name)
{
    return name.isEmpty() ? QDBusConnection::sessionBus() : QDBusConnection(name);
}

} // namespace DesktopConnection
