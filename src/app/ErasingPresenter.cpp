#include "app/ErasingPresenter.h"

#include "app/Announcer.h"
#include "app/ViewTexts.h"
#include "app/run/EraseRun.h"
#include "engine/WipeSchedule.h"
#include "ui/ErasingView.h"
#include "ui/QueueTable.h"
#include "ui/QueueTableModel.h"

#include <algorithm>
#include <optional>

ErasingPresenter::ErasingPresenter(ErasingView *view, QueueTableModel *rows, Announcer *announcer)
    : view_(view), rows_(rows), announcer_(announcer)
{
}

void ErasingPresenter::begin(std::int64_t method, const QString &methodName)
{
    announcedTenths_ = 0;
    hasAnnouncedFailure_ = false;
    shownRow_ = 0;
    view_->setMethod(methodName);
    const int passes = int(WipeSchedule::passes(method).size());
    view_->setPass(method, std::nullopt, ViewTexts::pass(std::nullopt, passes));
}

void ErasingPresenter::refresh(const EraseRun &run, const QueueObject *current,
                               double bytesPerSecond, std::int64_t now)
{
    showFigures(run, bytesPerSecond, now);
    showCurrent(current);
    announceProgress(run);
}

void ErasingPresenter::showFigures(const EraseRun &run, double bytesPerSecond, std::int64_t now)
{
    const QueueStatsObject &stats = *run.queueStatsObject();
    ErasingView::Figures figures;
    figures.percent = ViewTexts::percent(stats.doubleValue(), stats.totalBytes());
    figures.amount = ViewTexts::amount(stats.doubleValue(), stats.totalBytes());
    figures.remaining = ViewTexts::timeRemaining(stats.timeRemaining());
    figures.throughput = ViewTexts::throughput(bytesPerSecond);
    figures.elapsed = ViewTexts::elapsed(double(now - stats.startTimeStamp()));
    figures.wiped =
        ViewTexts::wiped(stats.totalFilesWiped(), std::int64_t(run.queueArray()->count()));
    figures.failed = ViewTexts::number(stats.filesFailed());
    figures.hasFailed = stats.filesFailed() > 0;
    figures.value = stats.doubleValue();
    figures.maximum = stats.maxValue();
    figures.runStatus = QueueStatsObject::Busy;
    view_->setFigures(figures);
}

void ErasingPresenter::showCurrent(const QueueObject *current)
{
    // The last item of a run stays the controller's current one.
    const int row = rows_->rowOf(current);
    if (row < 0)
        return;
    const std::int64_t method = current->wipe_method();
    const int passes = int(WipeSchedule::passes(method).size());
    const std::optional<int> pass =
        ViewTexts::currentPass(current->bytesWritten(), current->filesize(), passes);
    view_->setPass(method, pass, ViewTexts::pass(pass, passes));
    showRows(row, pass.value_or(0), passes);
}

/// The rows that were done since the last time are painted again; those that are not seen ask the
/// model when they come into view.
void ErasingPresenter::showRows(int row, int pass, int passes)
{
    rows_->setRowInWork(row, pass, passes);
    const QueueTable::Rows seen = view_->table()->rowsIn(view_->table()->viewport()->rect());
    const int last = std::min(row, seen.last);
    for (int done = std::max(shownRow_, seen.first); done >= 0 && done <= last; ++done)
        rows_->rowChanged(done);
    shownRow_ = row;
    view_->table()->keepRowInView(row);
}

void ErasingPresenter::announceProgress(const EraseRun &run)
{
    const QueueStatsObject &stats = *run.queueStatsObject();
    const std::int64_t percentage = ViewTexts::percentage(stats.doubleValue(), stats.totalBytes());
    if (percentage / 10 > announcedTenths_) {
        announcedTenths_ = percentage / 10;
        announcer_->announce(ViewTexts::percent(stats.doubleValue(), stats.totalBytes()));
    }
    if (!hasAnnouncedFailure_ && !run.failedFiles().empty()) {
        hasAnnouncedFailure_ = true;
        announcer_->announce(ViewTexts::failures(ViewTexts::number(stats.filesFailed())));
    }
}
