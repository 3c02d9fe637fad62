#include "engine/ProtectedPlaces.h"

#include "platform/SystemCalls.h"

#include <array>

namespace {

/// The item itself: a link to a protected place is not the place.
bool readStatus(const char *path, FileStatus &status)
{
    return SystemCalls::current().statusAt(SystemCalls::startFolder, path,
                                           SystemCalls::LastLink::Stop, status) >= 0;
}

} // namespace

QString ProtectedPlaces::refusal(const QByteArray &path)
{
    static constexpr std::array places = {"/", "/proc", "/sys", "/dev"};

    if (path.isEmpty())
        return QStringLiteral("Refused: an empty path names nothing");
    FileStatus item;
    const bool exists = readStatus(path.constData(), item);
    for (const char *place : places) {
        FileStatus status;
        const bool isPlace =
            path == place || (exists && item.kind == FileKind::Folder &&
                              readStatus(place, status) && item.isSameFile(status));
        if (isPlace)
            return QStringLiteral("Refused: \"%1\" is never erased").arg(QLatin1String(place));
    }
    return {};
}
