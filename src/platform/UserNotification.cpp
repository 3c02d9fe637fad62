#include "platform/UserNotification.h"

#include "platform/ApplicationId.h"
#include "platform/DesktopConnection.h"
#include "platform/MainThread.h"
#include "platform/SystemLog.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {

constexpr uint newNote = 0;
constexpr int usualTimeOnScreen = -1;

QDBusMessage notifyCall(const QString &title, const QString &text)
{
    const QString name = QStringLiteral("org.freedesktop.Notifications");
    QDBusMessage call = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/Notifications"), name, QStringLiteral("Notify"));
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QString(applicationId)},
                            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")}};
    const QStringList actions;
    call << QStringLiteral("Vantorel") << newNote << QString(applicationId) << title << text
         << actions << hints << usualTimeOnScreen;
    return call;
}

void end(const QString &title, const QString &text, const QDBusError &error,
         const std::function<void()> &done)
{
    if (error.isValid())
        SystemLog::write("UserNotification",
                         QStringLiteral("%1: %2 (%3)").arg(title, text, error.message()));
    if (done)
        done();
}

} // namespace

void UserNotification::show(const QString &title, const QString &text,
                            const std::function<void()> &done, const Service &service)
{
    const QDBusConnection bus = DesktopConnection::named(service.connection);
    // Without a connection no answer comes, not even an error.
    if (!bus.isConnected()) {
        const QDBusError error(QDBusError::Disconnected, QStringLiteral("no session bus"));
        MainThread::post([=] { end(title, text, error, done); });
        return;
    }
    auto *watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(notifyCall(title, text), service.milliseconds));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [=] {
        watcher->deleteLater();
        end(title, text, watcher->error(), done);
    });
}
