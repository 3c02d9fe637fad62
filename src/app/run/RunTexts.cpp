#include "app/run/RunTexts.h"

#include "engine/QueueObject.h"
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

QString RunTexts::failure(const QueueObject &item, bool removedWithFolder)
{
    if (!removedWithFolder)
        return item.errormsg();
    return item.errormsg() + QStringLiteral(" (removed with its folder, not overwritten)");
}
