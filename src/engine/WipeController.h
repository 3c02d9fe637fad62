#pragma once

#include "engine/FileWiper.h"
#include "engine/QueueArray.h"

#include <cstdint>
#include <memory>

/// Hears of a run's failures and of its end. All calls are optional (OptionalDelegate).
class WipeControllerDelegate
{
  public:
    enum class Call { fileFailedToWipe, finishedWiping };

    virtual ~WipeControllerDelegate() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;
    virtual void fileFailedToWipe(const std::shared_ptr<QueueObject> & /*object*/) {}
    virtual void finishedWiping() {}
};

/// Runs the erase queue: gives its unfinished items, one after the other, each to a wiper of its
/// own, and tells its delegate of failures and of the end. Counts nothing; the items do.
///
/// Thread:       main
/// Owns:         the wiper of the item in work
/// Holds weakly: the queue, its delegate
/// Blocks:       never
/// Failure:      a failed file does not end the run
class WipeController : public FileWiperDelegate, public std::enable_shared_from_this<WipeController>
{
    struct Private
    {
    };

  public:
    static std::shared_ptr<WipeController> create()
    {
        return std::make_shared<WipeController>(Private{});
    }
    explicit WipeController(Private) {}

    void setDelegate(const std::weak_ptr<WipeControllerDelegate> &delegate)
    {
        delegate_ = delegate;
    }
    void setQueueArray(const std::weak_ptr<QueueArray> &queue) { queueArray_ = queue; }
    [[nodiscard]] const std::shared_ptr<QueueObject> &currentObject() const
    {
        return currentObject_;
    }
    [[nodiscard]] const std::shared_ptr<FileWiper> &fileWiper() const { return fileWiper_; }
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] bool shouldCancel() const { return shouldCancel_; }
    [[nodiscard]] std::int64_t wipeMethode() const { return wipeMethode_; }

    /// A method set during a run goes for the files not yet started.
    void setWipeMethod(std::int64_t method) { wipeMethode_ = method; }
    /// As FileWiper::setSkipLinkTargets(), for the files not yet started.
    void setSkipLinkTargets(bool skip) { skipLinkTargets_ = skip; }

    void startWiping();
    /// The file in work is finished, the next is not started.
    void stopWiping();

    void wipeFiles();
    [[nodiscard]] std::shared_ptr<QueueObject> getNextObject() const;
    void wipeObject(const std::shared_ptr<QueueObject> &object);
    [[nodiscard]] bool answers(FileWiperDelegate::Call) const override { return true; }
    void wipeFinishedWithResult(std::int64_t result) override;
    void finishedWiping();
    void finishedWipingDelegate();
    void fileFailedToWipeDelegate();
    void updateCurrentObjectValue(const std::shared_ptr<QueueObject> &object);

  private:
    std::weak_ptr<WipeControllerDelegate> delegate_;
    std::weak_ptr<QueueArray> queueArray_;
    std::shared_ptr<QueueObject> currentObject_;
    std::shared_ptr<FileWiper> fileWiper_;
    bool isBusy_ = false;
    bool shouldCancel_ = false;
    bool isFinishAnnounced_ = false; ///< the delegate's finishedWiping is on its way
    bool skipLinkTargets_ = false;
    std::int64_t wipeMethode_ = 0;
};
