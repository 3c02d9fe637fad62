#pragma once

#include <vector>

/// The smoothed throughput of a run, from the bytes that remain at each tick of one second. A tick
/// is a sample, so its length is the unit: bytes per second, averaged over the last 40.
///
/// Thread: any; time is the caller's
class Throughput
{
  public:
    static constexpr std::size_t samplesKept = 40;

    /// The mean of the samples in bytes per second. 0, and nothing recorded, where more remains
    /// than at the tick before: at the first tick, and when items joined the run.
    double calculateBps(double bytesRemaining);
    void reset();

    [[nodiscard]] const std::vector<double> &bpsHistoryArray() const { return bpsHistoryArray_; }
    [[nodiscard]] double bpsCheckPointValue() const { return bpsCheckPointValue_; }

  private:
    std::vector<double> bpsHistoryArray_; ///< oldest first
    double bpsCheckPointValue_ = 0;
};
