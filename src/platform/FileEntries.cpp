#include "platform/FileEntries.h"

#include "platform/FileUrl.h"
#include "platform/PathBytes.h"
#include "platform/UriList.h"

namespace {

/// None or one. A line break would make a list of a location.
std::vector<QByteArray> pathsOfUri(const QByteArray &uri)
{
    const bool isList = uri.contains('\n') || uri.contains('\r');
    return isList ? std::vector<QByteArray>() : UriList::paths(uri);
}

std::vector<QByteArray> pathsOfEntry(const QByteArray &entry)
{
    if (!entry.startsWith('/'))
        return pathsOfUri(entry);
    return {PathBytes::absolute(entry, QByteArray())};
}

template <typename Read> std::vector<QByteArray> readEach(const QStringList &entries, Read read)
{
    std::vector<QByteArray> found;
    for (const QString &entry : entries) {
        for (QByteArray &path : read(entry.toUtf8()))
            found.push_back(std::move(path));
    }
    return found;
}

} // namespace

std::vector<QByteArray> FileEntries::pathsOfUris(const QStringList &uris)
{
    return readEach(uris, pathsOfUri);
}

std::vector<QByteArray> FileEntries::paths(const QStringList &entries)
{
    return readEach(entries, pathsOfEntry);
}

QStringList FileEntries::uris(const std::vector<QByteArray> &paths)
{
    QStringList uris;
    for (const QByteArray &path : paths)
        uris.append(QString::fromLatin1(FileUrl(path).toUri()));
    return uris;
}
