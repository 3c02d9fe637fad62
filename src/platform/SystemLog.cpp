#include "platform/SystemLog.h"

Q_LOGGING_CATEGORY(systemLog, "vantorel")

void SystemLog::write(const char *operation, const QString &what)
{
    qCWarning(systemLog, "%s %s", operation, qUtf8Printable(what));
}
