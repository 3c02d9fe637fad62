#include "engine/FileWiper.h"

#include "engine/ProtectedPlaces.h"
#include "platform/FileSystemKind.h"
#include "platform/FolderAccess.h"
#include "platform/MainThread.h"
#include "platform/OptionalDelegate.h"
#include "platform/PathBytes.h"
#include "platform/Random.h"
#include "platform/ResidentThread.h"
#include "platform/SystemError.h"

#include <algorithm>
#include <cerrno>

namespace {

using Access = SystemCalls::Access;
using LastLink = SystemCalls::LastLink;

constexpr int openAttempts = 5;
/// A write that is interrupted again and again without a byte in between is a failing one.
constexpr int interruptions = 1000;

/// Never destroyed: a file may be in work when the process ends.
ResidentThread &wiperThread()
{
    static ResidentThread *const thread = new ResidentThread;
    return *thread;
}

} // namespace

std::array<std::uint8_t, FileWiper::blockSize> FileWiper::buffer_;
int FileWiper::fd_ = -1;
std::int64_t FileWiper::fileSize_ = 0;
std::uint8_t FileWiper::blockMultiplier_ = 1;

FileWiper::FileWiper(Private)
{
}

FileWiper::~FileWiper() = default;

void FileWiper::start()
{
    // A step of the main thread's, which here needs no hand-over.
    updateIsBusyTo(true);
    if (wiperThread().submit([self = shared_from_this()] { self->main(); }))
        return;
    status_ = Failed;
    fail(EAGAIN);
    MainThread::post([self = shared_from_this()] {
        self->report();
        MainThread::post([self] { self->wipeFinishedDelegate(); });
    });
}

void FileWiper::main()
{
    fileUtils_ = std::make_unique<FileUtils>();
    filepath_ = currentObject_->fullpath();
    status_ = erase() ? Succeeded : Failed;
    putBackRepairs();
    folder_.close();
    // The counters that follow from the report stand when the delegate hears of the file.
    MainThread::callAndWait([this] { report(); }, [this] { wipeFinishedDelegate(); });
}

/// A file that stays with permissions that are not its own is worth a word.
void FileWiper::putBackRepairs()
{
    for (auto repair = repairs_.rbegin(); repair != repairs_.rend(); ++repair)
        areRepairsPutBack_ = repair->putBack() && areRepairsPutBack_;
    repairs_.clear();
    if (!areRepairsPutBack_ && status_ == Failed)
        currentObject_->setErrormsg(currentObject_->errormsg() +
                                    QStringLiteral(" (its permissions could not be put back)"));
}

/// Status first: the item's statistics rule reads it when `finished` changes.
void FileWiper::report()
{
    updateStatusTo(status_);
    updateFinishedTo(true);
}

bool FileWiper::erase()
{
    if (isLinkToLeaveAlone())
        return delete_file();
    return openfile() && start_wiping();
}

bool FileWiper::isLinkToLeaveAlone()
{
    leavesTargetAlone_ = skipLinkTargets_ && currentObject_->scanFacts().isLink &&
                         !WipeSchedule::passes(currentObject_->wipe_method()).empty() &&
                         openFolder() && readName() == 0 && name_.kind == FileKind::Link;
    return leavesTargetAlone_;
}

bool FileWiper::openfile()
{
    for (int attempt = 0; attempt < openAttempts; ++attempt) {
        if (try_openingfile())
            return true;
    }
    return false;
}

bool FileWiper::try_openingfile()
{
    blockMultiplier_ = 1;
    currentObject_->setErrornr(0);
    if (!openFolder())
        return failAttempt(folder_.error());
    FileStatus target;
    if (const int error = readTarget(target); error != 0)
        return failAttempt(error);
    // Opening a device can set it in motion, so it is not even opened.
    if (target.isDevice())
        return fail(QStringLiteral("Not a regular file"));
    if (isKernelInterface())
        return fail(ProtectedPlaces::refusalOnTheWay());
    fd_ = SystemCalls::current().open(folder_.fd(), nameInFolder().constData(), Access::ReadWrite,
                                      lastLink());
    if (fd_ < 0)
        return failAttempt(-fd_);
    if (const int result = SystemCalls::current().status(fd_, file_); result < 0)
        return failAttempt(-result); // Kept on purpose: the descriptor stays open.
    if (file_.isDevice()) {
        closeAfterFailure();
        return fail(QStringLiteral("Not a regular file"));
    }
    fileSize_ = file_.kind == FileKind::Regular ? file_.size : 0;
    putBackPermissions();
    return true;
}

