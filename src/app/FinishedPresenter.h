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

    /// Looks at the result strings alone; the counters begin anew while the view is there.
    /// `errors` is how many entries the error log has, files that failed and all others.
    void show(const QueueStatsObject &stats, const QString &methodName, bool showsErrorButton,
              std::int64_t errors);

  private:
    FinishedView *view_;
};
