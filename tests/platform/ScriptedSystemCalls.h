#pragma once

#include "platform/RecordingDescriptors.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <map>

#include <dirent.h>

/// Answers some calls as it was told and hands the others on.
class ScriptedSystemCalls : public RecordingDescriptors
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        if (beforeOpen)
            beforeOpen(path);
        const auto error = openErrors.find(path);
        return error != openErrors.end()
                   ? -error->second
                   : RecordingDescriptors::open(folder, path, access, lastLink);
    }
    int openFolderWithoutLinks(int folder, const char *path) override
    {
        return openat2Error != 0 ? -openat2Error
                                 : RecordingDescriptors::openFolderWithoutLinks(folder, path);
    }
    int status(int fd, FileStatus &status) override
    {
        return statusError != 0 && --statusesBeforeError < 0
                   ? -statusError
                   : RecordingDescriptors::status(fd, status);
    }
    int statusAt(int folder, const char *path, LastLink lastLink, FileStatus &status) override
    {
        if (beforeStatusAt)
            beforeStatusAt(path);
        const auto error = statusAtErrors.find(path);
        return error != statusAtErrors.end()
                   ? -error->second
                   : RecordingDescriptors::statusAt(folder, path, lastLink, status);
    }
    std::int64_t readFolder(int fd, void *buffer, std::size_t capacity) override
    {
        if (beforeReadFolder)
            beforeReadFolder();
        if (readFolderError != 0 && --readsBeforeError < 0)
            return -readFolderError;
        const std::int64_t count = RecordingDescriptors::readFolder(
            fd, buffer, folderCapacity != 0 ? folderCapacity : capacity);
        if (blanksKinds)
            blankKinds(static_cast<std::byte *>(buffer), count);
        return count;
    }
    int fileSystemType(const char *path, std::uint64_t &type) override
    {
        const int result = RecordingDescriptors::fileSystemType(path, type);
        if (result >= 0 && typeNumber != 0)
            type = typeNumber;
        return result;
    }

    std::function<void(const QByteArray &path)> beforeOpen;
    std::function<void(const QByteArray &path)> beforeStatusAt;
    std::function<void()> beforeReadFolder;
    std::map<QByteArray, int> openErrors;     ///< error numbers by path as it is passed
    std::map<QByteArray, int> statusAtErrors; ///< likewise
    int openat2Error = 0;
    int statusError = 0; ///< after so many statuses of descriptors that succeed:
    int statusesBeforeError = 0;
    int readFolderError = 0; ///< after so many reads that succeed:
    int readsBeforeError = 0;
    std::size_t folderCapacity = 0; ///< bytes a read of a folder takes at most; 0: as asked
    bool blanksKinds = false;       ///< a file system that does not tell what its entries are
    std::uint64_t typeNumber = 0;   ///< of every file system; 0: as it is

  private:
    static void blankKinds(std::byte *buffer, std::int64_t count)
    {
        for (std::int64_t at = 0; at < count;) {
            auto *entry = reinterpret_cast<dirent64 *>(buffer + at);
            entry->d_type = DT_UNKNOWN;
            at += entry->d_reclen;
        }
    }
};
