#include "platform/FolderListing.h"

#include "platform/Descriptor.h"
#include "platform/FolderReader.h"
#include "platform/MainThread.h"
#include "platform/ThreadSignals.h"

#include <QString>

#include <algorithm>
#include <thread>
#include <tuple>
#include <utility>

namespace {

using FolderListing::Entry;

/// A file system need not say what a name is; a link's own kind says nothing of its end.
Entry entryOf(const Descriptor &folder, const FolderReader::Entry &found)
{
    SystemCalls &calls = SystemCalls::current();
    Entry entry{found.name, found.kind};
    FileStatus status;
    const bool isAsked = found.kind == FileKind::Regular || found.kind == FileKind::Unknown;
    if (isAsked &&
        calls.statusAt(folder.fd(), found.name, SystemCalls::LastLink::Stop, status) == 0) {
        entry.kind = status.kind;
        entry.size = status.size;
    }
    entry.isFolder = entry.kind == FileKind::Folder;
    if (entry.kind == FileKind::Link &&
        calls.statusAt(folder.fd(), found.name, SystemCalls::LastLink::Follow, status) == 0)
        entry.isFolder = status.kind == FileKind::Folder;
    return entry;
}

void sort(std::vector<Entry> &entries)
{
    std::vector<std::pair<QString, Entry>> keyed;
    keyed.reserve(entries.size());
    for (Entry &entry : entries)
        keyed.emplace_back(QString::fromUtf8(entry.name).toCaseFolded(), std::move(entry));
    std::sort(keyed.begin(), keyed.end(), [](const auto &one, const auto &other) {
        if (one.second.isFolder != other.second.isFolder)
            return one.second.isFolder;
        return std::tie(one.first, one.second.name) < std::tie(other.first, other.second.name);
    });
    std::transform(keyed.begin(), keyed.end(), entries.begin(),
                   [](auto &pair) { return std::move(pair.second); });
}

} // namespace

FolderListing::Result FolderListing::read(const QByteArray &folder,
                                          const std::atomic<bool> &isCancelled)
{
    Result result{folder, 0, {}};
    const Descriptor opened(
        SystemCalls::current().open(SystemCalls::startFolder, folder.constData(),
                                    SystemCalls::Access::Folder, SystemCalls::LastLink::Follow));
    if (!opened.isOpen()) {
        result.error = opened.error();
        return result;
    }
    FolderReader reader(opened.fd());
    FolderReader::Entry found{};
    while (!isCancelled && reader.next(found))
        result.entries.push_back(entryOf(opened, found));
    result.error = reader.error();
    sort(result.entries);
    return result;
}

FolderListing::Cancel FolderListing::start(const QByteArray &folder,
                                           std::function<void(Result)> then)
{
    Cancel cancel = std::make_shared<std::atomic<bool>>(false);
    const auto work = [cancel, folder, then = std::move(then)] {
        ThreadSignals::blockAll();
        auto result = std::make_shared<Result>(read(folder, *cancel));
        if (*cancel)
            return;
        MainThread::post([cancel, result, then] {
            if (!*cancel)
                then(std::move(*result));
        });
    };
    std::thread(work).detach();
    return cancel;
}
