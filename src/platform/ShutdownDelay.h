#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>

#include <functional>

class QDBusPendingCallWatcher;

/// Time to come to an end before the machine shuts down: between begin() and end() the login
/// manager is asked to wait, by a lock "shutdown" in the mode "delay" (systemd-inhibit(1)), and its
/// announcement (PrepareForShutdown) is passed on. It waits for end(), and no longer than its own
/// limit (logind.conf(5), InhibitDelayMaxSec: 5 seconds unless set otherwise). The shutdown itself
/// is never refused.
///
/// Thread:  main
/// Owns:    the lock
/// Blocks:  on connecting to the system bus; never on the login manager
/// Failure: without a login manager, or where it refuses, nothing is delayed and nothing is said;
/// an
///          announcement is passed on all the same
class ShutdownDelay : public QObject
{
    Q_OBJECT

  public:
    /// `announced` is called once for each announcement that comes between begin() and end(). Over
    /// the connection of this name; the system bus where none is given.
    explicit ShutdownDelay(std::function<void()> announced, QString connection = {});

    void begin(); ///< a run begins; nothing new while one is on
    void end();   ///< it has ended: the machine may go

    [[nodiscard]] bool isHeld() const { return lock_.isValid(); }

  private Q_SLOTS:
    void prepareForShutdown(bool isComing);

  private:
    void takeLock(QDBusPendingCallWatcher *watcher);

    std::function<void()> announced_;
    QString connection_;
    bool isOn_ = false;
    QDBusPendingCallWatcher *asked_ = nullptr; ///< its answer is on its way
    QDBusUnixFileDescriptor lock_;
};
