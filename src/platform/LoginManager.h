#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusUnixFileDescriptor>
#include <QString>

/// The login manager on the system bus (org.freedesktop.login1(5); elogind answers to the same
/// name), as its clients call it.
///
/// Thread: main
/// Blocks: never
namespace LoginManager {

inline const QString service = QStringLiteral("org.freedesktop.login1");
inline const QString path = QStringLiteral("/org/freedesktop/login1");
inline const QString interface = QStringLiteral("org.freedesktop.login1.Manager");

/// What is inhibited, how, and what the user is told about it.
struct Lock
{
    QString what;
    QString why;
    QString mode;
};

/// Answers a descriptor: the lock is held until its last copy is closed.
inline QDBusPendingCall inhibit(const QDBusConnection &bus, const Lock &lock, int milliseconds)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Inhibit"));
    call << lock.what << QStringLiteral("Vantorel") << lock.why << lock.mode;
    return bus.asyncCall(call, milliseconds);
}

} // namespace LoginManager
