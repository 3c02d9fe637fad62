#include "app/run/RunTexts.h"

#include "app/run/EraseRun.h"
#include "support/BytesFormatter.h"
#include "support/TimeFormatter.h"

QString RunTexts::wipedFiles(double bytes, std::int64_t files)
{
    return QStringLiteral("%1 in %2 files").arg(BytesFormatter::formatBytes(bytes)).arg(files);
}

QString RunTexts::failedFiles(std::int64_t files)
{
    return QString::number(files);
}

QString RunTexts::timeElapsed(double seconds)
{
    return TimeFormatter::formatSeconds(seconds);
}

QString RunTexts::failure(const FailedFile &failed)
{
    if (failed.item && !failed.item->finished())
        return QStringLiteral("Not erased: the run was stopped");
    const QString reason =
        failed.item ? failed.item->errormsg() : QStringLiteral("Not found by the scan");
    if (!failed.removedWithFolder)
        return reason;
    return reason + QStringLiteral(" (removed with its folder, not overwritten)");
}
