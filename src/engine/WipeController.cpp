#include "engine/WipeController.h"

#include "platform/MainThread.h"
#include "platform/OptionalDelegate.h"

namespace {
using DelegateCall = WipeControllerDelegate::Call;
}

void WipeController::startWiping()
{
    shouldCancel_ = false;
    if (isBusy_)
        return;
    isBusy_ = true;
    wipeFiles();
}

void WipeController::stopWiping()
{
    shouldCancel_ = true;
}

void WipeController::wipeFiles()
{
    if (const std::shared_ptr<QueueObject> object = getNextObject())
        wipeObject(object);
    else
        finishedWiping();
}

std::shared_ptr<QueueObject> WipeController::getNextObject() const
{
    const std::shared_ptr<QueueArray> queue = queueArray_.lock();
    return queue ? queue->firstUnfinished() : nullptr;
}

void WipeController::wipeObject(const std::shared_ptr<QueueObject> &object)
{
    fileWiper_ = FileWiper::create();
    MainThread::callAndWait([this, &object] { updateCurrentObjectValue(object); });
    object->setWipe_method(wipeMethode_);
    fileWiper_->setDelegate(weak_from_this());
    fileWiper_->setCurrentObject(object);
    fileWiper_->setSkipLinkTargets(skipLinkTargets_);
    fileWiper_->start();
}

void WipeController::wipeFinishedWithResult(std::int64_t result)
{
    if (fileWiper_)
        fileWiper_->setDelegate({});
    if (result != FileWiper::Succeeded)
        MainThread::callAndWait([this] { fileFailedToWipeDelegate(); });
    if (shouldCancel_)
        finishedWiping();
    else
        wipeFiles();
}

void WipeController::finishedWiping()
{
    fileWiper_.reset();
    isBusy_ = false;
    if (isFinishAnnounced_)
        return;
    isFinishAnnounced_ = true;
    MainThread::post([self = shared_from_this()] { self->finishedWipingDelegate(); });
}

/// An item that joined the queue after the last file was done is not left behind: the run goes on,
/// and ends later.
void WipeController::finishedWipingDelegate()
{
    isFinishAnnounced_ = false;
    if (isBusy_)
        return;
    if (!shouldCancel_ && getNextObject()) {
        startWiping();
        return;
    }
    OptionalDelegate::call(delegate_, DelegateCall::finishedWiping,
                           &WipeControllerDelegate::finishedWiping);
}

void WipeController::fileFailedToWipeDelegate()
{
    OptionalDelegate::call(delegate_, DelegateCall::fileFailedToWipe,
                           &WipeControllerDelegate::fileFailedToWipe, currentObject_);
}

void WipeController::updateCurrentObjectValue(const std::shared_ptr<QueueObject> &object)
{
    currentObject_ = object;
}
