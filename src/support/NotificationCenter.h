#pragma once

#include <QString>

#include <functional>

/// Tells the user something when he may be looking elsewhere.
///
/// Thread: main
/// Blocks: never
class NotificationCenter
{
  public:
    /// Shows the message at once, with the usual sound and without a button. `done` is called
    /// later, when the message is out or, at the latest after a few seconds, cannot be shown; it
    /// then stands in the system log.
    static void showMessage(const QString &title, const QString &infoText,
                            const std::function<void()> &done = {});
};
