#include "support/NotificationCenter.h"

#include "platform/UserNotification.h"

void NotificationCenter::showMessage(const QString &title, const QString &infoText,
                                     const std::function<void()> &done)
{
    UserNotification::show(title, infoText, done);
}
