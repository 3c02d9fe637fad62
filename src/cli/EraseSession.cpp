#include "cli/EraseSession.h"

#include "app/run/LogPlace.h"
#include "app/run/RunLog.h"
#include "app/run/RunTexts.h"
#include "cli/ExitCode.h"
#include "cli/ProgressLine.h"
#include "platform/PathBytes.h"
#include "support/Logger.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <set>

using namespace std::chrono_literals;

namespace {

QString failureLine(const QByteArray &path, const QString &text)
{
    const QString shown = path.isEmpty() ? QStringLiteral("\"\"") : PathBytes::printable(path);
    return shown + QStringLiteral(": ") + text;
}

bool isYes(const QByteArray &answer)
{
    const QByteArray word = answer.trimmed().toLower();
    return word == "y" || word == "yes";
}

} // namespace

EraseSession::EraseSession(EraseOptions options, QByteArray startFolder)
    : options_(std::move(options)), startFolder_(std::move(startFolder)),
      console_(options_.isQuiet, options_.printsJson),
      log_(options_.logPath, startFolder_, options_.leavesLinkTargets)
{
    if (log_.isWanted())
        Logger::shared().setLogFilePath(log_.path());
    if (!options_.reportPath.isNull())
        reportFile_.emplace(options_.reportPath);
}

EraseSession::~EraseSession() = default;

void EraseSession::start()
{
    if (!options_.isConfirmed && !options_.isDryRun && !console_.isInteractive()) {
        console_.sayError(QStringLiteral(
            "vantorel-cli: no terminal to ask on; add --yes to erase without asking"));
        end(ExitCode::NothingErased);
        return;
    }
    if (interruptedBy_ != 0) {
        conclude();
        return;
    }
    if (log_.isWanted() && !isAllRight(log_.problem(itemPaths(), reportPath())))
        return;
    scanner_->setDelegate(weak_from_this());
    scanner_->setQueueStatsObject(run_.queueStatsObject());
    scanner_->setSkipLinkTargets(options_.leavesLinkTargets);
    scanner_->scanAndMakeObjects(scanItems());
}

std::vector<QByteArray> EraseSession::itemPaths() const
{
    std::vector<QByteArray> items;
    for (const QByteArray &path : options_.paths)
        items.push_back(PathBytes::absolute(path, startFolder_));
    return items;
}

ScanItems EraseSession::scanItems() const
{
    const std::vector<QByteArray> items = itemPaths();
    return {items.begin(), items.end()};
}

void EraseSession::stop(int signal)
{
    interruptedBy_ = signal;
    scanner_->cancelScan();
    wipeController_->stopWiping();
    if (answerNotifier_) {
        answerNotifier_.reset();
        console_.ask(QStringLiteral("\n"));
        conclude();
    }
}

void EraseSession::scanFailed(const ScanFailures &failures)
{
    for (const ScanFailure &failure : failures)
        console_.sayError(failureLine(failure.path, failure.errormsg));
    scanFailures_ = failures;
}

void EraseSession::newObjectsForQueue(ScanReport report)
{
    run_.addObjectsFromArray(std::move(report.files));
    run_.addFolderObjectsToQueueFromDict(std::move(report.folders));
    findings_ = Findings::of(run_);
    if (interruptedBy_ != 0) {
        // An old log is left as it is: the scan may have been stopped before it came to it.
        if (log_.isWanted() && !options_.isDryRun && LogPlace::isFree(log_.path(), run_))
            RunLog::scanCancelled();
        conclude();
    } else if (findings_.isEmpty() && scanFailures_.empty()) {
        console_.sayError(QStringLiteral("vantorel-cli: nothing to do"));
        end(ExitCode::NothingErased);
    } else if (isAllRight(log_.isWanted() ? log_.problem(run_) : QString()) && openReport()) {
        proceed();
    }
}

/// What was found can be reported: goes on as far as the options say.
void EraseSession::proceed()
{
    if (findings_.isEmpty()) {
        conclude();
    } else if (options_.isDryRun || options_.isConfirmed) {
        console_.say(findings_.text(options_.method, options_.leavesLinkTargets));
        options_.isDryRun ? conclude() : erase();
    } else {
        ask();
    }
}

QByteArray EraseSession::reportPath() const
{
    return PathBytes::absolute(options_.reportPath, startFolder_);
}

