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

QString oldCopies(std::size_t kind)
{
    return QCoreApplication::translate("Cautions", "%1: overwriting in place may leave old copies")
        .arg(FileSystemKind::name(FileSystemKind::CopyOnWrite(kind)));
}

} // namespace

QStringList Cautions::texts(const CautionCount &count, bool skipLinkTargets)
{
    QStringList texts;
    if (count.links > 0)
        texts.append(links(count.links, skipLinkTargets));
    if (count.hardLinks > 0)
        texts.append(hardLinks(count.hardLinks));
    for (std::size_t kind = 0; kind < count.byFileSystem.size(); ++kind) {
        if (count.byFileSystem.at(kind) > 0)
            texts.append(oldCopies(kind));
    }
    return texts;
}
