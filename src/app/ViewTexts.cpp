#include "app/ViewTexts.h"

#include "support/BytesFormatter.h"
#include "support/NumberText.h"
#include "support/SecondsToString.h"
#include "support/TimeFormatter.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

/// From here on a run's count of files says of how many.
constexpr std::int64_t manyFiles = 1000;

QString translated(const char *text)
{
    return QCoreApplication::translate("ViewTexts", text);
}

/// `text` has "%1" for the number; `one` is its form for 1.
QString counted(std::int64_t count, const char *one, const char *many)
{
    return count == 1 ? translated(one) : translated(many).arg(ViewTexts::number(count));
}

bool isAmount(double bytes)
{
    return bytes > 0 && bytes <= NumberText::largestShown;
}

} // namespace

QString ViewTexts::number(std::int64_t count)
{
    return NumberText::grouped(count);
}

QString ViewTexts::files(std::int64_t count)
{
    return counted(count, "1 file", "%1 files");
}

QString ViewTexts::foldersToRemove(std::int64_t count)
{
    if (count <= 0)
        return translated("No folders");
    return counted(count, "1 folder, removed once it is empty",
                   "%1 folders, removed once they are empty");
}

QString ViewTexts::size(double bytes)
{
    return BytesFormatter::formatBytes(std::max(bytes, 0.0));
}

QString ViewTexts::work(double bytes, std::int64_t passes)
{
    if (!isAmount(bytes) || passes <= 0)
        return translated("Nothing to write");
    return translated("%1 to write in %2")
        .arg(size(bytes * double(passes)), ViewTexts::passes(passes));
}

QString ViewTexts::passes(std::int64_t count)
{
    return counted(count, "1 pass", "%1 passes");
}

QString ViewTexts::methodLine(const QString &name)
{
    return translated("Wipe method: %1").arg(name);
}

std::int64_t ViewTexts::percentage(double done, double total)
{
    if (!(total > 0) || !(done > 0))
        return 0;
    if (done >= total)
        return 100;
    // In this order whole percentages stay whole, as long as nothing overflows.
    const bool isHuge = total > NumberText::largestShown;
    return NumberText::truncatedTo64Bits(isHuge ? done / total * 100 : done * 100 / total);
}

QString ViewTexts::percent(double done, double total)
{
    return translated("%1 %").arg(percentage(done, total));
}

QString ViewTexts::amount(double done, double total)
{
    return translated("%1 of %2").arg(size(done), size(total));
}

QString ViewTexts::timeRemaining(double seconds)
{
    return SecondsToString::approximateDuration(seconds);
}

QString ViewTexts::throughput(double bytesPerSecond)
{
    return translated("%1/s").arg(size(bytesPerSecond));
}

QString ViewTexts::elapsed(double seconds)
{
    return TimeFormatter::formatSeconds(seconds);
}

QString ViewTexts::wiped(std::int64_t files, std::int64_t total)
{
    if (total < manyFiles)
        return number(files);
    return translated("%1 of %2").arg(number(files), number(total));
}

std::optional<int> ViewTexts::currentPass(double credit, double size, int passes)
{
    if (!isAmount(size) || passes <= 0)
        return std::nullopt;
    const double done = std::floor(std::max(0.0, credit) / size * passes);
    return int(std::min(done + 1, double(passes)));
}

QString ViewTexts::pass(std::optional<int> pass, int passes)
{
    if (!pass)
        return translated("Pass --");
    return translated("Pass %1 of %2").arg(*pass).arg(passes);
}

QString ViewTexts::failures(const QString &failedFilesString)
{
    if (failedFilesString == QLatin1String("1"))
        return translated("1 file could not be erased.");
    return translated("%1 files could not be erased.").arg(failedFilesString);
}

QString ViewTexts::notOverwritten(std::int64_t errors)
{
    return counted(errors, "1 item was not overwritten or is still there.",
                   "%1 items were not overwritten or are still there.");
}

QString ViewTexts::stopped(std::int64_t unreached)
{
    return counted(unreached, "The run was stopped: 1 file was not erased.",
                   "The run was stopped: %1 files were not erased.");
}

QString ViewTexts::logProblem(const QString &problem)
{
    const QString text = translated("The log is not complete: %1").arg(problem);
    return text.endsWith(QLatin1Char('.')) ? text : text + QLatin1Char('.');
}

QString ViewTexts::ending(const QString &wipedFilesString, const QString &failedFilesString)
{
    return translated("Finished. %1. %2 failed.").arg(wipedFilesString, failedFilesString);
}

QString ViewTexts::releaseToAdd(std::int64_t items)
{
    return counted(items, "Release to add 1 item", "Release to add %1 items");
}

QString ViewTexts::theyJoin(std::int64_t files)
{
    if (files <= 0)
        return translated("Nothing is erased until you press Start.");
    return counted(files, "They join the 1 file already listed.",
                   "They join the %1 files already listed.");
}

QString ViewTexts::alreadyInTheList(std::int64_t files)
{
    return counted(files, "1 file is already in the list", "%1 files are already in the list");
}