bool EraseSession::openReport()
{
    if (!reportFile_)
        return true;
    const QString inFolder = QStringLiteral("The report would stand in a folder to be erased");
    return isAllRight(LogPlace::isInFolder(reportPath(), run_)
                          ? failureLine(options_.reportPath, inFolder)
                          : reportFile_->open());
}

/// Otherwise says what is not, and ends.
bool EraseSession::isAllRight(const QString &problem)
{
    if (problem.isEmpty())
        return true;
    console_.sayError(problem);
    end(ExitCode::NothingErased);
    return false;
}

/// The first thing that is logged makes the file.
bool EraseSession::startLog()
{
    if (!log_.isWanted())
        return true;
    RunLog::runStarted(options_.method, run_);
    return isAllRight(logProblem());
}

/// Empty where all that was logged stands in the file.
QString EraseSession::logProblem() const
{
    const QString problem = log_.isWanted() ? Logger::shared().logFileProblem() : QString();
    return problem.isEmpty() ? problem : log_.line(problem);
}

void EraseSession::ask()
{
    // What was typed before the question is no answer to it.
    StandardStreams::discardInput();
    console_.ask(findings_.text(options_.method, options_.leavesLinkTargets) +
                 findings_.question());
    answerNotifier_ =
        std::make_unique<QSocketNotifier>(StandardStreams::Input, QSocketNotifier::Read);
    QObject::connect(answerNotifier_.get(), &QSocketNotifier::activated, answerNotifier_.get(),
                     [this] { readAnswer(); });
}

void EraseSession::readAnswer()
{
    const QByteArray bytes = StandardStreams::read(StandardStreams::Input);
    answer_ += bytes;
    if (!bytes.isEmpty() && !answer_.contains('\n'))
        return;
    // The notifier is in the middle of telling this.
    answerNotifier_->setEnabled(false);
    answerNotifier_.release()->deleteLater();
    if (isYes(answer_)) {
        erase();
        return;
    }
    console_.say(QStringLiteral("Nothing was erased.\n"));
    end(ExitCode::NothingErased);
}

void EraseSession::erase()
{
    if (!startLog())
        return;
    run_.begin(QDateTime::currentSecsSinceEpoch());
    elapsed_.start();
    wipeController_->setDelegate(weak_from_this());
    wipeController_->setQueueArray(run_.queueArray());
    wipeController_->setWipeMethod(options_.method);
    wipeController_->setSkipLinkTargets(options_.leavesLinkTargets);
    wipeController_->startWiping();
    if (console_.showsProgress())
        startTimers();
}

void EraseSession::startTimers()
{
    const auto sample = [this] { bytesPerSecond_ = run_.updateBPSValue(); };
    QObject::connect(&bpsTimer_, &QTimer::timeout, &bpsTimer_, sample);
    QObject::connect(&drawTimer_, &QTimer::timeout, &drawTimer_, [this] { drawProgress(); });
    // One sample is the bytes of one second.
    bpsTimer_.setTimerType(Qt::PreciseTimer);
    bpsTimer_.start(1s);
    drawTimer_.start(500ms);
    sample();
    drawProgress();
}

void EraseSession::drawProgress()
{
    const QueueStatsObject &stats = *run_.queueStatsObject();
    const double files = double(findings_.files);
    const double filesDone = files - double(stats.totalFilesRemaining());
    const std::shared_ptr<QueueObject> current = wipeController_->currentObject();
    console_.drawProgress(ProgressLine::text(
        {ProgressLine::fraction(stats.bytesWritten(), stats.totalBytes(), filesDone, files),
         bytesPerSecond_, stats.timeRemaining(),
         current ? PathBytes::printable(current->filename()) : QString()},
        console_.columns()));
}

void EraseSession::fileFailedToWipe(const std::shared_ptr<QueueObject> &object)
{
    run_.addFailure(object);
    const FailedFile &failed = run_.failedFiles().back();
    console_.sayError(failureLine(failed.path, RunTexts::failure(failed)));
    if (log_.isWanted())
        RunLog::fileFailed(failed);
}

void EraseSession::finishedWiping()
{
    bpsTimer_.stop();
    drawTimer_.stop();
    console_.clearProgress();
    run_.makeResultStrings(QDateTime::currentSecsSinceEpoch());
    // A folder may hold nothing but hidden files that wait to be overwritten; it stays with them.
    if (interruptedBy_ == 0)
        removeFolders();
    if (log_.isWanted()) {
        RunLog::foldersRemoved(run_);
        RunLog::runEnded(options_.method, run_);
    }
    conclude();
}

