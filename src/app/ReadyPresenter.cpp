#include "app/ReadyPresenter.h"

#include "app/Cautions.h"
#include "app/ViewTexts.h"
#include "app/run/EraseRun.h"
#include "engine/WipeSchedule.h"
#include "ui/ReadyView.h"

void ReadyPresenter::showQueue(const EraseRun &run)
{
    const auto files = std::int64_t(run.queueArray()->count());
    const auto folders = std::int64_t(run.folderUrlsToDeleteDict().size());
    const double bytes = run.queueStatsObject()->totalBytes();
    view_->setContents({ViewTexts::files(files), ViewTexts::foldersToRemove(folders),
                        ViewTexts::size(bytes), ViewTexts::work(bytes, passes_),
                        files + folders > 0});
}

void ReadyPresenter::showMethod(std::int64_t method, const WipeDescriptionObject &description)
{
    passes_ = std::int64_t(WipeSchedule::passes(method).size());
    view_->setPasses(method, ViewTexts::passes(passes_));
    view_->setDescription(description.info);
}

void ReadyPresenter::showCautions(const CautionCount &count, bool skipLinkTargets)
{
    view_->setCautions(Cautions::texts(count, skipLinkTargets));
}
