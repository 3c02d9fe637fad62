#pragma once

#include <QSemaphore>

#include <chrono>
#include <thread>

/// How long the end of the process may take: what is still being destroyed after that is left, and
/// the process ends at once. It has to be made before what it is to cover, so that it goes last.
///
/// Thread:    one; the waiting has a thread of its own
/// Owns:      that thread, from start() on
/// Invariant: once it has gone, it ends nothing any more
class EndLimit
{
  public:
    EndLimit() = default;
    ~EndLimit();
    EndLimit(const EndLimit &) = delete;
    EndLimit &operator=(const EndLimit &) = delete;

    /// Once only.
    void start(std::chrono::milliseconds limit, int exitCode);

  private:
    QSemaphore hasGone_;
    std::thread wait_;
};
