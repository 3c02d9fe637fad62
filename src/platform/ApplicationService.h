#pragma once

#include "platform/PlatformData.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <vector>

class QDBusMessage;

/// The application as the session bus sees it: the object /org/vantorel/Vantorel under the name
/// org.vantorel.Vantorel, with
///   - org.freedesktop.Application (Desktop Entry Specification, "D-Bus Activation"):
///     Activate(a{sv}), Open(as, a{sv}), ActivateAction(s, av, a{sv});
///   - org.vantorel.Vantorel: securelyEraseFiles(as paths, s userData) -> s error. An entry is a
///     plain absolute path or a file location; the error is always empty, the user data unread.
///     Where no entry names a file, nothing is called.
/// Every call only hands over; none starts a run.
///
/// Thread:     main
/// Owns:       the object and the name, until close()
/// Blocks:     in the constructor on connecting to the bus, in requestName() on the bus; else never
/// Failure:    without a bus nothing is heard
/// Invariant:  (1) calls reach the receiver in the order in which they came, each as one, also
///             those from before there was one; (2) a caller has its answer when its call is
///             delivered, not before: what was accepted is not lost
class ApplicationService : public QObject
{
    Q_OBJECT

  public:
    /// Who answers the calls. All three stand.
    struct Receiver
    {
        /// Absolute paths, in the caller's order; none where none of them named a file.
        std::function<void(const std::vector<QByteArray> &paths, const PlatformData &)> open;
        std::function<void(const PlatformData &)> activate;
        std::function<void(const QString &name, const PlatformData &)> action;
    };
    enum class Name { Owned, Taken, Unreachable };

    /// On the connection of this name; the session bus where none is given.
    explicit ApplicationService(const QString &connection = {});
    ~ApplicationService() override;

    [[nodiscard]] QString connection() const { return connection_; }

    /// Asks for the name, without queueing for it and without taking it from its owner. The object
    /// has been there since the constructor. May be called again.
    Name requestName(std::chrono::milliseconds limit);

    /// From now on the receiver is called; what has come before is delivered at once.
    void deliverTo(Receiver receiver);

    /// Gives the name up, so that the next start is the first one. What was not delivered goes back
    /// to its callers as an error. To be called as soon as the application ends.
    void close();

  private:
    struct Call;

    void take(const QDBusMessage &message, std::function<void(const Receiver &)> deliver);
    void deliver();
    void sendBack(const QDBusMessage &message);

    QString connection_;
    bool isClosed_ = false;
    std::vector<Call> kept_;
    Receiver receiver_;
};
