#pragma once

#include <QString>

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
    void show(const QueueStatsObject &stats, const QString &methodName, bool showsErrorButton);

  private:
    FinishedView *view_;
};
