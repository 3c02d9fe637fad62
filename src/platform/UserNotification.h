#pragma once

#include <QString>

#include <functional>

/// A note of the desktop's notification service (Desktop Notifications Specification): a title, a
/// text, the sound of a new message, no buttons.
///
/// Thread:  main
/// Blocks:  never
/// Failure: where no service takes the note within the time limit, it goes to the system log
namespace UserNotification {

/// Who is asked, and how long it may take.
struct Service
{
    QString connection; ///< the session bus where no name is given
    int milliseconds = 3000;
};

/// `done` is called later, once the service has answered or has failed to.
void show(const QString &title, const QString &text, const std::function<void()> &done = {},
          const Service &service = {});

} // namespace UserNotification
