#pragma once

#include <QTimer>

#include <memory>

class QueueStatsObject;
class ScanningSheet;

/// Opens the scanning sheet and says in it what has been found so far, twice a second.
///
/// Thread:       main
/// Holds weakly: the sheet, which outlives it, and the statistics
class ScanningPresenter
{
  public:
    ScanningPresenter(ScanningSheet *sheet, const std::shared_ptr<QueueStatsObject> &stats);

    void open();
    void close();

  private:
    void refresh();

    ScanningSheet *sheet_;
    std::weak_ptr<QueueStatsObject> stats_;
    QTimer timer_;
};
