#include "app/FinishedPresenter.h"

#include "app/ViewTexts.h"
#include "engine/QueueStatsObject.h"
#include "ui/FinishedView.h"

void FinishedPresenter::show(const QueueStatsObject &stats, const QString &methodName,
                             bool showsErrorButton)
{
    FinishedView::Summary summary;
    summary.result = stats.wipedFilesString();
    summary.method = methodName;
    summary.elapsed = stats.timeElapsedString();
    summary.failed = stats.failedFilesString();
    summary.hasFailures = summary.failed.toLongLong() > 0;
    summary.failureText =
        summary.hasFailures ? ViewTexts::failures(stats.failedFilesString()) : QString();
    summary.showsErrorButton = showsErrorButton;
    summary.runStatus = QueueStatsObject::Done;
    view_->setSummary(summary);
}
