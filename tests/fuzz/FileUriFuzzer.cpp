// Locations of files as other programs send them: a path that comes out is one that was named.

#include "Fuzzer.h"

#include "platform/FileEntries.h"
#include "platform/FileUrl.h"
#include "platform/UriList.h"

namespace {

using Fuzzer::require;

void check(const std::vector<QByteArray> &paths)
{
    for (const QByteArray &path : paths) {
        require(path.startsWith('/'), "a path is absolute");
        const QByteArray uri = FileUrl(path).toUri();
        require(UriList::paths(uri) == std::vector{path}, "a path is its location's path");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray list = Fuzzer::bytesOf(data, size);
    const std::vector<QByteArray> paths = UriList::paths(list);
    for (const QByteArray &path : paths)
        require(!path.contains('\0'), "a path holds no NUL");
    check(paths);

    const QStringList entries = QString::fromUtf8(list).split(QLatin1Char('\n'));
    check(FileEntries::pathsOfUris(entries));
    const std::vector<QByteArray> entered = FileEntries::paths(entries);
    for (const QByteArray &path : entered)
        require(path.startsWith('/'), "an entry's path is absolute");
    return 0;
}
