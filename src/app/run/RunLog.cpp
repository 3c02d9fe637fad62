#include "app/run/RunLog.h"

#include "app/run/EraseRun.h"
#include "app/run/RunTexts.h"
#include "engine/WipeDescriptionController.h"
#include "support/Logger.h"

#include <algorithm>

namespace {

QString nameOf(std::int64_t method)
{
    static const WipeDescriptionController catalogue;
    const auto &descriptions = catalogue.wipeDescriptions();
    const bool isKnown = method > 0 && std::size_t(method) < descriptions.size();
    return isKnown ? descriptions[std::size_t(method)].name
                   : QStringLiteral("unknown method %1").arg(method);
}

QString files(std::int64_t number)
{
    return QStringLiteral("%1 %2").arg(number).arg(number == 1 ? QStringLiteral("file")
                                                               : QStringLiteral("files"));
}

/// Files of unknown size count -1 each in the totals.
double bytes(double total)
{
    return std::max(total, 0.0);
}

} // namespace

void RunLog::scanCancelled()
{
    Logger::shared().level(Logger::LogLevelWarning, QStringLiteral("Scan cancelled"));
}

void RunLog::runStarted(std::int64_t method, const EraseRun &run)
{
    const QueueStatsObject &stats = *run.queueStatsObject();
    Logger::shared().level(Logger::LogLevelInfo, QStringLiteral("Run started: %@, %@, %.0f bytes"),
                           nameOf(method), files(stats.totalFilesRemaining()),
                           bytes(stats.totalBytes()));
}

void RunLog::fileFailed(const FailedFile &failed)
{
    Logger::shared().level(Logger::LogLevelError, QStringLiteral("%@"), RunTexts::failure(failed));
}

void RunLog::foldersRemoved(const EraseRun &run)
{
    for (const FailedFile &failed : run.failedFiles()) {
        if (failed.removedWithFolder)
            fileFailed(failed);
    }
}

void RunLog::runEnded(std::int64_t method, const EraseRun &run)
{
    const QueueStatsObject &stats = *run.queueStatsObject();
    Logger::shared().level(
        Logger::LogLevelInfo,
        QStringLiteral("Run ended: %@, %@ erased, %.0f bytes, %ld failed, %ld not touched"),
        nameOf(method), files(stats.totalFilesWiped()), bytes(stats.totalBytesWiped()),
        stats.filesFailed(), stats.totalFilesRemaining());
}
