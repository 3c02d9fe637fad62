#include "platform/IdleInhibitor.h"

#include "platform/DesktopConnection.h"
#include "platform/LoginManager.h"
#include "platform/SystemLog.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

const QString reason = QStringLiteral("Deleting in the background");

QDBusMessage screenSaverCall(const QString &member)
{
    const QString name = QStringLiteral("org.freedesktop.ScreenSaver");
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          name, member);
}

void logRefusals(const QString &loginManagersCause, const QString &desktopsCause)
{
    SystemLog::write("IdleInhibitor", loginManagersCause + QStringLiteral("; ") + desktopsCause);
}

} // namespace

IdleInhibitor::IdleInhibitor() : IdleInhibitor(Services())
{
}

IdleInhibitor::IdleInhibitor(Services services) : services_(std::move(services))
{
    askLoginManager();
}

IdleInhibitor::~IdleInhibitor()
{
    if (holder_ != Holder::Desktop)
        return;
    QDBusMessage call = screenSaverCall(QStringLiteral("UnInhibit"));
    call << cookie_;
    DesktopConnection::named(services_.session).send(call);
}

void IdleInhibitor::askLoginManager()
{
    const QDBusConnection bus = DesktopConnection::systemNamed(services_.system);
    // Without a connection no answer comes, not even an error.
    if (!bus.isConnected()) {
        askDesktop(QStringLiteral("no system bus"));
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(
        LoginManager::inhibit(bus, {QStringLiteral("idle"), reason, QStringLiteral("block")},
                              services_.milliseconds),
        this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &IdleInhibitor::takeLock);
}

void IdleInhibitor::takeLock(QDBusPendingCallWatcher *watcher)
{
    const QDBusPendingReply<QDBusUnixFileDescriptor> reply = *watcher;
    watcher->deleteLater();
    if (!reply.isValid()) {
        askDesktop(reply.error().message());
        return;
    }
    lock_ = reply.value();
    holder_ = Holder::LoginManager;
}

void IdleInhibitor::askDesktop(const QString &loginManagersCause)
{
    const QDBusConnection bus = DesktopConnection::named(services_.session);
    if (!bus.isConnected()) {
        logRefusals(loginManagersCause, QStringLiteral("no session bus"));
        return;
    }
    QDBusMessage call = screenSaverCall(QStringLiteral("Inhibit"));
    call << QStringLiteral("Vantorel") << reason;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, services_.milliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, loginManagersCause](QDBusPendingCallWatcher *finished) {
                takeCookie(finished, loginManagersCause);
            });
}

void IdleInhibitor::takeCookie(QDBusPendingCallWatcher *watcher, const QString &loginManagersCause)
{
    const QDBusPendingReply<uint> reply = *watcher;
    watcher->deleteLater();
    if (!reply.isValid()) {
        logRefusals(loginManagersCause, reply.error().message());
        return;
    }
    cookie_ = reply.value();
    holder_ = Holder::Desktop;
}
