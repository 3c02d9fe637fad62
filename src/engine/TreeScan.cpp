#include "engine/TreeScan.h"

#include "platform/FileSystemKind.h"
#include "platform/FileUrl.h"
#include "platform/PathBytes.h"
#include "platform/SystemError.h"
#include "platform/SystemLog.h"

#include <cerrno>
#include <cstring>

namespace {

using LastLink = SystemCalls::LastLink;

constexpr std::int64_t countBatch = 512;
constexpr qint64 countInterval = 100; // milliseconds

void logLocation(const char *operation, const QByteArray &path)
{
    SystemLog::write(operation, QString::fromLatin1(FileUrl(path).toUri()));
}

} // namespace

FoundCounter::FoundCounter(std::shared_ptr<QueueStatsObject> stats) : stats_(std::move(stats))
{
    sinceFlush_.start();
}

void FoundCounter::add(const QueueObject &item)
{
    ++files_;
    bytes_ += item.filesize();
    if (files_ >= countBatch || sinceFlush_.hasExpired(countInterval))
        flush();
}

void FoundCounter::flush()
{
    sinceFlush_.start();
    if (stats_ && files_ > 0)
        MainThread::post(
            [stats = stats_, files = files_, bytes = bytes_] { count(*stats, files, bytes); });
    files_ = 0;
    bytes_ = 0;
}

void FoundCounter::count(QueueStatsObject &stats, std::int64_t files, double bytes)
{
    stats.setScanFoundFiles(stats.scanFoundFiles() + files);
    stats.setScanFoundBytes(stats.scanFoundBytes() + bytes);
}

/// A name, and the open folder through which it is reached.
struct TreeScan::Name
{
    int folder;
    const char *relative; ///< from `folder`
    QByteArray folderPath;
    QByteArray name;
    QByteArray path;
};

TreeScan::TreeScan(Order order, Findings findings)
    : order_(std::move(order)), findings_(findings), counter_(order_.stats)
{
}

void TreeScan::scanFolder(const QByteArray &path)
{
    enterFolder(path);
    FileStatus status;
    SystemCalls &calls = SystemCalls::current();
    const bool isKnown =
        calls.statusAt(SystemCalls::startFolder, path.constData(), LastLink::Stop, status) >= 0;
    if (isKnown && status.kind == FileKind::Link) {
        findings_.folders[path].isLink = true;
        return;
    }
    Descriptor folder(calls.open(SystemCalls::startFolder, path.constData(),
                                 SystemCalls::Access::Folder, LastLink::Stop));
    if (!folder.isOpen())
        unreadableFolder(path, folder.error());
    else if (!TreeWalk(*this).walk(std::move(folder), path))
        noteUnfinished(path);
}

/// What was entered and not left when the walk was stopped.
void TreeScan::noteUnfinished(const QByteArray &top)
{
    for (QByteArray path = current_; path.size() >= top.size();
         path = PathBytes::withoutLastComponent(path)) {
        if (const auto folder = findings_.folders.find(path); folder != findings_.folders.end())
            folder->second.isUnfinished = true;
    }
}

void TreeScan::scanFile(const QByteArray &path)
{
    findings_.files.push_back(makeItem(path));
}

QueueArray::Item TreeScan::makeItem(const QByteArray &path)
{
    return makeItem(Name{SystemCalls::startFolder, path.constData(),
                         PathBytes::withoutLastComponent(path), PathBytes::lastComponent(path),
                         path});
}

QueueArray::Item TreeScan::makeItem(const Name &name)
{
    ScanFacts facts;
    facts.givenLength = order_.givenLength;
    double size = -1;
    FileStatus status;
    SystemCalls &calls = SystemCalls::current();
    if (PathBytes::fitsTheSystem(name.path) &&
        calls.statusAt(name.folder, name.relative, LastLink::Stop, status) >= 0) {
        facts.isLink = status.kind == FileKind::Link;
        facts.hasOtherNames = !facts.isLink && status.hardLinks > 1;
        if (!facts.isLink ||
            calls.statusAt(name.folder, name.relative, LastLink::Follow, status) >= 0) {
            size = double(status.size);
            facts.inode = status.inode;
        }
        if (facts.isLink) {
            facts.targetSize = size;
            size = order_.skipLinkTargets ? 0 : size;
        }
        facts.copyOnWrite = FileSystemKind::copyOnWrite(fileSystemType(status.device, name.path));
    }

    const QueueArray::Item item = QueueObject::create();
    item->setQueueStatsObject(order_.stats);
    item->setFilename(name.name);
    item->setFilepath(name.folderPath);
    item->setFullpath(name.path);
    item->setFilesize(size);
    item->setMaxValue(size);
    item->setScanFacts(facts);
    counter_.add(*item);
    return item;
}

/// 0 where the system does not say.
std::uint64_t TreeScan::fileSystemType(std::uint64_t device, const QByteArray &path)
{
    const auto known = fileSystemTypes_.find(device);
    if (known != fileSystemTypes_.end())
        return known->second;
    std::uint64_t type = 0;
    SystemCalls::current().fileSystemType(path.constData(), type);
    fileSystemTypes_.emplace(device, type);
    return type;
}

/// A folder whose path the system does not take can be neither found nor removed by it. It is no
/// folder to remove then; the first on its branch is noted as a failure, those below go with it.
bool TreeScan::enterFolder(const QByteArray &path)
{
    current_ = path;
    if (PathBytes::fitsTheSystem(path))
        findings_.folders[path].givenLength = order_.givenLength;
    else if (path.lastIndexOf('/') <= PathBytes::longestPath)
        unreadableFolder(path, ENAMETOOLONG);
    return true;
}

bool TreeScan::openedFolder(const QByteArray &path, const FileStatus &status)
{
    if (!protectedPlaces_.contains(status, fileSystemType(status.device, path))) {
        // One whose path is too long for the system is not among them.
        if (const auto folder = findings_.folders.find(path); folder != findings_.folders.end())
            folder->second.inode = status.inode;
        return true;
    }
    const QString refusal = ProtectedPlaces::refusalOnTheWay();
    logLocation("-[FileUtils recursiveScan:]_block_invoke (1):", path);
    findings_.folders.erase(path);
    findings_.failures.push_back({path, 0, refusal});
    return false;
}

void TreeScan::visitEntry(int folder, const QByteArray &folderPath, const char *name,
                          FileKind /*kind*/)
{
    const QByteArray bytes(name);
    findings_.files.push_back(
        makeItem(Name{folder, name, folderPath, bytes, PathBytes::join(folderPath, bytes)}));
}

void TreeScan::leaveFolder(int /*parent*/, const QByteArray &path, const char * /*name*/)
{
    current_ = PathBytes::withoutLastComponent(path);
}

void TreeScan::unreadableFolder(const QByteArray &path, int error)
{
    logLocation("-[FileUtils recursiveScan:]_block_invoke (1):", path);
    findings_.failures.push_back({path, error, SystemError::text(error)});
}

void TreeScan::unreadableEntry(const QByteArray &path, int error)
{
    logLocation("-[FileUtils recursiveScan:] (2):", path);
    findings_.failures.push_back({path, error, SystemError::text(error)});
}
