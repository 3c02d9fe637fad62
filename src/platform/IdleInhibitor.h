#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

/// Keeps the machine from falling asleep by itself, from its construction to its end. What the user
/// asks for (suspend, shutdown, the lid, the power key) goes on as ever.
///
/// First the login manager is asked for a lock "idle" in the mode "block" (systemd-inhibit(1)):
/// that is what holds off the automatic sleep of logind.conf(5), IdleAction, and of the desktops
/// that heed such locks; "sleep" would be refused to the user as well. Where it does not grant one,
/// Inhibit of org.freedesktop.ScreenSaver (Idle Inhibition Service), by which the desktop takes the
/// session for in use. A desktop that measures idleness by itself and heeds no locks still falls
/// asleep after it has granted one.
///
/// Thread:  main
/// Owns:    the lock, or the desktop's cookie
/// Blocks:  on connecting to the buses; never on a service
/// Failure: where neither answers within the limit, a line in the system log
class IdleInhibitor : public QObject
{
    Q_OBJECT

  public:
    /// The connections' names; the real buses where none is given.
    struct Services
    {
        QString system;
        QString session;
        int milliseconds = 5000;
    };
    enum class Holder { Nobody, LoginManager, Desktop };

    IdleInhibitor();
    explicit IdleInhibitor(Services services);
    ~IdleInhibitor() override;

    /// Who keeps the machine awake by now.
    [[nodiscard]] Holder holder() const { return holder_; }

  private:
    void askLoginManager();
    void takeLock(QDBusPendingCallWatcher *watcher);
    void askDesktop(const QString &loginManagersCause);
    void takeCookie(QDBusPendingCallWatcher *watcher, const QString &loginManagersCause);

    Services services_;
    Holder holder_ = Holder::Nobody;
    QDBusUnixFileDescriptor lock_;
    uint cookie_ = 0;
};
