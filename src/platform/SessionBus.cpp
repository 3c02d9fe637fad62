#include "platform/SessionBus.h"

#include <QtDBus/QDBusConnection>

bool SessionBus::isThere()
{
    return QDBusConnection::sessionBus().isConnected();
}
