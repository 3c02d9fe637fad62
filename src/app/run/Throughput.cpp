#include "app/run/Throughput.h"

#include <numeric>
#include <utility>

double Throughput::calculateBps(double bytesRemaining)
{
    const double delta = std::exchange(bpsCheckPointValue_, bytesRemaining) - bytesRemaining;
    if (delta < 0)
        return 0;
    bpsHistoryArray_.push_back(delta);
    if (bpsHistoryArray_.size() > samplesKept)
        bpsHistoryArray_.erase(bpsHistoryArray_.begin());
    const double sum = std::accumulate(bpsHistoryArray_.begin(), bpsHistoryArray_.end(), 0.0);
    return sum / double(bpsHistoryArray_.size());
}

void Throughput::reset()
{
    bpsHistoryArray_.clear();
    bpsCheckPointValue_ = 0;
}
