#include "app/ScanningPresenter.h"

#include "app/ViewTexts.h"
#include "engine/QueueStatsObject.h"
#include "ui/ScanningSheet.h"

#include <chrono>

using namespace std::chrono_literals;

ScanningPresenter::ScanningPresenter(ScanningSheet *sheet,
                                     const std::shared_ptr<QueueStatsObject> &stats)
    : sheet_(sheet), stats_(stats)
{
    timer_.setInterval(500ms);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { refresh(); });
}

void ScanningPresenter::open()
{
    refresh();
    timer_.start();
    sheet_->open();
}

void ScanningPresenter::close()
{
    timer_.stop();
    sheet_->close();
}

void ScanningPresenter::refresh()
{
    if (const std::shared_ptr<QueueStatsObject> stats = stats_.lock())
        sheet_->setFound(ViewTexts::number(stats->scanFoundFiles()),
                         ViewTexts::size(stats->scanFoundBytes()));
}
