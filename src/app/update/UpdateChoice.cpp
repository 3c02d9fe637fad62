#include "app/update/UpdateChoice.h"

#include "app/update/UpdateAddress.h"
#include "platform/Ed25519.h"

#include <algorithm>
#include <array>

namespace {

using UpdateChoice::Facts;
using UpdateChoice::Verdict;

constexpr qsizetype longestVersion = 40; // characters; it becomes part of a file's name

struct FileType
{
    const char *mediaType;
    const char *extension;
};

constexpr std::array<FileType, 8> fileTypes{{
    {"application/gzip", ".tar.gz"},
    {"application/vnd.appimage", ".AppImage"},
    {"application/vnd.debian.binary-package", ".deb"},
    {"application/vnd.flatpak", ".flatpak"},
    {"application/x-rpm", ".rpm"},
    {"application/x-xz", ".tar.xz"},
    {"application/zip", ".zip"},
    {"application/zstd", ".tar.zst"},
}};

bool isDigitOrDot(QChar character)
{
    return character == QLatin1Char('.') ||
           (character >= QLatin1Char('0') && character <= QLatin1Char('9'));
}

bool isForThisSystem(const AppcastItem &item, const Facts &facts)
{
    const QString wanted = item.property(AppcastItem::operatingSystemKey);
    return wanted.isEmpty() || wanted.compare(facts.operatingSystem, Qt::CaseInsensitive) == 0;
}

bool isFileUsable(const AppcastItem::Enclosure &file, const Facts &facts)
{
    return UpdateAddress::isAllowed(file.url, facts.feed) && file.length > 0 &&
           file.length <= facts.largestFile && file.signature.size() == Ed25519::signatureSize;
}

Verdict judgeNewer(const AppcastItem &item, const Facts &facts)
{
    const QString minimum = item.property(AppcastItem::minimumSystemKey);
    const auto needed = UpdateChoice::version(minimum);
    if (!isForThisSystem(item, facts) || (needed && *needed > facts.system.normalized()))
        return Verdict::OtherSystem;
    const bool isReadable = needed.has_value() || minimum.isEmpty();
    return isReadable && isFileUsable(item.enclosure, facts) ? Verdict::Offer : Verdict::Unusable;
}

} // namespace

UpdateChoice::Verdict UpdateChoice::judge(const std::optional<AppcastItem> &item,
                                          const Facts &facts)
{
    if (!item || item->isEmpty())
        return Verdict::NotNewer;
    const auto offered = version(item->property(AppcastItem::versionKey));
    if (!offered)
        return Verdict::Unusable;
    if (*offered <= facts.ours.normalized())
        return Verdict::NotNewer;
    return judgeNewer(*item, facts);
}

std::optional<QVersionNumber> UpdateChoice::version(const QString &text)
{
    qsizetype end = 0;
    const QVersionNumber number = QVersionNumber::fromString(text, &end);
    if (number.isNull() || end != text.size() || end > longestVersion ||
        !std::all_of(text.begin(), text.end(), isDigitOrDot))
        return std::nullopt;
    return number.normalized();
}

QByteArray UpdateChoice::fileStem(const QVersionNumber &version)
{
    return "Vantorel-" + version.toString().toLatin1();
}

QByteArray UpdateChoice::fileExtension(const QString &mediaType)
{
    const auto found = std::find_if(fileTypes.begin(), fileTypes.end(), [&](const FileType &type) {
        return mediaType.compare(QLatin1String(type.mediaType), Qt::CaseInsensitive) == 0;
    });
    return found == fileTypes.end() ? QByteArray() : QByteArray(found->extension);
}
