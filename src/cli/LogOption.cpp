#include "cli/LogOption.h"

#include "app/run/LogPlace.h"
#include "engine/ProtectedPlaces.h"
#include "platform/PathBytes.h"
#include "support/LogPathCheck.h"

namespace {

QString wouldBeErased()
{
    return QStringLiteral("The log is among what is to be erased");
}

QString wouldStandInFolder()
{
    return QStringLiteral("The log would stand in a folder to be erased");
}

} // namespace

LogOption::LogOption(const QByteArray &path, const QByteArray &startFolder, bool leavesLinkTargets)
    : given_(path), path_(PathBytes::absolute(path, startFolder)),
      linkTargets_(leavesLinkTargets ? SystemCalls::LastLink::Stop : SystemCalls::LastLink::Follow)
{
    // Which absolute() takes away, and which says that a folder is meant.
    if (path.endsWith('/') && !path_.endsWith('/'))
        path_ += '/';
}

QString LogOption::problem(const std::vector<QByteArray> &items, const QByteArray &report) const
{
    const QString sentence = LogPathCheck::of(path_).sentence();
    if (!sentence.isEmpty())
        return line(sentence);
    if (!report.isEmpty() && LogPlace::isSameFile(path_, report, SystemCalls::LastLink::Follow))
        return line(QStringLiteral("The log and the report cannot be one file"));
    for (const QByteArray &item : items) {
        if (LogPlace::isSameFile(path_, item, linkTargets_))
            return line(wouldBeErased());
        if (ProtectedPlaces::refusal(item).isNull() && LogPlace::isInFolder(path_, item))
            return line(wouldStandInFolder());
    }
    return {};
}

QString LogOption::problem(const EraseRun &run) const
{
    if (LogPlace::isQueued(path_, run, linkTargets_))
        return line(wouldBeErased());
    return LogPlace::isInFolder(path_, run) ? line(wouldStandInFolder()) : QString();
}

QString LogOption::line(const QString &text) const
{
    const QString shown = given_.isEmpty() ? QStringLiteral("\"\"") : PathBytes::printable(given_);
    return shown + QStringLiteral(": ") + text;
}
