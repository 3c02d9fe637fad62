#include "app/Presenters.h"

#include "app/ViewTexts.h"
#include "app/run/EraseRun.h"
#include "ui/DragVeil.h"
#include "ui/DropView.h"
#include "ui/ErasingView.h"
#include "ui/HeaderBar.h"
#include "ui/MainWindow.h"
#include "ui/QueueTable.h"
#include "ui/ReadyView.h"

#include <QItemSelectionModel>
#include <QToolTip>

#include <memory>

namespace {

constexpr int hintMilliseconds = 4000;
constexpr int noDrag = -1;

/// Null: the table is empty. The selection model of a table that keeps its rows is still in use.
void setRows(QueueTable *table, QAbstractItemModel *rows)
{
    if (table->model() == rows)
        return;
    const std::unique_ptr<QItemSelectionModel> before(table->selectionModel());
    table->setModel(rows);
}

} // namespace

Presenters::Presenters(const MainOutlets &outlets, const EraseRun &run)
    : outlets_(outlets), run_(run), cautions_([this](const CautionCount &) { showCautions(); }),
      announcer_(new Announcer(outlets.windowMain)), callout_(outlets.viewDragDrop),
      errorLog_(outlets.errorLogArrayController), ready_(outlets.viewPressStart),
      erasing_(outlets.viewErasingFiles, &rows_, announcer_), finished_(outlets.viewFinished),
      header_(outlets.windowMain->header(), outlets.errorLogArrayController),
      scanning_(outlets.windowScanningFiles, run.queueStatsObject())
{
    rows_.setQueueArray(run.queueArray());
    cautions_.setQueueArray(run.queueArray());
    showRowsIn(outlets_.viewPressStart->table());
}

/// Laying out a million rows takes its time, so only one of the tables has them.
void Presenters::showRowsIn(QueueTable *table)
{
    for (QueueTable *each :
         {outlets_.viewPressStart->table(), outlets_.viewErasingFiles->table()}) {
        if (each != table)
            setRows(each, nullptr);
    }
    setRows(table, &rows_);
}

void Presenters::showMethod(std::int64_t method, const WipeDescriptionObject &description)
{
    outlets_.viewDragDrop->setMethodText(ViewTexts::methodLine(description.name));
    ready_.showMethod(method, description);
    ready_.showQueue(run_);
}

void Presenters::showSkipLinkTargets(bool skip)
{
    skipLinkTargets_ = skip;
    showCautions();
}

void Presenters::showCautions()
{
    ready_.showCautions(cautions_.count(), skipLinkTargets_);
}

void Presenters::queueHasGrown()
{
    rows_.queueChanged();
    ready_.showQueue(run_);
    cautions_.countAppended();
}

void Presenters::queueIsEmpty()
{
    rows_.queueChanged();
    showRowsIn(outlets_.viewPressStart->table());
    ready_.showQueue(run_);
    cautions_.reset();
    showCautions();
}

void Presenters::sayAlreadyInTheList(std::int64_t files)
{
    const QString text = ViewTexts::alreadyInTheList(files);
    const QPoint under = outlets_.windowMain->header()->geometry().bottomLeft();
    QToolTip::showText(outlets_.windowMain->mapToGlobal(under), text, outlets_.windowMain, {},
                       hintMilliseconds);
    announcer_->announce(text);
}

void Presenters::showDrag(int items, MainView current)
{
    const bool isDrag = items != noDrag;
    const bool isDropView = current == MainView::Drop;
    const QString heading = isDrag ? ViewTexts::releaseToAdd(items) : QString();
    const QString sentence = ViewTexts::theyJoin(std::int64_t(run_.queueArray()->count()));
    outlets_.viewDragDrop->setDrag(isDropView ? heading : QString(), sentence);
    DragVeil &veil = *outlets_.windowMain->dragVeil();
    if (isDrag)
        veil.setTexts(heading, sentence);
    veil.setShown(isDrag && !isDropView);
}

void Presenters::beginRun(std::int64_t method, const QString &methodName)
{
    showRowsIn(outlets_.viewErasingFiles->table());
    erasing_.begin(method, methodName);
}

void Presenters::showRun(const QueueObject *current, double bytesPerSecond, std::int64_t now)
{
    erasing_.refresh(run_, current, bytesPerSecond, now);
    header_.showErrorCount();
}

void Presenters::showSummary(const QString &methodName, bool showsErrorButton,
                             const FinishedPresenter::Failures &failures)
{
    const QueueStatsObject &stats = *run_.queueStatsObject();
    finished_.show(stats, methodName, showsErrorButton, failures);
    header_.showErrorCount();
    QStringList end = {ViewTexts::ending(stats.wipedFilesString(), stats.failedFilesString())};
    if (failures.unreached > 0)
        end.append(ViewTexts::stopped(failures.unreached));
    if (!failures.log.isEmpty())
        end.append(ViewTexts::logProblem(failures.log));
    announcer_->announce(end.join(QLatin1Char(' ')));
}