/// The descriptor is enough from here on. A process that is cut off in the middle of the file
/// leaves it as private as it was.
void FileWiper::putBackPermissions()
{
    for (auto repair = repairs_.rbegin(); repair != repairs_.rend(); ++repair)
        areRepairsPutBack_ = repair->putBackPermissions() && areRepairsPutBack_;
}

bool FileWiper::openFolder()
{
    if (folder_.isOpen())
        return true;
    // A name that only its folder makes too long could be reached through the folder. But nobody
    // else could name that file, so it fails as it would for everybody.
    folder_ = PathBytes::fitsTheSystem(filepath_)
                  ? FolderAccess::open(PathBytes::withoutLastComponent(filepath_),
                                       currentObject_->scanFacts().givenLength)
                  : Descriptor(-ENAMETOOLONG);
    return folder_.isOpen();
}

QByteArray FileWiper::nameInFolder() const
{
    return PathBytes::lastComponent(filepath_);
}

/// What was no link when it was scanned is not followed as one now, nor is any link whose target is
/// to be left alone.
LastLink FileWiper::lastLink() const
{
    return currentObject_->scanFacts().isLink && !skipLinkTargets_ ? LastLink::Follow
                                                                   : LastLink::Stop;
}

/// Reads what the name is. 0, or the error number.
int FileWiper::readName()
{
    return -SystemCalls::current().statusAt(folder_.fd(), nameInFolder().constData(),
                                            LastLink::Stop, name_);
}

/// Reads what the name is, and what opening it would lead to. 0, or the error number.
int FileWiper::readTarget(FileStatus &target)
{
    const int error = readName();
    target = name_;
    if (error != 0 || name_.kind != FileKind::Link)
        return error;
    return -SystemCalls::current().statusAt(folder_.fd(), nameInFolder().constData(), lastLink(),
                                            target);
}

/// A link may lead there, and overwriting there means throwing switches.
bool FileWiper::isKernelInterface() const
{
    std::uint64_t type = 0;
    return SystemCalls::current().fileSystemType(filepath_.constData(), type) >= 0 &&
           FileSystemKind::isKernelInterface(type);
}

bool FileWiper::fixError(int errorNumber)
{
    if (!folder_.isOpen() || (errorNumber != EPERM && errorNumber != EACCES))
        return false;
    InodeRepair repair(Descriptor(SystemCalls::current().open(
                           folder_.fd(), nameInFolder().constData(), Access::Handle, lastLink())),
                       filepath_);
    if (!repair.fix(errorNumber))
        return false;
    repairs_.push_back(std::move(repair));
    return true;
}

bool FileWiper::start_wiping()
{
    const auto passes = WipeSchedule::passes(currentObject_->wipe_method());
    if (passes.empty()) {
        closeAfterFailure();
        return fail(QStringLiteral("Unknown overwrite method"));
    }
    total_phases_ = std::int64_t(passes.size());
    const bool isWritten = std::all_of(passes.begin(), passes.end(),
                                       [this](const auto &pass) { return runPass(pass); }) &&
                           isSizeUnchanged();
    if (!isWritten) {
        closeAfterFailure();
        return false;
    }
    return closefile() && delete_file();
}

bool FileWiper::runPass(const WipeSchedule::Pass &pass)
{
    switch (pass.kind) {
    case WipeSchedule::Pass::Kind::Byte:
        return overwrite_byte(pass.bytes[0]);
    case WipeSchedule::Pass::Kind::ThreeBytes:
        return overwrite_bytes(pass.bytes[0], pass.bytes[1], pass.bytes[2]);
    case WipeSchedule::Pass::Kind::Random:
        return overwrite_random(1);
    }
    return false;
}

bool FileWiper::overwrite_byte(std::uint8_t byte)
{
    buffer_.fill(byte);
    return overwrite();
}

/// Kept on purpose: the buffer ends with a lone first byte, and each block starts the pattern anew.
bool FileWiper::overwrite_bytes(std::uint8_t byte1, std::uint8_t byte2, std::uint8_t byte3)
{
    buffer_.fill(byte1);
    if (blockMultiplier_ == 1) {
        for (std::size_t at = 1; at + 1 < blockSize; at += 3) {
            buffer_[at] = byte2;
            buffer_[at + 1] = byte3;
        }
    }
    return overwrite();
}

bool FileWiper::overwrite_random(std::int64_t count)
{
    for (std::int64_t pass = 0; pass < count; ++pass) {
        randomize_buffer();
        if (!overwrite())
            return false;
    }
    return true;
}

/// Kept on purpose: modulo 255, so a random byte is never 0xFF; and one fill a pass.
void FileWiper::randomize_buffer()
{
    static std::array<std::uint32_t, blockSize> draws;
    if (blockMultiplier_ != 1)
        return;
    Random::fill(draws);
    std::transform(draws.begin(), draws.end(), buffer_.begin(),
                   [](std::uint32_t draw) { return static_cast<std::uint8_t>(draw % 255); });
}

