#include "engine/FileUtils.h"

#include "engine/FolderRemoval.h"
#include "engine/InodeRepair.h"
#include "engine/ProtectedPlaces.h"
#include "engine/TreeScan.h"
#include "platform/PathBytes.h"
#include "platform/Random.h"
#include "platform/SystemCalls.h"
#include "platform/SystemError.h"
#include "platform/SystemLog.h"

#include <QSet>

#include <algorithm>
#include <cerrno>

namespace {

using LastLink = SystemCalls::LastLink;

constexpr qsizetype longestFolderPath = 240; // characters

bool readStatus(const QByteArray &path, LastLink lastLink, FileStatus &status)
{
    return SystemCalls::current().statusAt(SystemCalls::startFolder, path.constData(), lastLink,
                                           status) >= 0;
}

void logError(const char *operation, const QByteArray &path, int error)
{
    SystemLog::write(operation,
                     PathBytes::printable(path) + QStringLiteral(": ") + SystemError::text(error));
}

/// How many bytes the first `characters` characters have in UTF-8. Stray continuation bytes go with
/// the character before them.
qsizetype lengthOfCharacters(const QByteArray &text, qsizetype characters)
{
    const auto isContinuation = [](char byte) { return (byte & 0xC0) == 0x80; };
    qsizetype at = 0;
    for (qsizetype count = 0; at < text.size() && count < characters; ++count) {
        ++at;
        while (at < text.size() && isContinuation(text.at(at)))
            ++at;
    }
    return at;
}

/// As mkdir -p. 0, or the error number of the call that failed.
int makeFolders(const QByteArray &path)
{
    const int result = SystemCalls::current().makeFolder(path.constData());
    if (result >= 0 || (result == -EEXIST && FileUtils::doesFolderExists(FileUrl(path))))
        return 0;
    const QByteArray parent = PathBytes::withoutLastComponent(path);
    if (result != -ENOENT || parent.isEmpty() || parent == path)
        return -result;
    if (const int error = makeFolders(parent); error != 0)
        return error;
    const int again = SystemCalls::current().makeFolder(path.constData());
    return again >= 0 || FileUtils::doesFolderExists(FileUrl(path)) ? 0 : -again;
}

/// 0, or the error number.
int unlink(int folder, const QByteArray &name, const QByteArray &path)
{
    const int result = SystemCalls::current().unlink(folder, name.constData());
    if (result < 0)
        logError("-[FileUtils deleteFile:]", path, -result);
    return -result;
}

InodeRepair repairOf(const QByteArray &path)
{
    return InodeRepair(
        Descriptor(SystemCalls::current().open(SystemCalls::startFolder, path.constData(),
                                               SystemCalls::Access::Handle, LastLink::Follow)),
        path);
}

QString randomLetters(std::uint32_t count)
{
    static constexpr char alphabet[] = "abcdefghijklmnopqrstuvwxyz";
    QString letters;
    for (std::uint32_t at = 0; at < count; ++at)
        letters += QLatin1Char(alphabet[Random::draw() % 26]);
    return letters;
}

} // namespace

FileUrl FileUtils::createFolder(const FileUrl &url, bool allowAlternative)
{
    if (url.isNull())
        return {};
    const bool existed = doesFolderExists(url);
    if (existed && !allowAlternative)
        return url;
    const FileUrl shortened(PathBytes::withoutTrailingSlashes(
        url.path().first(lengthOfCharacters(url.path(), longestFolderPath))));
    FileUrl folder = shortened;
    for (std::int64_t number = 1; existed && doesFolderExists(folder); ++number)
        folder = FileUrl(shortened.path() + '.' + QByteArray::number(qlonglong(number)));
    if (const int error = makeFolders(folder.path()); error != 0) {
        logError("+[FileUtils createFolder:allowAlternative:]", folder.path(), error);
        return {};
    }
    return folder;
}

bool FileUtils::doesFolderExists(const FileUrl &url)
{
    FileStatus status;
    return readStatus(url.path(), LastLink::Follow, status) && status.kind == FileKind::Folder;
}

bool FileUtils::doesFileExists(const FileUrl &url)
{
    FileStatus status;
    return readStatus(url.path(), LastLink::Follow, status) && status.kind != FileKind::Folder;
}

bool FileUtils::isFile(const FileUrl &url)
{
    return !doesFolderExists(url);
}

std::int64_t FileUtils::bytesOfFilePath(const QByteArray &path)
{
    FileStatus status;
    return readStatus(path, LastLink::Stop, status) ? status.size : 0;
}

std::int64_t FileUtils::getFileSizeFor(const QByteArray &path) const
{
    FileStatus status;
    return readStatus(path, LastLink::Follow, status) ? status.size : -1;
}

bool FileUtils::checkIfFolder(const QByteArray &path) const
{
    return doesFolderExists(FileUrl(path));
}

QByteArray FileUtils::extractFileNameFrom(const QByteArray &path) const
{
    return PathBytes::lastComponent(path);
}

QByteArray FileUtils::extractFilePathFrom(const QByteArray &path) const
{
    return PathBytes::withoutLastComponent(path);
}

