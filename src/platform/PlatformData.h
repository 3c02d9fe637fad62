#pragma once

#include <QString>
#include <QVariantMap>

/// What the desktop hands over with a start or a call, so that the window that answers may come to
/// the front (Desktop Entry Specification, "D-Bus Activation"; XDG Activation; Startup
/// Notification). Each is empty where none came.
///
/// Thread: main (a value)
struct PlatformData
{
    QString activationToken;
    QString startupId;

    /// Of this start: XDG_ACTIVATION_TOKEN and DESKTOP_STARTUP_ID. To be read before there is a
    /// QGuiApplication, which takes them out of the environment.
    static PlatformData fromEnvironment();
    /// The a{sv} of a call; what else stands in it is left out.
    static PlatformData fromMap(const QVariantMap &map);
    [[nodiscard]] QVariantMap toMap() const;

    /// For Qt, which presents the token when a window next asks to come to the front.
    void putIntoEnvironment() const;

    bool operator==(const PlatformData &) const = default;
};
