#pragma once

#include <QString>

#include <cstdint>

class FinishedView;
class QueueStatsObject;

/// Says in the finished view what became of the run.
///
/// Thread:       main
/// Holds weakly: the view, which outlives it
class FinishedPresenter
{
  public:
    explicit FinishedPresenter(FinishedView *view) : view_(view) {}

    struct Failures
    {
        std::int64_t errors = 0;    ///< entries of the error log, files that failed and all others
        std::int64_t unreached = 0; ///< among them, files that a stopped run did not come to
        QString log; ///< why lines of the log are missing, which is no failure of the run
    };

    /// Looks at the result strings alone; the counters begin anew while the view is there.
    void show(const QueueStatsObject &stats, const QString &methodName, bool showsErrorButton,
              const Failures &failures);

  private:
    FinishedView *view_;
};
