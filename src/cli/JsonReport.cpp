#include "cli/JsonReport.h"

#include "cli/MethodList.h"
#include "engine/WipeSchedule.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonObject entryOf(const ScanFailure &failure)
{
    QJsonObject entry{{QStringLiteral("path"), QString::fromUtf8(failure.path)},
                      {QStringLiteral("errno"), failure.errornr},
                      {QStringLiteral("message"), failure.errormsg}};
    if (!failure.path.isValidUtf8())
        entry.insert(QStringLiteral("path_base64"), QString::fromLatin1(failure.path.toBase64()));
    return entry;
}

} // namespace

QByteArray JsonReport::toJson() const
{
    QJsonArray failed;
    for (const ScanFailure &failure : failures)
        failed.append(entryOf(failure));
    const QJsonObject report{
        {QStringLiteral("version"), QCoreApplication::applicationVersion()},
        {QStringLiteral("method"),
         QJsonObject{{QStringLiteral("number"), qint64(method)},
                     {QStringLiteral("name"), MethodList::nameOf(method)},
                     {QStringLiteral("passes"), qint64(WipeSchedule::passes(method).size())}}},
        {QStringLiteral("files"),
         QJsonObject{{QStringLiteral("found"), qint64(found.files)},
                     {QStringLiteral("wiped"), qint64(filesWiped)},
                     {QStringLiteral("failed"), qint64(filesFailed)},
                     {QStringLiteral("remaining"), qint64(filesRemaining)}}},
        {QStringLiteral("bytes"), QJsonObject{{QStringLiteral("found"), found.bytes},
                                              {QStringLiteral("wiped"), bytesWiped}}},
        {QStringLiteral("failed"), failed},
        {QStringLiteral("folders"),
         QJsonObject{{QStringLiteral("found"), qint64(found.folders)},
                     {QStringLiteral("removed"), qint64(foldersRemoved)}}},
        {QStringLiteral("links"), qint64(found.links)},
        {QStringLiteral("hard_links"), qint64(found.hardLinks)},
        {QStringLiteral("elapsed_seconds"), elapsedSeconds},
    };
    return QJsonDocument(report).toJson();
}
