#include "cli/Findings.h"

#include "app/run/CautionCount.h"
#include "cli/MethodList.h"
#include "support/BytesFormatter.h"

#include <algorithm>

namespace {

QString counted(std::int64_t number, const char *one, const char *many)
{
    return QStringLiteral("%1 %2").arg(number).arg(QLatin1String(number == 1 ? one : many));
}

} // namespace

Findings Findings::of(const EraseRun &run)
{
    Findings findings;
    CautionCount cautions;
    findings.folders = std::int64_t(run.folderUrlsToDeleteDict().size());
    for (const QueueArray::Item &item : run.queueArray()->items()) {
        ++findings.files;
        findings.bytes += std::max(item->filesize(), 0.0);
        cautions.add(item->scanFacts());
    }
    findings.links = cautions.links;
    findings.hardLinks = cautions.hardLinks;
    findings.copyOnWrite = cautions.copyOnWrite();
    return findings;
}

QString Findings::text(std::int64_t method, bool leavesLinkTargets) const
{
    QString lines = QStringLiteral("Found:   %1 (%2) and %3\nMethod:  %4\n")
                        .arg(counted(files, "file", "files"), BytesFormatter::formatBytes(bytes),
                             counted(folders, "folder", "folders"), MethodList::nameOf(method));
    if (links > 0)
        lines += QStringLiteral("Caution: %1; the files they point to will be %2\n")
                     .arg(counted(links, "symbolic link", "symbolic links"),
                          leavesLinkTargets ? QStringLiteral("left alone")
                                            : QStringLiteral("overwritten"));
    if (hardLinks > 0)
        lines += QStringLiteral("Caution: %1; what the other names hold is overwritten with them\n")
                     .arg(counted(hardLinks, "file has other names (hard links)",
                                  "files have other names (hard links)"));
    if (copyOnWrite > 0)
        lines +=
            QStringLiteral("Caution: %1 on a file system that writes new blocks instead of the "
                           "old ones; overwriting does not reach the old data\n")
                .arg(counted(copyOnWrite, "file is", "files are"));
    return lines;
}

QString Findings::question() const
{
    if (files == 0)
        return QStringLiteral("Erase %1? [y/N] ").arg(counted(folders, "folder", "folders"));
    return QStringLiteral("Erase %1? [y/N] ").arg(counted(files, "file", "files"));
}
