#include "app/run/LogPlace.h"

#include "app/run/EraseRun.h"
#include "platform/PathBytes.h"

#include <filesystem>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// The folders above it, by their real names.
std::vector<QByteArray> foldersAbove(const QByteArray &path)
{
    std::error_code error;
    fs::path folder = fs::weakly_canonical(path.toStdString(), error).parent_path();
    std::vector<QByteArray> folders;
    for (; !error && folder.has_relative_path(); folder = folder.parent_path())
        folders.push_back(QByteArray::fromStdString(folder.string()));
    return folders;
}

} // namespace

bool LogPlace::isSameFile(const QByteArray &one, const QByteArray &other)
{
    std::error_code error;
    return one == other || fs::equivalent(one.toStdString(), other.toStdString(), error);
}

bool LogPlace::isQueued(const QByteArray &log, const EraseRun &run)
{
    std::error_code error;
    const bool hasOtherNames = fs::hard_link_count(log.toStdString(), error) > 1 && !error;
    for (const QueueArray::Item &item : run.queueArray()->items()) {
        const ScanFacts &facts = item->scanFacts();
        // A folder that is mounted twice shows the same name in both.
        const bool mayBeTheLog = facts.isLink || (facts.hasOtherNames && hasOtherNames) ||
                                 item->filename() == PathBytes::lastComponent(log);
        if (mayBeTheLog && isSameFile(log, item->fullpath()))
            return true;
    }
    return false;
}

/// Only the uppermost folders can have other names than their real ones: below them no link is
/// followed.
bool LogPlace::isInFolder(const QByteArray &log, const EraseRun &run)
{
    const FolderMap &folders = run.folderUrlsToDeleteDict();
    const std::vector<QByteArray> above = foldersAbove(log);
    for (const auto &[path, facts] : folders) {
        if (folders.count(PathBytes::withoutLastComponent(path)) != 0 || facts.isLink)
            continue;
        for (const QByteArray &folder : above) {
            if (isSameFile(folder, path))
                return true;
        }
    }
    return false;
}