bool FileWiper::overwrite()
{
    if (!rewind())
        return false;
    const std::shared_ptr<QueueStatsObject> stats = currentObject_->queueStatsObject().lock();
    const std::int64_t block = blockMultiplier_ * std::int64_t(blockSize);
    for (std::int64_t remaining = fileSize_; remaining > 0;
         remaining -= std::min(remaining, block)) {
        if (!writeBlock(static_cast<std::size_t>(std::min(remaining, block)), stats.get()))
            return false;
    }
    return sync() && rewind();
}

/// Writes the first `count` bytes of the buffer, in as many calls as the system takes for it.
bool FileWiper::writeBlock(std::size_t count, QueueStatsObject *stats)
{
    int interrupted = 0;
    for (std::size_t done = 0; done < count;) {
        const std::int64_t written =
            SystemCalls::current().write(fd_, buffer_.data() + done, count - done);
        if (written == -EINTR && ++interrupted < interruptions)
            continue;
        if (written <= 0)
            return fail(written == 0 ? EIO : static_cast<int>(-written));
        interrupted = 0;
        done += static_cast<std::size_t>(written);
        // Single precision is part of the rule; the sums are kept as doubles.
        const float credit = static_cast<float>(written) / static_cast<float>(total_phases_);
        currentObject_->addBytesWritten(double(credit));
        if (stats != nullptr)
            stats->addBytesWritten(double(credit));
    }
    return true;
}

bool FileWiper::rewind()
{
    const std::int64_t result = SystemCalls::current().seek(fd_, 0);
    if (result >= 0 || (result == -ESPIPE && file_.kind != FileKind::Regular))
        return true;
    return fail(static_cast<int>(-result));
}

/// One failure is final: after it, a second fsync can report success for data that was dropped.
bool FileWiper::sync()
{
    const int result = SystemCalls::current().sync(fd_);
    if (result >= 0 || (result == -EINVAL && file_.kind != FileKind::Regular))
        return true;
    return fail(-result);
}

bool FileWiper::isSizeUnchanged()
{
    if (file_.kind != FileKind::Regular)
        return true;
    FileStatus now;
    if (const int result = SystemCalls::current().status(fd_, now); result < 0)
        return fail(-result);
    return now.size == fileSize_ || fail(QStringLiteral("File changed while it was being erased"));
}

bool FileWiper::closefile()
{
    const int result = SystemCalls::current().close(std::exchange(fd_, -1));
    return result >= 0 || fail(-result);
}

/// The failure that led here is the one to report.
void FileWiper::closeAfterFailure()
{
    SystemCalls::current().close(std::exchange(fd_, -1));
}

bool FileWiper::delete_file()
{
    if (!isStillTheSameFile())
        return false;
    const int error = fileUtils_->deleteFileIn(folder_.fd(), filepath_);
    return error == 0 || fail(error);
}

/// Whether the name still leads to what was overwritten, the way it led there when it was opened.
bool FileWiper::isStillTheSameFile()
{
    const FileStatus opened = name_;
    FileStatus target = file_;
    if (const int error = leavesTargetAlone_ ? readName() : readTarget(target); error != 0)
        return fail(error);
    const bool isSame = name_.kind == FileKind::Link
                            ? name_.isSameFile(opened) && target.isSameFile(file_)
                            : name_.isSameFile(file_);
    return isSame || fail(QStringLiteral("Replaced by another file while it was being erased"));
}

void FileWiper::updateStatusTo(std::int64_t status)
{
    currentObject_->setStatus(status);
}

void FileWiper::updateFinishedTo(bool finished)
{
    currentObject_->setFinished(finished);
}

void FileWiper::updateIsBusyTo(bool isBusy)
{
    currentObject_->setIsBusy(isBusy);
}

void FileWiper::wipeFinishedDelegate()
{
    OptionalDelegate::call(delegate_, FileWiperDelegate::Call::wipeFinishedWithResult,
                           &FileWiperDelegate::wipeFinishedWithResult, status_);
}

/// Notes the error, repairs what it can for the next attempt, and says that this one failed.
bool FileWiper::failAttempt(int errorNumber)
{
    fail(errorNumber);
    fixError(errorNumber);
    return false;
}

bool FileWiper::fail(int errorNumber)
{
    currentObject_->setErrornr(errorNumber);
    currentObject_->setErrormsg(SystemError::text(errorNumber));
    return false;
}

bool FileWiper::fail(const QString &text)
{
    currentObject_->setErrornr(0);
    currentObject_->setErrormsg(text);
    return false;
}
