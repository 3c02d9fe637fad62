#include "platform/ShutdownDelay.h"

#include "platform/DesktopConnection.h"
#include "platform/LoginManager.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

ShutdownDelay::ShutdownDelay(std::function<void()> announced, QString connection)
    : announced_(std::move(announced)), connection_(std::move(connection))
{
    QDBusConnection bus = DesktopConnection::systemNamed(connection_);
    if (bus.isConnected())
        bus.connect(LoginManager::service, LoginManager::path, LoginManager::interface,
                    QStringLiteral("PrepareForShutdown"), this, SLOT(prepareForShutdown(bool)));
}

void ShutdownDelay::begin()
{
    const QDBusConnection bus = DesktopConnection::systemNamed(connection_);
    if (std::exchange(isOn_, true) || !bus.isConnected())
        return;
    constexpr int milliseconds = 5000;
    const LoginManager::Lock lock{QStringLiteral("shutdown"),
                                  QStringLiteral("Deleting in the background"),
                                  QStringLiteral("delay")};
    asked_ = new QDBusPendingCallWatcher(LoginManager::inhibit(bus, lock, milliseconds), this);
    connect(asked_, &QDBusPendingCallWatcher::finished, this, &ShutdownDelay::takeLock);
}

/// A lock that comes later goes with the answer that nobody reads.
void ShutdownDelay::end()
{
    isOn_ = false;
    delete std::exchange(asked_, nullptr);
    lock_ = QDBusUnixFileDescriptor();
}

void ShutdownDelay::takeLock(QDBusPendingCallWatcher *watcher)
{
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
    asked_ = nullptr;
    watcher->deleteLater();
    if (reply.isValid())
        lock_ = reply.value();
}

void ShutdownDelay::prepareForShutdown(bool isComing)
{
    if (isComing && isOn_)
        announced_();
}
