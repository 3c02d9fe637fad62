#include "engine/InodeRepair.h"

#include "platform/PathBytes.h"
#include "platform/SystemLog.h"

#include <cerrno>
#include <utility>

namespace {
constexpr std::uint32_t everyPermission = 0777;
}

InodeRepair::InodeRepair(Descriptor handle, QByteArray path)
    : handle_(std::move(handle)), path_(std::move(path))
{
    isKnown_ = handle_.isOpen() && SystemCalls::current().status(handle_.fd(), status_) >= 0;
}

bool InodeRepair::isUsable() const
{
    return isKnown_ && status_.kind != FileKind::Link;
}

bool InodeRepair::fix(int errorNumber)
{
    switch (errorNumber) {
    case EPERM:
        return unlock();
    case EACCES:
        return addWritePermission();
    default:
        return false;
    }
}

bool InodeRepair::unlock()
{
    // Other kinds of files answer the flag call with their driver, or not at all.
    if (!isKnown_ || (status_.kind != FileKind::Regular && status_.kind != FileKind::Folder))
        return false;
    if (setImmutable(false) != FlagChange::Changed)
        return false;
    wasUnlocked_ = true;
    return true;
}

bool InodeRepair::addWritePermission()
{
    SystemLog::write(
        "-[FileUtils changePermissionsForFile:]",
        QStringLiteral("Adding write permissions to %1").arg(PathBytes::printable(path_)));
    if (!isUsable() || SystemCalls::current().setPermissions(handle_.fd(), everyPermission) < 0)
        return false;
    oldPermissions_ = status_.permissions;
    return true;
}

bool InodeRepair::isNameless() const
{
    FileStatus now;
    return !isKnown_ || SystemCalls::current().status(handle_.fd(), now) < 0 || now.hardLinks == 0;
}

bool InodeRepair::putBackPermissions()
{
    const std::optional<std::uint32_t> permissions = std::exchange(oldPermissions_, std::nullopt);
    return !permissions || isNameless() ||
           told(SystemCalls::current().setPermissions(handle_.fd(), *permissions) >= 0);
}

bool InodeRepair::putBack()
{
    const bool hasPermissions = putBackPermissions();
    const bool hasFlag = !std::exchange(wasUnlocked_, false) || isNameless() ||
                         told(setImmutable(true) != FlagChange::Failed);
    return hasPermissions && hasFlag;
}

bool InodeRepair::told(bool isPutBack) const
{
    if (!isPutBack)
        SystemLog::write("-[InodeRepair putBack]",
                         QStringLiteral("Could not put back permissions or flags of %1")
                             .arg(PathBytes::printable(path_)));
    return isPutBack;
}

InodeRepair::FlagChange InodeRepair::setImmutable(bool immutable)
{
    SystemCalls &calls = SystemCalls::current();
    const Descriptor file(calls.reopen(handle_.fd(), SystemCalls::Access::Read));
    std::uint32_t flags = 0;
    if (!file.isOpen() || calls.inodeFlags(file.fd(), flags) < 0)
        return FlagChange::Failed;
    const bool isImmutable = (flags & SystemCalls::immutableFlag) != 0;
    if (isImmutable == immutable)
        return FlagChange::AlreadySo;
    if (!immutable)
        SystemLog::write("-[FileUtils unlockFilepath:]",
                         QStringLiteral("Unlocking file %1").arg(PathBytes::printable(path_)));
    return calls.setInodeFlags(file.fd(), flags ^ SystemCalls::immutableFlag) < 0
               ? FlagChange::Failed
               : FlagChange::Changed;
}
