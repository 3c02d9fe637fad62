#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

/// SIGINT and SIGTERM: the first one is told on the main thread, the second ends the process at
/// once, with exit code 128 and the signal's number. A signal that the caller had ignored stays so.
///
/// Thread: main; one object per process
class StopSignals
{
  public:
    explicit StopSignals(std::function<void(int signal)> stop);

  private:
    std::function<void(int)> stop_;
    std::unique_ptr<QSocketNotifier> notifier_;
};
