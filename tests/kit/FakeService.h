#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

/// A service on a message bus that keeps every call and answers as it is told to.
///
/// Thread: main
class FakeService : public QDBusVirtualObject
{
  public:
    enum class Answer { Given, Refusal, None };
    struct Call
    {
        QString interface;
        QString member;
        QString signature;
        QVariantList arguments;
    };

    FakeService(QString name, QString path) : name_(std::move(name)), path_(std::move(path)) {}
    ~FakeService() override
    {
        if (!connection_.isConnected())
            return;
        connection_.unregisterService(name_);
        connection_.unregisterObject(path_);
    }
    FakeService(const FakeService &) = delete;
    FakeService &operator=(const FakeService &) = delete;

    bool appear(const QDBusConnection &bus)
    {
        connection_ = bus;
        return connection_.registerVirtualObject(path_, this) && connection_.registerService(name_);
    }

    /// The arguments of each call to this member.
    [[nodiscard]] std::vector<QVariantList> callsTo(const QString &member) const
    {
        std::vector<QVariantList> found;
        for (const Call &call : calls) {
            if (call.member == member)
                found.push_back(call.arguments);
        }
        return found;
    }

    /// Gives the answers that were held back.
    void answerLate()
    {
        for (const QDBusMessage &message : std::exchange(unanswered_, {}))
            connection_.send(message.createReply(answerWith(calls.back())));
    }

    void announce(const QString &interface, const QString &signal, const QVariantList &arguments)
    {
        QDBusMessage message = QDBusMessage::createSignal(path_, interface, signal);
        message.setArguments(arguments);
        connection_.send(message);
    }

    QString introspect(const QString & /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection & /*bus*/) override
    {
        calls.push_back(
            {message.interface(), message.member(), message.signature(), message.arguments()});
        if (answer == Answer::None)
            unanswered_.push_back(message);
        else if (answer == Answer::Refusal)
            connection_.send(
                message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("not allowed")));
        else
            connection_.send(message.createReply(answerWith(calls.back())));
        return true;
    }

    Answer answer = Answer::Given;
    std::function<QVariantList(const Call &)> answerWith = [](const Call &) {
        return QVariantList();
    };
    std::vector<Call> calls;

  private:
    QString name_;
    QString path_;
    QDBusConnection connection_{QString()};
    std::vector<QDBusMessage> unanswered_;
};
