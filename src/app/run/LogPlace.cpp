#include "app/run/LogPlace.h"

#include "app/run/EraseRun.h"
#include "platform/PathBytes.h"
#include "support/LogPathCheck.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;
using LastLink = SystemCalls::LastLink;

namespace {

std::optional<FileStatus> look(const QByteArray &path, LastLink lastLink)
{
    FileStatus status;
    const int result = SystemCalls::current().statusAt(SystemCalls::startFolder, path.constData(),
                                                       lastLink, status);
    return result < 0 ? std::nullopt : std::optional(status);
}

/// Where a file would be made under the path: what is a link there need not lead to anything.
QByteArray placeOf(const QByteArray &path, LastLink linkTargets)
{
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code error;
    fs::path place = path.toStdString();
    for (int links = 0; linkTargets == LastLink::Follow && links < mostLinks; ++links) {
        const fs::path target = fs::read_symlink(place, error);
        if (error)
            break;
        place = place.parent_path() / target;
    }
    return QByteArray::fromStdString(place.string());
}

bool isSamePlace(const QByteArray &one, const QByteArray &other)
{
    if (PathBytes::lastComponent(one) != PathBytes::lastComponent(other))
        return false;
    const auto first = look(PathBytes::withoutLastComponent(one), LastLink::Follow);
    const auto second = look(PathBytes::withoutLastComponent(other), LastLink::Follow);
    return first && second && first->isSameFile(*second);
}

struct Folder
{
    QByteArray path;
    FileStatus status;
};

/// The folders on the way to it, as far as they are there.
std::vector<Folder> foldersOnTheWay(const QByteArray &path)
{
    std::error_code error;
    const QByteArray place = placeOf(path, LastLink::Follow);
    std::vector<Folder> folders;
    for (fs::path way = fs::weakly_canonical(place.toStdString(), error);
         !error && way.has_relative_path(); way = way.parent_path()) {
        const QByteArray folder = QByteArray::fromStdString(way.string());
        const auto status = look(folder, LastLink::Stop);
        if (status && status->kind == FileKind::Folder)
            folders.push_back({folder, *status});
    }
    return folders;
}

bool isAmong(const std::vector<Folder> &folders, const QByteArray &path)
{
    const auto status = look(path, LastLink::Stop);
    // Some file systems number the same folder anew each time.
    return status && std::any_of(folders.begin(), folders.end(), [&](const Folder &one) {
               return one.path == path || one.status.isSameFile(*status);
           });
}

/// What the scan saw of it does not rule it out. A million items are not looked at once more.
bool mayHaveInode(const ScanFacts &facts, const FileStatus &file)
{
    return facts.inode == 0 || facts.inode == file.inode;
}

} // namespace

bool LogPlace::isSameFile(const QByteArray &one, const QByteArray &other, LastLink linkTargets)
{
    // Some file systems number the same file anew each time.
    if (one == other)
        return true;
    const auto first = look(one, linkTargets);
    const auto second = look(other, linkTargets);
    if (first && second)
        return first->isSameFile(*second);
    return !first && !second && isSamePlace(placeOf(one, linkTargets), placeOf(other, linkTargets));
}

bool LogPlace::isInFolder(const QByteArray &file, const QByteArray &folder)
{
    return isAmong(foldersOnTheWay(file), folder);
}

bool LogPlace::isFree(const QByteArray &file, const EraseRun &run)
{
    return LogPathCheck::of(file).answer == LogPathCheck::Answer::Free && !isInFolder(file, run);
}

bool LogPlace::isQueued(const QByteArray &file, const EraseRun &run, LastLink linkTargets)
{
    const auto status = look(file, LastLink::Follow);
    const QByteArray name = PathBytes::lastComponent(file);
    const auto isTheFile = [&](const QueueArray::Item &item) {
        const ScanFacts &facts = item->scanFacts();
        // Names and links may lead elsewhere than they did when the scan saw them.
        const bool mayBe =
            facts.isLink ? linkTargets == LastLink::Follow
                         : item->filename() == name || (status && mayHaveInode(facts, *status));
        return mayBe && isSameFile(file, item->fullpath(), linkTargets);
    };
    const QueueArray::Items &items = run.queueArray()->items();
    return std::any_of(items.begin(), items.end(), isTheFile);
}

bool LogPlace::isInFolder(const QByteArray &file, const EraseRun &run)
{
    const FolderMap &folders = run.folderUrlsToDeleteDict();
    if (folders.empty())
        return false;
    const std::vector<Folder> way = foldersOnTheWay(file);
    return std::any_of(folders.begin(), folders.end(), [&way](const auto &folder) {
        const auto mayBe = [&folder](const Folder &one) {
            return one.path == folder.first || mayHaveInode(folder.second, one.status);
        };
        return std::any_of(way.begin(), way.end(), mayBe) && isAmong(way, folder.first);
    });
}
