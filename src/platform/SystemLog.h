#pragma once

#include <QLoggingCategory>
#include <QString>

/// The system log: Qt's logging, category "vantorel", on standard error or in the journal.
Q_DECLARE_LOGGING_CATEGORY(systemLog)

namespace SystemLog {

/// One line "<operation> <what>".
void write(const char *operation, const QString &what);

} // namespace SystemLog
