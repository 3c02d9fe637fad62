#include "platform/UriList.h"

#include "platform/PathBytes.h"

#include <QList>
#include <QSysInfo>

#include <cctype>
#include <optional>

namespace {

/// Nothing where it is no code, or one for a byte that no name has.
std::optional<char> decodedPair(const QByteArray &pair)
{
    const auto isHex = [](char digit) { return std::isxdigit(static_cast<uchar>(digit)) != 0; };
    if (pair.size() != 2 || !isHex(pair.at(0)) || !isHex(pair.at(1)))
        return std::nullopt;
    const uint byte = pair.toUInt(nullptr, 16);
    if (byte == 0 || byte == '/')
        return std::nullopt;
    return char(byte);
}

/// Null where the text is no well-formed path.
QByteArray decoded(const QByteArray &text)
{
    QByteArray path;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char given = text.at(at);
        if (given == '\0' || given == '?' || given == '#')
            return QByteArray();
        if (given != '%') {
            path.append(given);
            continue;
        }
        const std::optional<char> byte = decodedPair(text.mid(at + 1, 2));
        if (!byte)
            return QByteArray();
        path.append(*byte);
        at += 2;
    }
    return path;
}

bool isThisMachine(const QByteArray &host)
{
    return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
           host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

/// What follows "file:" and the host; null where another machine is meant.
QByteArray withoutHost(const QByteArray &location)
{
    if (!location.startsWith("//"))
        return location;
    const qsizetype slash = location.indexOf('/', 2);
    if (slash < 0 || !isThisMachine(location.mid(2, slash - 2)))
        return QByteArray();
    return location.mid(slash);
}

/// Null where the line is no location of a file of this machine.
QByteArray pathOf(const QByteArray &line)
{
    constexpr qsizetype schemeLength = 5;
    if (line.left(schemeLength).compare("file:", Qt::CaseInsensitive) != 0)
        return QByteArray();
    const QByteArray path = decoded(withoutHost(line.mid(schemeLength)));
    return path.startsWith('/') ? PathBytes::absolute(path, QByteArray()) : QByteArray();
}

} // namespace

std::vector<QByteArray> UriList::paths(const QByteArray &textUriList)
{
    QByteArray list = textUriList;
    if (list.endsWith('\0')) // some programs send the list with the end of a C string
        list.chop(1);
    std::vector<QByteArray> found;
    for (QByteArray line : list.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        QByteArray path = pathOf(line);
        if (!path.isEmpty())
            found.push_back(std::move(path));
    }
    return found;
}
