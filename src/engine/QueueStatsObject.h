#pragma once

#include "engine/PropertyChange.h"

#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>

/// Hears of changes of the run status. All calls are optional (OptionalDelegate).
class QueueStatsObjectDelegate
{
  public:
    enum class Call { statusChangedTo };

    virtual ~QueueStatsObjectDelegate() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;
    virtual void statusChangedTo(std::int64_t /*status*/) {}
};

/// The one statistics record of a window or a terminal run: counts and byte totals of the scan and
/// of the run, the values behind the overall progress bar, and the result texts. It sums up nothing
/// itself: scanner, items, wiper and run write into it.
///
/// Thread:       main; `bytesWritten` is atomic, since the wiper thread adds to it
/// Holds weakly: its delegate; items hold it weakly in turn
/// Units:        bytes, seconds; `startTimeStamp` in whole seconds since 1970
class QueueStatsObject : public std::enable_shared_from_this<QueueStatsObject>
{
    struct Private
    {
    };

  public:
    enum Status : std::int64_t { Done = 4, Busy = 6 };
    enum class KeyPath { totalBytes, filesFinished, status };

    static std::shared_ptr<QueueStatsObject> create()
    {
        return std::make_shared<QueueStatsObject>(Private{});
    }
    explicit QueueStatsObject(Private);
    ~QueueStatsObject();
    QueueStatsObject(const QueueStatsObject &) = delete;
    QueueStatsObject &operator=(const QueueStatsObject &) = delete;

    void setDelegate(const std::weak_ptr<QueueStatsObjectDelegate> &delegate)
    {
        delegate_ = delegate;
    }

    [[nodiscard]] std::int64_t totalFilesWiped() const { return totalFilesWiped_; }
    void setTotalFilesWiped(std::int64_t files) { totalFilesWiped_ = files; }
    [[nodiscard]] std::int64_t totalFilesRemaining() const { return totalFilesRemaining_; }
    void setTotalFilesRemaining(std::int64_t files) { totalFilesRemaining_ = files; }
    [[nodiscard]] std::int64_t filesFailed() const { return filesFailed_; }
    void setFilesFailed(std::int64_t files) { filesFailed_ = files; }
    [[nodiscard]] std::int64_t percentageComplete() const { return percentageComplete_; }
    void setPercentageComplete(std::int64_t percentage) { percentageComplete_ = percentage; }
    [[nodiscard]] std::int64_t status() const { return status_; }
    void setStatus(std::int64_t status);
    [[nodiscard]] std::int64_t startTimeStamp() const { return startTimeStamp_; }
    void setStartTimeStamp(std::int64_t seconds) { startTimeStamp_ = seconds; }
    [[nodiscard]] double doubleValue() const { return doubleValue_; }
    void setDoubleValue(double value) { doubleValue_ = value; }
    [[nodiscard]] double maxValue() const { return maxValue_; }
    void setMaxValue(double value) { maxValue_ = value; }
    [[nodiscard]] double totalBytes() const { return totalBytes_; }
    void setTotalBytes(double bytes);
    [[nodiscard]] double totalBytesWiped() const { return totalBytesWiped_; }
    void setTotalBytesWiped(double bytes) { totalBytesWiped_ = bytes; }
    [[nodiscard]] double totalBytesRemaining() const { return totalBytesRemaining_; }
    void setTotalBytesRemaining(double bytes) { totalBytesRemaining_ = bytes; }
    [[nodiscard]] double timeRemaining() const { return timeRemaining_; }
    void setTimeRemaining(double seconds) { timeRemaining_ = seconds; }
    [[nodiscard]] double bytesWritten() const
    {
        return bytesWritten_.load(std::memory_order_relaxed);
    }
    void setBytesWritten(double bytes) { bytesWritten_.store(bytes, std::memory_order_relaxed); }
    void addBytesWritten(double bytes)
    {
        bytesWritten_.fetch_add(bytes, std::memory_order_relaxed);
    }
    [[nodiscard]] const QString &wipedFilesString() const { return wipedFilesString_; }
    void setWipedFilesString(const QString &text) { wipedFilesString_ = text; }
    [[nodiscard]] const QString &failedFilesString() const { return failedFilesString_; }
    void setFailedFilesString(const QString &text) { failedFilesString_ = text; }
    [[nodiscard]] const QString &timeElapsedString() const { return timeElapsedString_; }
    void setTimeElapsedString(const QString &text) { timeElapsedString_ = text; }
    [[nodiscard]] std::int64_t scanFoundFiles() const { return scanFoundFiles_; }
    void setScanFoundFiles(std::int64_t files) { scanFoundFiles_ = files; }
    [[nodiscard]] double scanFoundBytes() const { return scanFoundBytes_; }
    void setScanFoundBytes(double bytes) { scanFoundBytes_ = bytes; }

    void startAllObservers();
    void removeAllObservers();
    /// Schedules the operation that follows the change on the main thread; equal values do nothing.
    void observeValueForKeyPath(KeyPath keyPath, const PropertyChange &change);
    /// `maxValue` becomes the new total without its fraction.
    void totalBytesChanged(const PropertyChange &change);
    /// Kept on purpose: no property "filesFinished" exists, so only a caller of
    /// observeValueForKeyPath() gets here.
    void filesFinishedChanged(const PropertyChange &change);
    /// With no file remaining the status is Done, whatever was set; a change is told the delegate.
    void updateStatus(const PropertyChange &change);
    void statusChangedDelegate();

  private:
    std::weak_ptr<QueueStatsObjectDelegate> delegate_;
    bool isObserving_ = false;
    std::int64_t totalFilesWiped_ = 0;
    std::int64_t totalFilesRemaining_ = 0;
    std::int64_t filesFailed_ = 0;
    std::int64_t percentageComplete_ = 0;
    std::int64_t status_ = 0;
    std::int64_t startTimeStamp_ = 0;
    double doubleValue_ = 0;
    double maxValue_ = 0;
    double totalBytes_ = 0;
    double totalBytesWiped_ = 0;
    double totalBytesRemaining_ = 0;
    double timeRemaining_ = 0;
    std::atomic<double> bytesWritten_ = 0;
    QString wipedFilesString_;
    QString failedFilesString_;
    QString timeElapsedString_;
    std::int64_t scanFoundFiles_ = 0;
    double scanFoundBytes_ = 0;
};