FileUrl FileUtils::makeUrlFromFilePath(const QByteArray &path) const
{
    return FileUrl(path);
}

bool FileUtils::isEmptyFolder(const QByteArray &path) const
{
    ScanFacts facts;
    facts.isLink = true;
    return FolderRemoval(path, facts).isEmpty();
}

void FileUtils::deleteFolder(const QByteArray &path) const
{
    if (path.isEmpty())
        return;
    if (const int error = FolderRemoval(path, {}).remove(FolderRemoval::Contents::All); error != 0)
        logError("-[FileUtils deleteFolder:]", path, error);
}

FolderSweep FileUtils::deleteFoldersFromArray(const FolderPaths &folders) const
{
    const auto append = [](std::vector<QByteArray> &to, const std::vector<QByteArray> &from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    FolderSweep sweep;
    for (const auto &[path, facts] : folders) {
        FolderRemoval removal(path, facts);
        const bool isEmpty = removal.isEmpty();
        const int error = isEmpty ? removal.remove(FolderRemoval::Contents::HiddenOnly) : ENOTEMPTY;
        if (isEmpty && error != 0)
            logError("-[FileUtils deleteFolder:]", path, error);
        if (error == 0)
            sweep.removedFolders.push_back(path);
        else
            sweep.kept.push_back({path, error, SystemError::text(error)});
        append(sweep.removedFolders, removal.removedFolders());
        append(sweep.removedFiles, removal.removedEntries());
    }
    // Some went after all, inside another one.
    const QSet<QByteArray> removed(sweep.removedFolders.begin(), sweep.removedFolders.end());
    std::erase_if(sweep.kept,
                  [&removed](const ScanFailure &folder) { return removed.contains(folder.path); });
    return sweep;
}

bool FileUtils::deleteFile(const FileUrl &url) const
{
    return unlink(SystemCalls::startFolder, url.path(), url.path()) == 0;
}

int FileUtils::deleteFileIn(int folder, const QByteArray &path) const
{
    return unlink(folder, PathBytes::lastComponent(path), path);
}

bool FileUtils::fixError(int errorNumber, const QByteArray &forPath) const
{
    switch (errorNumber) {
    case EPERM:
        return unlockFilepath(forPath);
    case EACCES:
        return changePermissionsForFile(forPath);
    default:
        return false;
    }
}

bool FileUtils::unlockFilepath(const QByteArray &path) const
{
    return repairOf(path).unlock();
}

bool FileUtils::changePermissionsForFile(const QByteArray &path) const
{
    if (path.isNull())
        return true;
    return repairOf(path).addWritePermission();
}

bool FileUtils::changePermissionsForUrl(const FileUrl &url) const
{
    return changePermissionsForFile(url.path());
}

bool FileUtils::truncateSize(const QByteArray &path) const
{
    const int result = SystemCalls::current().truncate(path.constData(), 0);
    if (result < 0)
        logError("-[FileUtils truncateSize:]", path, -result);
    return result >= 0;
}

FileUrl FileUtils::scrambleFilename(const FileUrl &url) const
{
    const QByteArray scrambled =
        PathBytes::join(PathBytes::withoutLastComponent(url.path()), randomFilename().toLatin1());
    const int result = SystemCalls::current().rename(url.path().constData(), scrambled.constData());
    if (result >= 0)
        return FileUrl(scrambled);
    logError("-[FileUtils scrambleFilename:]", url.path(), -result);
    return url;
}

QString FileUtils::randomFilename() const
{
    const QString name = randomLetters(6 + Random::below(15));
    return name + QStringLiteral(".%1").arg(randomLetters(3));
}

ScanReport FileUtils::readFilesFromPath(const QByteArray &path)
{
    filesArray_.clear();
    foldersDict_.clear();
    givenLength_ = std::int32_t(PathBytes::withoutLastComponent(path).size());
    if (const QString refusal = ProtectedPlaces::refusal(path); !refusal.isNull()) {
        SystemLog::write("-[FileUtils readFilesFromPath:]", refusal);
        scanFailures_.push_back({path, 0, refusal});
    } else if (checkIfFolder(path)) {
        recursiveScan(makeUrlFromFilePath(path));
    } else {
        fileScan(makeUrlFromFilePath(path));
    }
    givenLength_ = -1;
    return {std::exchange(filesArray_, {}), std::exchange(foldersDict_, {})};
}

TreeScan FileUtils::treeScan()
{
    return TreeScan({queueStatsObject_, givenLength_, skipLinkTargets_, shouldCancel_},
                    {filesArray_, foldersDict_, scanFailures_});
}

void FileUtils::recursiveScan(const FileUrl &url)
{
    treeScan().scanFolder(url.path());
}

void FileUtils::fileScan(const FileUrl &url)
{
    treeScan().scanFile(url.path());
}

QueueArray::Item FileUtils::makeObjectFromUrl(const FileUrl &url)
{
    return treeScan().makeItem(url.path());
}

void FileUtils::updateStats(const QueueArray::Item &object) const
{
    if (queueStatsObject_)
        FoundCounter::count(*queueStatsObject_, 1, object->filesize());
}

ScanFailures FileUtils::takeScanFailures()
{
    return std::exchange(scanFailures_, {});
}
