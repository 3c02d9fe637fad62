#pragma once

#include <QString>

#include <cstdint>

class Announcer;
class EraseRun;
class ErasingView;
class QueueObject;
class QueueTableModel;

/// Says in the erasing view how far a run is. What it says stays until the next refresh(), which
/// comes twice a second, however fast the run is.
///
/// Thread:       main
/// Holds weakly: the view, the rows and the announcer, which outlive it
class ErasingPresenter
{
  public:
    ErasingPresenter(ErasingView *view, QueueTableModel *rows, Announcer *announcer);

    /// A run begins.
    void begin(std::int64_t method, const QString &methodName);
    void refresh(const EraseRun &run, const QueueObject *current, double bytesPerSecond,
                 std::int64_t now);

  private:
    void showFigures(const EraseRun &run, double bytesPerSecond, std::int64_t now);
    void showCurrent(const QueueObject *current);
    void showRows(int row, int pass, int passes);
    void announceProgress(const EraseRun &run);

    ErasingView *view_;
    QueueTableModel *rows_;
    Announcer *announcer_;
    std::int64_t announcedTenths_ = 0; ///< of the run
    bool hasAnnouncedFailure_ = false;
    int shownRow_ = 0; ///< the row in work at the refresh before
};
