#pragma once

#include "app/Announcer.h"
#include "app/CalloutPresenter.h"
#include "app/CautionCounter.h"
#include "app/ContentTransitions.h"
#include "app/ErasingPresenter.h"
#include "app/ErrorLogPresenter.h"
#include "app/FinishedPresenter.h"
#include "app/HeaderPresenter.h"
#include "app/MainOutlets.h"
#include "app/ReadyPresenter.h"
#include "app/ScanningPresenter.h"
#include "engine/WipeDescriptionObject.h"
#include "ui/QueueTableModel.h"

#include <cstdint>

class EraseRun;
class QueueTable;

/// All that the window says: the presenters of its views, and what they share, the queue's rows and
/// the voice for screen readers.
///
/// Thread:       main
/// Holds weakly: the outlets and the run, which outlive it
class Presenters
{
  public:
    Presenters(const MainOutlets &outlets, const EraseRun &run);

    void showMethod(std::int64_t method, const WipeDescriptionObject &description);
    void showSkipLinkTargets(bool skip);

    /// Something joined the queue or the folders to remove.
    void queueHasGrown();
    void queueIsEmpty();
    void sayAlreadyInTheList(std::int64_t files);
    /// So many items hang over the window, -1: none do.
    void showDrag(int items, MainView current);

    void beginRun(std::int64_t method, const QString &methodName);
    void showRun(const QueueObject *current, double bytesPerSecond, std::int64_t now);
    void showSummary(const QString &methodName, bool showsErrorButton,
                     const FinishedPresenter::Failures &failures);

    [[nodiscard]] ScanningPresenter &scanning() { return scanning_; }
    [[nodiscard]] CalloutPresenter &callout() { return callout_; }
    [[nodiscard]] ErrorLogPresenter &errorLog() { return errorLog_; }
    [[nodiscard]] HeaderPresenter &header() { return header_; }
    [[nodiscard]] Announcer &announcer() { return *announcer_; }

  private:
    void showRowsIn(QueueTable *table);
    void showCautions();

    MainOutlets outlets_;
    const EraseRun &run_;
    QueueTableModel rows_;
    CautionCounter cautions_;
    Announcer *announcer_; ///< the window owns it
    CalloutPresenter callout_;
    ErrorLogPresenter errorLog_;
    ReadyPresenter ready_;
    ErasingPresenter erasing_;
    FinishedPresenter finished_;
    HeaderPresenter header_;
    ScanningPresenter scanning_;
    bool skipLinkTargets_ = false;
};
