#pragma once

#include "kit/Scratch.h"

#include <QDBusConnection>
#include <QProcess>
#include <QUuid>

/// A message bus of the test's own, for the session's or the system's, on which nothing is but what
/// the test puts there, and nothing is started on demand but by the service files of a folder that
/// is given. Ends when it goes.
class PrivateBus
{
  public:
    explicit PrivateBus(const QByteArray &serviceFolder = {})
    {
        const QByteArray services = serviceFolder.isNull()
                                        ? QByteArray()
                                        : "<servicedir>" + serviceFolder + "</servicedir>";
        const QByteArray configuration =
            "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
            "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
            "<busconfig><type>session</type><listen>unix:dir=" +
            scratch_.path() + "</listen>" + services +
            "<policy context=\"default\"><allow send_destination=\"*\"/>"
            "<allow receive_sender=\"*\"/><allow own=\"*\"/><allow user=\"*\"/></policy>"
            "</busconfig>";
        const QByteArray file = scratch_.file("bus.conf", configuration);
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
                       QStringLiteral("--config-file=") + QFile::decodeName(file)});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead())
            address_ = QString::fromUtf8(daemon_.readLine().trimmed());
    }
    ~PrivateBus()
    {
        for (const QString &name : std::as_const(connections_))
            QDBusConnection::disconnectFromBus(name);
        daemon_.kill();
        daemon_.waitForFinished();
    }
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    [[nodiscard]] bool isThere() const { return !address_.isEmpty(); }

    /// For the environment of a child process.
    [[nodiscard]] QString address() const { return address_; }

    /// A new connection to it; its name finds it again.
    QDBusConnection connection()
    {
        connections_.append(QUuid::createUuid().toString());
        return QDBusConnection::connectToBus(address_, connections_.last());
    }

  private:
    Scratch scratch_;
    QProcess daemon_;
    QString address_;
    QStringList connections_;
};
