#include "platform/ApplicationHandOver.h"

#include "platform/ApplicationId.h"
#include "platform/DesktopConnection.h"
#include "platform/FileEntries.h"

#include <QDBusError>
#include <QDBusMessage>

namespace {

QDBusMessage applicationCall(const std::vector<QByteArray> &paths, const PlatformData &platformData)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        applicationId, QStringLiteral("/org/vantorel/Vantorel"),
        QStringLiteral("org.freedesktop.Application"),
        paths.empty() ? QStringLiteral("Activate") : QStringLiteral("Open"));
    call.setAutoStartService(false);
    if (!paths.empty())
        call << FileEntries::uris(paths);
    call << platformData.toMap();
    return call;
}

bool saysUnanswered(const QString &error)
{
    return error == QDBusError::errorString(QDBusError::ServiceUnknown) ||
           error == QDBusError::errorString(QDBusError::NoReply) ||
           error == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");
}

} // namespace

ApplicationHandOver::Answer ApplicationHandOver::call(const QString &connection,
                                                      const std::vector<QByteArray> &paths,
                                                      const PlatformData &platformData,
                                                      std::chrono::milliseconds limit)
{
    const QDBusMessage answer =
        DesktopConnection::named(connection)
            .call(applicationCall(paths, platformData), QDBus::Block, int(limit.count()));
    if (answer.type() == QDBusMessage::ReplyMessage)
        return {Outcome::Accepted, QString()};
    const bool isUnanswered = saysUnanswered(answer.errorName());
    return {isUnanswered ? Outcome::Unanswered : Outcome::Refused, answer.errorMessage()};
}
