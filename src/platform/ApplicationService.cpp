#include "platform/ApplicationService.h"

#include "platform/ApplicationId.h"
#include "platform/DesktopConnection.h"
#include "platform/FileEntries.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QStringList>

namespace {

const QString path = QStringLiteral("/org/vantorel/Vantorel");

using Deliver = std::function<void(const ApplicationService::Receiver &)>;
using Take = std::function<void(const QDBusMessage &, Deliver)>;

QDBusMessage busCall(const QString &member)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                          member);
}

} // namespace

/// The calls that every application answers. Its slots are the interface; a QDBusMessage does not
/// count as an argument.
class DesktopInterface : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
    Q_CLASSINFO("D-Bus Introspection", "<interface name=\"org.freedesktop.Application\">"
                                       "<method name=\"Activate\">"
                                       "<arg type=\"a{sv}\" name=\"platform_data\"/></method>"
                                       "<method name=\"Open\">"
                                       "<arg type=\"as\" name=\"uris\"/>"
                                       "<arg type=\"a{sv}\" name=\"platform_data\"/></method>"
                                       "<method name=\"ActivateAction\">"
                                       "<arg type=\"s\" name=\"action_name\"/>"
                                       "<arg type=\"av\" name=\"parameter\"/>"
                                       "<arg type=\"a{sv}\" name=\"platform_data\"/></method>"
                                       "</interface>")

  public:
    DesktopInterface(QObject *object, Take take)
        : QDBusAbstractAdaptor(object), take_(std::move(take))
    {
    }

  public Q_SLOTS:
    void Activate(const QVariantMap &platformData, const QDBusMessage &message)
    {
        take_(message, [data = PlatformData::fromMap(platformData)](const auto &receiver) {
            receiver.activate(data);
        });
    }
    void Open(const QStringList &uris, const QVariantMap &platformData, const QDBusMessage &message)
    {
        take_(message,
              [paths = FileEntries::pathsOfUris(uris), data = PlatformData::fromMap(platformData)](
                  const auto &receiver) { receiver.open(paths, data); });
    }
    void ActivateAction(const QString &name, const QVariantList & /*parameter*/,
                        const QVariantMap &platformData, const QDBusMessage &message)
    {
        take_(message, [name, data = PlatformData::fromMap(platformData)](const auto &receiver) {
            receiver.action(name, data);
        });
    }

  private:
    Take take_;
};

/// The call that is Vantorel's own.
class VantorelInterface : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.vantorel.Vantorel")
    Q_CLASSINFO("D-Bus Introspection",
                "<interface name=\"org.vantorel.Vantorel\">"
                "<method name=\"securelyEraseFiles\"><arg type=\"as\" name=\"paths\"/>"
                "<arg type=\"s\" name=\"userData\"/>"
                "<arg type=\"s\" name=\"error\" direction=\"out\"/></method></interface>")

  public:
    VantorelInterface(QObject *object, Take take)
        : QDBusAbstractAdaptor(object), take_(std::move(take))
    {
    }

  public Q_SLOTS:
    QString securelyEraseFiles(const QStringList &paths, const QString & /*userData*/,
                               const QDBusMessage &message)
    {
        std::vector<QByteArray> files = FileEntries::paths(paths);
        if (!files.empty())
            take_(message, [files = std::move(files)](const auto &receiver) {
                receiver.open(files, PlatformData());
            });
        return QString();
    }

  private:
    Take take_;
};

struct ApplicationService::Call
{
    QDBusMessage message;
    Deliver deliver;

    [[nodiscard]] QDBusMessage answer() const
    {
        const bool isOurOwn = message.interface() == applicationId;
        return isOurOwn ? message.createReply(QString()) : message.createReply();
    }
};

ApplicationService::ApplicationService(const QString &connection) : connection_(connection)
{
    const Take take = [this](const QDBusMessage &message, Deliver deliver) {
        this->take(message, std::move(deliver));
    };
    new DesktopInterface(this, take);
    new VantorelInterface(this, take);
    DesktopConnection::named(connection_)
        .registerObject(path, this, QDBusConnection::ExportAdaptors);
}

ApplicationService::~ApplicationService()
{
    close();
}

ApplicationService::Name ApplicationService::requestName(std::chrono::milliseconds limit)
{
    constexpr uint doNotQueue = 4; // DBUS_NAME_FLAG_DO_NOT_QUEUE
    constexpr uint isOwner = 1;
    constexpr uint wasOwner = 4;
    const QDBusConnection bus = DesktopConnection::named(connection_);
    if (!bus.isConnected())
        return Name::Unreachable;
    QDBusMessage request = busCall(QStringLiteral("RequestName"));
    request << QString(applicationId) << doNotQueue;
    const QDBusReply<uint> answer = bus.call(request, QDBus::Block, int(limit.count()));
    if (!answer.isValid())
        return Name::Unreachable;
    return answer == isOwner || answer == wasOwner ? Name::Owned : Name::Taken;
}

void ApplicationService::deliverTo(Receiver receiver)
{
    receiver_ = std::move(receiver);
    deliver();
}

void ApplicationService::close()
{
    if (isClosed_)
        return;
    isClosed_ = true;
    QDBusConnection bus = DesktopConnection::named(connection_);
    bus.unregisterObject(path);
    // First the name: who hears that its call failed asks for it.
    QDBusMessage release = busCall(QStringLiteral("ReleaseName"));
    release << QString(applicationId);
    bus.send(release);
    for (const Call &call : std::exchange(kept_, {}))
        sendBack(call.message);
}

void ApplicationService::sendBack(const QDBusMessage &message)
{
    DesktopConnection::named(connection_)
        .send(message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"),
                                       QStringLiteral("Vantorel ends")));
}

void ApplicationService::take(const QDBusMessage &message, Deliver deliver)
{
    message.setDelayedReply(true);
    if (isClosed_) {
        sendBack(message);
        return;
    }
    kept_.push_back({message, std::move(deliver)});
    this->deliver();
}

/// The receiver may run an event loop in which the next call comes: that one finds the earlier ones
/// first, and nothing is left over for the loop further out.
void ApplicationService::deliver()
{
    while (receiver_.open && !kept_.empty()) {
        const Call call = std::move(kept_.front());
        kept_.erase(kept_.begin());
        DesktopConnection::named(connection_).send(call.answer());
        call.deliver(receiver_);
    }
}

#include "ApplicationService.moc"
