#include "platform/PathBytes.h"

#include <QList>

#include <algorithm>

#include <linux/limits.h>

namespace {

/// How many bytes the UTF-8 sequence at the start of `bytes` has; 0 where it is not valid.
qsizetype validSequenceLength(QByteArrayView bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    const qsizetype length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                                           : 4;
    if (length == 0 || bytes.size() < length || !bytes.first(length).isValidUtf8())
        return 0;
    return length;
}

QString hexEscape(unsigned char byte)
{
    return QStringLiteral("\\x%1").arg(uint(byte), 2, 16, QLatin1Char('0'));
}

QString asciiAsText(char character)
{
    switch (character) {
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    case '\\':
        return QStringLiteral("\\\\");
    default:
        break;
    }
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7F ? hexEscape(byte) : QString(QLatin1Char(character));
}

/// A terminal acts on the C1 control characters and lets the bidirectional ones reorder a line.
bool isUnprintable(const QString &character)
{
    const QChar first = character.front();
    return character.size() == 1 &&
           (first.category() == QChar::Other_Control || first.category() == QChar::Other_Format ||
            first.category() == QChar::Separator_Line ||
            first.category() == QChar::Separator_Paragraph);
}

QString escaped(QByteArrayView bytes)
{
    QString text;
    for (const char byte : bytes)
        text += hexEscape(static_cast<unsigned char>(byte));
    return text;
}

} // namespace

QByteArray PathBytes::withoutTrailingSlashes(const QByteArray &path)
{
    qsizetype size = path.size();
    while (size > 1 && path.at(size - 1) == '/')
        --size;
    return path.first(size);
}

QByteArray PathBytes::lastComponent(const QByteArray &path)
{
    const QByteArray whole = withoutTrailingSlashes(path);
    return whole == "/" ? whole : whole.mid(whole.lastIndexOf('/') + 1);
}

QByteArray PathBytes::withoutLastComponent(const QByteArray &path)
{
    const QByteArray whole = withoutTrailingSlashes(path);
    const qsizetype slash = whole.lastIndexOf('/');
    if (slash < 0)
        return {};
    return slash == 0 ? QByteArrayLiteral("/") : whole.first(slash);
}

QByteArray PathBytes::join(const QByteArray &folder, const QByteArray &name)
{
    const qsizetype slash = folder.endsWith('/') ? 0 : 1;
    QByteArray path(folder.size() + slash + name.size(), Qt::Uninitialized);
    char *at = std::copy(folder.begin(), folder.end(), path.begin());
    if (slash == 1)
        *at++ = '/';
    std::copy(name.begin(), name.end(), at);
    return path;
}

QByteArray PathBytes::absolute(const QByteArray &path, const QByteArray &startFolder)
{
    if (path.isEmpty() || (startFolder.isEmpty() && !path.startsWith('/')))
        return path;
    const QByteArray whole = path.startsWith('/') ? path : startFolder + '/' + path;
    QByteArray result;
    result.reserve(whole.size());
    for (const QByteArray &component : whole.split('/')) {
        if (!component.isEmpty() && component != ".")
            result += '/' + component;
    }
    return result.isEmpty() ? QByteArrayLiteral("/") : result;
}

QString PathBytes::printable(const QByteArray &path)
{
    QString text;
    text.reserve(path.size());
    for (qsizetype at = 0; at < path.size();) {
        const QByteArrayView rest = QByteArrayView(path).sliced(at);
        const qsizetype length = validSequenceLength(rest);
        if (length == 1) {
            text += asciiAsText(rest.front());
        } else if (length == 0) {
            text += hexEscape(static_cast<unsigned char>(rest.front()));
        } else {
            const QString character = QString::fromUtf8(rest.first(length));
            text += isUnprintable(character) ? escaped(rest.first(length)) : character;
        }
        at += qMax<qsizetype>(length, 1);
    }
    return text;
}

static_assert(PathBytes::longestPath == PATH_MAX - 1);

bool PathBytes::fitsTheSystem(const QByteArray &path)
{
    return path.size() <= longestPath;
}
