#include "app/Cautions.h"

#include "app/ViewTexts.h"

#include <QCoreApplication>

namespace {

QString counted(std::int64_t count, const char *one, const char *many)
{
    if (count == 1)
        return QCoreApplication::translate("Cautions", one);
    return QCoreApplication::translate("Cautions", many).arg(ViewTexts::number(count));
}

QString links(std::int64_t count, bool skipLinkTargets)
{
    if (skipLinkTargets)
        return counted(count, "1 symbolic link will be removed; the file it points to stays",
                       "%1 symbolic links will be removed; the files they point to stay");
    return counted(count, "1 symbolic link: the file it points to will be overwritten",
                   "%1 symbolic links: the files they point to will be overwritten");
}

QString hardLinks(std::int64_t count)
{
    return counted(count,
                   "1 file has other names (hard links), which will show the overwritten data",
                   "%1 files have other names (hard links), which will show the overwritten data");
}

Caution oldCopies(std::size_t kind)
{
    const QString fileSystem = FileSystemKind::name(FileSystemKind::CopyOnWrite(kind));
    return {QCoreApplication::translate("Cautions", "%1: overwriting in place may leave old copies")
                .arg(fileSystem),
            fileSystem};
}

} // namespace

CautionTexts Cautions::texts(const CautionCount &count, bool skipLinkTargets)
{
    CautionTexts texts;
    if (count.links > 0)
        texts.push_back({links(count.links, skipLinkTargets), QStringLiteral("links")});
    if (count.hardLinks > 0)
        texts.push_back({hardLinks(count.hardLinks), QStringLiteral("hardLinks")});
    for (std::size_t kind = 0; kind < count.byFileSystem.size(); ++kind) {
        if (count.byFileSystem.at(kind) > 0)
            texts.push_back(oldCopies(kind));
    }
    return texts;
}
