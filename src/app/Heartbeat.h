#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QTimer>

#include <vector>

/// Measures how late the event loop is: a timer of 5 ms, and how long after its time it is served.
/// For the benchmark; a run without it costs nothing.
///
/// Thread:  main
/// Blocks:  on disk I/O in the destructor, which writes the report
/// Units:   milliseconds
class Heartbeat
{
  public:
    explicit Heartbeat(QByteArray reportPath);
    ~Heartbeat();
    Heartbeat(const Heartbeat &) = delete;
    Heartbeat &operator=(const Heartbeat &) = delete;

    /// The value below which this part of the sorted values lies; 0 without values. Pure.
    static double percentile(std::vector<float> values, double part);

  private:
    void beat();

    QByteArray reportPath_;
    QTimer timer_;
    QElapsedTimer sinceLast_;
    QElapsedTimer sinceStart_;
    std::vector<float> lateness_;
    double largest_ = 0;
    double largestAt_ = 0; ///< seconds from the start on
};
