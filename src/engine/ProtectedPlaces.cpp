#include "engine/ProtectedPlaces.h"

#include "platform/FileSystemKind.h"
#include "platform/PathBytes.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array placePaths = {"/", "/proc", "/sys", "/dev"};

/// The item itself: a link to a protected place is not the place.
bool readStatus(const char *path, FileStatus &status)
{
    return SystemCalls::current().statusAt(SystemCalls::startFolder, path,
                                           SystemCalls::LastLink::Stop, status) >= 0;
}

} // namespace

ProtectedPlaces::ProtectedPlaces()
{
    for (const char *path : placePaths) {
        FileStatus status;
        if (readStatus(path, status))
            places_.push_back(status);
    }
}

bool ProtectedPlaces::contains(const FileStatus &folder, std::uint64_t fileSystemType) const
{
    return FileSystemKind::isKernelInterface(fileSystemType) ||
           std::any_of(places_.begin(), places_.end(),
                       [&folder](const FileStatus &place) { return place.isSameFile(folder); });
}

QString ProtectedPlaces::refusal(const QByteArray &path)
{
    if (path.isEmpty())
        return QStringLiteral("Refused: an empty path names nothing");
    FileStatus item;
    const bool isFolder = readStatus(path.constData(), item) && item.kind == FileKind::Folder;
    for (const char *place : placePaths) {
        FileStatus status;
        if (path == place || (isFolder && readStatus(place, status) && item.isSameFile(status)))
            return QStringLiteral("Refused: \"%1\" is never erased").arg(QLatin1String(place));
    }
    if (PathBytes::lastComponent(path) == "..")
        return QStringLiteral("Refused: \"..\" names no file or folder of its own");
    return {};
}

QString ProtectedPlaces::refusalOnTheWay()
{
    return QStringLiteral("Refused: a part of the system itself is never erased");
}
