#pragma once

#include "engine/PropertyChange.h"
#include "engine/ScanFacts.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <cstdint>
#include <memory>

class QueueStatsObject;

/// One file of the erase queue: its path, size, outcome, progress and last error. Keeps the run's
/// statistics current from its own changes of `status` and `finished`.
///
/// Thread:       main, with these exceptions: it is made on a scan worker; the wiper thread of the
///               item reads what it needs, adds to `bytesWritten` (atomic) and writes `errornr` and
///               `errormsg`, which the main thread reads once the item is finished
/// Holds weakly: the statistics
/// Units:        bytes
class QueueObject : public std::enable_shared_from_this<QueueObject>
{
    struct Private
    {
    };

  public:
    enum Status : std::int64_t { Pending = 0, Wiped = 1, Failed = 2 };
    enum class KeyPath { finished, status };

    /// The only way to make one: observation needs shared ownership.
    static std::shared_ptr<QueueObject> create()
    {
        return std::make_shared<QueueObject>(Private{});
    }
    explicit QueueObject(Private);
    ~QueueObject();
    QueueObject(const QueueObject &) = delete;
    QueueObject &operator=(const QueueObject &) = delete;

    [[nodiscard]] bool finished() const { return finished_; }
    void setFinished(bool finished);
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    void setIsBusy(bool isBusy) { isBusy_ = isBusy; }
    [[nodiscard]] bool isFolder() const { return isFolder_; }
    void setIsFolder(bool isFolder) { isFolder_ = isFolder; }
    [[nodiscard]] std::int64_t status() const { return status_; }
    void setStatus(std::int64_t status);
    [[nodiscard]] std::int64_t wipe_method() const { return wipe_method_; }
    void setWipe_method(std::int64_t method) { wipe_method_ = method; }
    [[nodiscard]] const QByteArray &filename() const { return filename_; }
    void setFilename(const QByteArray &name) { filename_ = name; }
    [[nodiscard]] const QByteArray &filepath() const { return filepath_; }
    void setFilepath(const QByteArray &path) { filepath_ = path; }
    [[nodiscard]] const QByteArray &fullpath() const { return fullpath_; }
    void setFullpath(const QByteArray &path) { fullpath_ = path; }
    [[nodiscard]] double doubleValue() const { return doubleValue_; }
    void setDoubleValue(double value) { doubleValue_ = value; }
    [[nodiscard]] double filesize() const { return filesize_; }
    void setFilesize(double size) { filesize_ = size; }
    [[nodiscard]] double bytesWritten() const
    {
        return bytesWritten_.load(std::memory_order_relaxed);
    }
    void setBytesWritten(double bytes) { bytesWritten_.store(bytes, std::memory_order_relaxed); }
    void addBytesWritten(double bytes)
    {
        bytesWritten_.fetch_add(bytes, std::memory_order_relaxed);
    }
    [[nodiscard]] double maxValue() const { return maxValue_; }
    void setMaxValue(double value) { maxValue_ = value; }
    [[nodiscard]] std::int64_t errornr() const { return errornr_; }
    void setErrornr(std::int64_t number) { errornr_ = number; }
    [[nodiscard]] const QString &errormsg() const { return errormsg_; }
    void setErrormsg(const QString &text) { errormsg_ = text; }
    [[nodiscard]] std::weak_ptr<QueueStatsObject> queueStatsObject() const
    {
        return queueStatsObject_;
    }
    void setQueueStatsObject(const std::weak_ptr<QueueStatsObject> &stats)
    {
        queueStatsObject_ = stats;
    }
    [[nodiscard]] const ScanFacts &scanFacts() const { return scanFacts_; }
    void setScanFacts(const ScanFacts &facts) { scanFacts_ = facts; }

    void startAllObservers();
    void removeAllObservers();
    /// Schedules statusChanged() or finishedChanged() on the main thread; equal values do nothing.
    void observeValueForKeyPath(KeyPath keyPath, const PropertyChange &change);
    void statusChanged(const PropertyChange &change);
    void finishedChanged(const PropertyChange &change);

    /// How often any item's `finished` went back from YES to NO; a reader that remembers where the
    /// first unfinished item stood looks here. Thread: main
    static std::uint64_t reopenedCount();

  private:
    bool finished_ = false;
    bool isBusy_ = false;
    bool isFolder_ = false;
    bool isObserving_ = false;
    ScanFacts scanFacts_;
    std::int64_t status_ = Pending;
    std::int64_t wipe_method_ = 0;
    std::int64_t errornr_ = 0;
    QByteArray filename_;
    QByteArray filepath_;
    QByteArray fullpath_;
    QString errormsg_;
    double doubleValue_ = 0;
    double filesize_ = 0;
    double maxValue_ = 0;
    std::atomic<double> bytesWritten_ = 0;
    std::weak_ptr<QueueStatsObject> queueStatsObject_;
};