void EraseSession::removeFolders()
{
    const FolderSweep sweep = run_.deleteFolders();
    foldersRemoved_ = qsizetype(findings_.folders) - qsizetype(sweep.kept.size());
    EraseRun::forgetRemoved(scanFailures_, sweep);
    for (const FailedFile &failed : run_.failedFiles()) {
        if (failed.removedWithFolder)
            console_.sayError(failureLine(failed.path, RunTexts::failure(failed)));
    }
    sayKept(sweep.kept);
}

/// A folder that stays because something in it failed is explained by that.
void EraseSession::sayKept(const ScanFailures &folders)
{
    std::set<QByteArray> explained;
    for (const FailedFile &failed : run_.failedFiles()) {
        if (!failed.removedWithFolder)
            explained.insert(failed.path);
    }
    for (const ScanFailure &failure : scanFailures_)
        explained.insert(failure.path);
    for (const ScanFailure &folder : folders) {
        const auto inside = explained.lower_bound(folder.path + '/');
        const bool isExplained = inside != explained.end() && inside->startsWith(folder.path + '/');
        if (isExplained && folder.errornr == ENOTEMPTY)
            continue;
        console_.sayError(failureLine(folder.path, folder.errormsg));
        scanFailures_.push_back(folder);
        explained.insert(folder.path);
    }
}

void EraseSession::conclude()
{
    const JsonReport report = makeReport();
    if (elapsed_.isValid())
        saySummary(report);
    else if (interruptedBy_ != 0)
        console_.say(QStringLiteral("Nothing was erased.\n"));
    const QByteArray json = report.toJson();
    if (options_.printsJson)
        console_.writeJson(json);
    QStringList problems = {logProblem()};
    if (reportFile_ && reportFile_->isOpen())
        problems.append(reportFile_->write(json));
    problems.removeAll(QString());
    for (const QString &problem : problems)
        console_.sayError(problem);

    if (interruptedBy_ != 0)
        end(ExitCode::Signal + interruptedBy_);
    else if (!problems.isEmpty() || !isAllErased())
        end(ExitCode::Failed);
    else
        end(ExitCode::Erased);
}

/// Of a dry run: whether all could be looked at.
bool EraseSession::isAllErased() const
{
    const bool isFolderLeft = !options_.isDryRun && foldersRemoved_ < findings_.folders;
    return run_.failedFiles().empty() && !isFolderLeft && scanFailures_.empty();
}

JsonReport EraseSession::makeReport() const
{
    const QueueStatsObject &stats = *run_.queueStatsObject();
    JsonReport report;
    report.method = options_.method;
    report.found = findings_;
    report.filesWiped = stats.totalFilesWiped();
    report.filesFailed = stats.filesFailed();
    report.filesRemaining = stats.totalFilesRemaining();
    for (const QueueArray::Item &item : run_.queueArray()->items()) {
        if (item->status() == QueueObject::Wiped)
            report.bytesWiped += std::max(item->filesize(), 0.0);
    }
    report.foldersRemoved = foldersRemoved_;
    report.elapsedSeconds = elapsed_.isValid() ? double(elapsed_.elapsed()) / 1000 : 0;
    for (const FailedFile &failed : run_.failedFiles())
        report.failures.push_back({failed.path,
                                   failed.item ? static_cast<int>(failed.item->errornr()) : 0,
                                   RunTexts::failure(failed)});
    report.failures.insert(report.failures.end(), scanFailures_.begin(), scanFailures_.end());
    return report;
}

void EraseSession::saySummary(const JsonReport &report)
{
    const QueueStatsObject &stats = *run_.queueStatsObject();
    QString text = QStringLiteral("Erased:  %1\nFailed:  %2\n")
                       .arg(stats.wipedFilesString(), stats.failedFilesString());
    if (report.filesRemaining > 0)
        text += QStringLiteral("Left:    %1 files, not touched\n").arg(report.filesRemaining);
    if (report.found.folders > 0)
        text += QStringLiteral("Folders: %1 of %2 removed\n")
                    .arg(report.foldersRemoved)
                    .arg(report.found.folders);
    text += QStringLiteral("Elapsed: %1\n").arg(stats.timeElapsedString());
    console_.say(text);
}

void EraseSession::end(int exitCode)
{
    if (hasEnded_)
        return;
    hasEnded_ = true;
    QCoreApplication::exit(exitCode);
}
