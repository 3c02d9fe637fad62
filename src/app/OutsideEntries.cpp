#include "app/OutsideEntries.h"

#include "support/NumberText.h"
#include "ui/CautionIcon.h"
#include "ui/DialogBox.h"

#include <numeric>
#include <utility>

OutsideEntries::OutsideEntries(std::function<void(const Paths &)> enter, QObject *parent)
    : QObject(parent), enter_(std::move(enter))
{
    NotificationHub &hub = NotificationHub::shared();
    runStart_ =
        hub.observe(NotificationName::runDidStart, [this](const auto &) { isRunning_ = true; });
    runEnd_ = hub.observe(NotificationName::runDidEnd, [this](const auto &) { runHasEnded(); });
}

OutsideEntries::~OutsideEntries() = default;

void OutsideEntries::take(const Paths &paths)
{
    if (!isRunning_ && waiting_.empty()) {
        enter_(paths);
        return;
    }
    waiting_.push_back(paths);
    // Whoever hands over waits for this call to come back, but not for the user.
    if (!std::exchange(isAsking_, true))
        QMetaObject::invokeMethod(this, &OutsideEntries::ask, Qt::QueuedConnection);
}

/// What comes while the question is shown is asked for afterwards.
void OutsideEntries::ask()
{
    while (!waiting_.empty()) {
        const std::size_t asked = waiting_.size();
        const bool isEntered = isConfirmed();
        const auto end = waiting_.begin() + std::ptrdiff_t(asked);
        const std::vector<Paths> batches(waiting_.begin(), end);
        waiting_.erase(waiting_.begin(), end);
        for (const Paths &paths : isEntered ? batches : std::vector<Paths>())
            enter_(paths);
    }
    isAsking_ = false;
}

bool OutsideEntries::isConfirmed()
{
    if (!isRunning_)
        return true;
    const auto items = std::accumulate(
        waiting_.begin(), waiting_.end(), std::int64_t(0),
        [](std::int64_t sum, const Paths &paths) { return sum + std::int64_t(paths.size()); });
    dialog_ = std::make_unique<DialogBox>(tr("Erase these with the others?"), question(items));
    dialog_->addButtonWithTitle(tr("Yes"));
    dialog_->addButtonWithTitle(tr("No"));
    dialog_->activeButton(2);
    dialog_->image(CautionIcon::icon());
    const bool isYes = dialog_->runModal() == DialogGeometry::FirstButton;
    dialog_.reset();
    return isYes || !isRunning_;
}

QString OutsideEntries::question(std::int64_t items)
{
    if (items == 1)
        return tr("1 item came from another program while files are being erased. With Yes it "
                  "joins this run and is erased at once; with No nothing happens to it.");
    return tr("%1 items came from another program while files are being erased. With Yes they "
              "join this run and are erased at once; with No nothing happens to them.")
        .arg(NumberText::grouped(items));
}

void OutsideEntries::runHasEnded()
{
    isRunning_ = false;
    if (dialog_)
        dialog_->closeWindow();
}
