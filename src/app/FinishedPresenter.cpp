#include "app/FinishedPresenter.h"

#include "app/ViewTexts.h"
#include "engine/QueueStatsObject.h"
#include "ui/FinishedView.h"

void FinishedPresenter::show(const QueueStatsObject &stats, const QString &methodName,
                             bool showsErrorButton, const Failures &failures)
{
    FinishedView::Summary summary;
    summary.result = stats.wipedFilesString();
    summary.method = methodName;
    summary.elapsed = stats.timeElapsedString();
    summary.failed = stats.failedFilesString();
    const bool hasFailedFiles = summary.failed.toLongLong() > 0;
    summary.hasFailures = hasFailedFiles || failures.errors > 0;
    summary.wasStopped = failures.unreached > 0;
    if (summary.wasStopped)
        summary.failureText = ViewTexts::stopped(failures.unreached);
    else if (hasFailedFiles)
        summary.failureText = ViewTexts::failures(stats.failedFilesString());
    else if (failures.errors > 0)
        summary.failureText = ViewTexts::notOverwritten(failures.errors);
    summary.showsErrorButton = showsErrorButton || failures.errors > 0;
    if (!failures.log.isEmpty())
        summary.logText = ViewTexts::logProblem(failures.log);
    summary.runStatus = QueueStatsObject::Done;
    view_->setSummary(summary);
}
