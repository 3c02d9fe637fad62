#include "app/FinishedPresenter.h"

#include "app/ViewTexts.h"
#include "engine/QueueStatsObject.h"
#include "ui/FinishedView.h"

void FinishedPresenter::show(const QueueStatsObject &stats, const QString &methodName,
                             bool showsErrorButton, std::int64_t errors)
{
    FinishedView::Summary summary;
    summary.result = stats.wipedFilesString();
    summary.method = methodName;
    summary.elapsed = stats.timeElapsedString();
    summary.failed = stats.failedFilesString();
    const bool hasFailedFiles = summary.failed.toLongLong() > 0;
    summary.hasFailures = hasFailedFiles || errors > 0;
    if (hasFailedFiles)
        summary.failureText = ViewTexts::failures(stats.failedFilesString());
    else if (errors > 0)
        summary.failureText = ViewTexts::notOverwritten(errors);
    summary.showsErrorButton = showsErrorButton || errors > 0;
    summary.runStatus = QueueStatsObject::Done;
    view_->setSummary(summary);
}
