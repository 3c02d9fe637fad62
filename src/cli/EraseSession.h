#pragma once

#include "app/run/EraseRun.h"
#include "cli/Console.h"
#include "cli/EraseOptions.h"
#include "cli/Findings.h"
#include "cli/JsonReport.h"
#include "cli/LogOption.h"
#include "cli/ReportFile.h"
#include "engine/WipeController.h"
#include "scan/FolderScannerController.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <optional>

class QSocketNotifier;

/// One `vantorel-cli erase`, from the scan over the question and the run to the summary. Ends the
/// application's event loop with the exit code.
///
/// Thread:  main
/// Owns:    the run, its scanner and its wipe controller
/// Failure: said on standard error and in the exit code (ExitCode)
class EraseSession : public FolderScannerControllerDelegate,
                     public WipeControllerDelegate,
                     public std::enable_shared_from_this<EraseSession>
{
  public:
    /// `startFolder` is what relative paths are relative to.
    EraseSession(EraseOptions options, QByteArray startFolder);
    ~EraseSession() override;

    void start();
    /// SIGINT or SIGTERM: the file in work is finished, then the run ends.
    void stop(int signal);

    [[nodiscard]] bool answers(FolderScannerControllerDelegate::Call) const override
    {
        return true;
    }
    [[nodiscard]] bool answers(WipeControllerDelegate::Call) const override { return true; }
    void newObjectsForQueue(ScanReport report) override;
    void scanFailed(const ScanFailures &failures) override;
    void fileFailedToWipe(const std::shared_ptr<QueueObject> &object) override;
    void finishedWiping() override;

  private:
    [[nodiscard]] std::vector<QByteArray> itemPaths() const;
    [[nodiscard]] ScanItems scanItems() const;
    void proceed();
    [[nodiscard]] QByteArray reportPath() const;
    bool openReport();
    bool isAllRight(const QString &problem);
    bool startLog();
    [[nodiscard]] QString logProblem() const;
    void ask();
    void readAnswer();
    void erase();
    void startTimers();
    void drawProgress();
    void removeFolders();
    void sayKept(const ScanFailures &folders);
    void conclude();
    [[nodiscard]] JsonReport makeReport() const;
    [[nodiscard]] bool isAllErased() const;
    void saySummary(const JsonReport &report);
    void end(int exitCode);

    EraseOptions options_;
    QByteArray startFolder_;
    Console console_;
    EraseRun run_;
    std::shared_ptr<FolderScannerController> scanner_ = FolderScannerController::create();
    std::shared_ptr<WipeController> wipeController_ = WipeController::create();
    std::optional<ReportFile> reportFile_;
    LogOption log_;
    std::unique_ptr<QSocketNotifier> answerNotifier_;
    QByteArray answer_;
    QTimer bpsTimer_;
    QTimer drawTimer_;
    QElapsedTimer elapsed_;
    Findings findings_;
    ScanFailures scanFailures_;
    qsizetype foldersRemoved_ = 0;
    double bytesPerSecond_ = 0;
    int interruptedBy_ = 0; ///< the signal's number
    bool hasEnded_ = false;
};
