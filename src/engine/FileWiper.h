#pragma once

#include "engine/FileUtils.h"
#include "engine/InodeRepair.h"
#include "engine/QueueObject.h"
#include "engine/WipeSchedule.h"
#include "platform/Descriptor.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

/// Hears how the wiper's file ended. All calls are optional (OptionalDelegate); made on the main
/// thread while the wiper waits.
class FileWiperDelegate
{
  public:
    enum class Call { wipeFinishedWithResult };

    virtual ~FileWiperDelegate() = default;
    [[nodiscard]] virtual bool answers(Call call) const = 0;
    /// FileWiper::Outcome
    virtual void wipeFinishedWithResult(std::int64_t /*result*/) {}
};

/// Erases one file on the wiper thread, where one wiper runs after the other: opens it, overwrites
/// it in place with the passes of its item's method, syncing after each, closes it and removes its
/// name. There is no cancellation.
///
/// A symbolic link is followed only where the item was one when it was scanned. The name is removed
/// only while it still is the inode that was overwritten.
///
/// Thread:       made and started on main; main() and what it calls run on the wiper thread, all
///               signals blocked; the setters of the item run on main
/// Owns:         itself, from start() until main() has ended
/// Holds:        its item; its delegate weakly
/// Blocks:       on disk I/O, and on the main thread when the file is done
/// Units:        bytes
/// Failure:      item status 2 with `errornr` and `errormsg`. The file then keeps its name, unless
///               another process took it; permissions and flags that were repaired are put back
/// Invariant:    (1) at most one wiper works at a time: buffer, descriptor and size are shared
///               (2) no name is removed unless every pass was written in full and synced, but for
///               that of a link whose target is left alone
class FileWiper : public std::enable_shared_from_this<FileWiper>
{
    struct Private
    {
    };

  public:
    enum Outcome : std::int64_t { Succeeded = 1, Failed = 2 };

    static std::shared_ptr<FileWiper> create() { return std::make_shared<FileWiper>(Private{}); }
    explicit FileWiper(Private);
    ~FileWiper();

    void setDelegate(const std::weak_ptr<FileWiperDelegate> &delegate) { delegate_ = delegate; }
    void setCurrentObject(std::shared_ptr<QueueObject> object)
    {
        currentObject_ = std::move(object);
    }
    [[nodiscard]] const std::shared_ptr<QueueObject> &currentObject() const
    {
        return currentObject_;
    }
    /// A link is removed without being opened.
    void setSkipLinkTargets(bool skip) { skipLinkTargets_ = skip; }
    [[nodiscard]] std::int64_t total_phases() const { return total_phases_; }
    [[nodiscard]] std::int64_t status() const { return status_; }
    [[nodiscard]] std::int64_t percentageComplete() const { return percentageComplete_; }
    void setPercentageComplete(std::int64_t percentage) { percentageComplete_ = percentage; }
    [[nodiscard]] float percentageUnit() const { return percentageUnit_; }
    void setPercentageUnit(float unit) { percentageUnit_ = unit; }

    /// Marks the item as busy and hands main() to the wiper thread, which runs it when the wiper
    /// before has returned from its delegate. Where the system has no thread to give, the item
    /// fails with the system's text.
    void start();

    void main();
    bool openfile();
    bool try_openingfile();
    bool fixError(int errorNumber);
    bool start_wiping();
    bool overwrite_byte(std::uint8_t byte);
    bool overwrite_bytes(std::uint8_t byte1, std::uint8_t byte2, std::uint8_t byte3);
    bool overwrite_random(std::int64_t count);
    bool overwrite();
    void randomize_buffer();
    bool closefile();
    bool delete_file();

    void updateStatusTo(std::int64_t status);
    void updateFinishedTo(bool finished);
    void updateIsBusyTo(bool isBusy);
    void wipeFinishedDelegate();

  private:
    static constexpr std::size_t blockSize = 4096;

    bool erase();
    bool isLinkToLeaveAlone();
    bool openFolder();
    [[nodiscard]] QByteArray nameInFolder() const;
    [[nodiscard]] SystemCalls::LastLink lastLink() const;
    int readName();
    int readTarget(FileStatus &target);
    [[nodiscard]] bool isKernelInterface() const;
    bool runPass(const WipeSchedule::Pass &pass);
    bool writeBlock(std::size_t count, QueueStatsObject *stats);
    bool rewind();
    bool sync();
    bool isSizeUnchanged();
    bool isStillTheSameFile();
    void closeAfterFailure();
    void putBackRepairs();
    void putBackPermissions();
    void report();
    bool failAttempt(int errorNumber);
    bool fail(int errorNumber);
    bool fail(const QString &text);

    // One for the whole process, since only one wiper works at a time.
    static std::array<std::uint8_t, blockSize> buffer_;
    static int fd_;
    static std::int64_t fileSize_;
    static std::uint8_t blockMultiplier_;

    std::weak_ptr<FileWiperDelegate> delegate_;
    std::shared_ptr<QueueObject> currentObject_;
    std::unique_ptr<FileUtils> fileUtils_;
    QByteArray filepath_;
    Descriptor folder_; ///< that holds the file
    FileStatus name_;   ///< what the name was when the file was opened: the file, or a link to it
    FileStatus file_;   ///< the file that was opened
    std::vector<InodeRepair> repairs_;
    bool areRepairsPutBack_ = true;
    bool skipLinkTargets_ = false;
    bool leavesTargetAlone_ = false;
    std::int64_t total_phases_ = 0;
    std::int64_t status_ = 0;
    std::int64_t percentageComplete_ = 0;
    float percentageUnit_ = 0;
};
