#include "app/Termination.h"

#include "platform/ProcessEnd.h"
#include "support/NumberText.h"
#include "ui/CautionIcon.h"
#include "ui/DialogBox.h"

#include <QEventLoop>

#include <utility>

Termination::Termination(Actions actions, QObject *parent)
    : QObject(parent), actions_(std::move(actions))
{
    timer_.setSingleShot(true);
    timer_.setInterval(patience);
    connect(&timer_, &QTimer::timeout, this, [this] { endNow(ProcessEnd::terminated); });
    runEnd_ = NotificationHub::shared().observe(NotificationName::runDidEnd,
                                                [this](const auto &) { runHasEnded(); });
}

Termination::~Termination() = default;

void Termination::quit()
{
    if (!actions_.isErasing())
        leave();
    else if (!question_ && isConfirmed())
        endNow(0);
}

bool Termination::isConfirmed()
{
    question_ = std::make_unique<DialogBox>(tr("Quit while files are being erased?"),
                                            whatWouldBeLost(actions_.filesRemaining()));
    question_->addButtonWithTitle(tr("Yes"));
    question_->addButtonWithTitle(tr("No"));
    question_->activeButton(2);
    question_->image(CautionIcon::icon());
    const bool isYes = question_->runModal() == DialogGeometry::FirstButton;
    question_.reset();
    // The run may have ended in the moment of the answer.
    return isYes && actions_.isErasing();
}

QString Termination::whatWouldBeLost(std::int64_t filesRemaining)
{
    const std::int64_t others = filesRemaining - 1;
    if (others < 1)
        return tr("The current file would be left half overwritten.");
    if (others == 1)
        return tr("The current file would be left half overwritten, and 1 file would not be erased "
                  "at all.");
    return tr("The current file would be left half overwritten, and %1 files would not be erased "
              "at all.")
        .arg(NumberText::grouped(others));
}

void Termination::stop()
{
    if (!actions_.isErasing()) {
        leave();
        return;
    }
    isStopping_ = true;
    actions_.stopListening();
    stopRun();
}

void Termination::finishFileInWork()
{
    if (!actions_.isErasing())
        return;
    QEventLoop loop;
    const NotificationHub::Token end = NotificationHub::shared().observe(
        NotificationName::runDidEnd, [&loop](const auto &) { loop.quit(); });
    stopRun();
    loop.exec();
}

void Termination::stopRun()
{
    actions_.stopErasing();
    if (!timer_.isActive())
        timer_.start();
}

void Termination::runHasEnded()
{
    timer_.stop();
    if (question_)
        question_->closeWindow();
    if (isStopping_)
        leave();
}

void Termination::leave()
{
    tell();
    actions_.leave();
}

/// Who calls from now on starts an application of its own.
void Termination::tell()
{
    actions_.stopListening();
    actions_.stopScan();
    if (!std::exchange(isTold_, true))
        NotificationHub::shared().post(NotificationName::applicationWillTerminate, this);
}

void Termination::endNow(int exitCode)
{
    tell();
    actions_.endNow(exitCode);
}
