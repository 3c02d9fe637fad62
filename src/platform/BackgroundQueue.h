#pragma once

#include <chrono>
#include <functional>

/// Runs tasks on pool threads at raised priority, all signals blocked there. No task waits for
/// another: one that a disk never answers holds up none but itself.
///
/// Thread: any; what the submitting thread wrote before submit(), the task sees
namespace BackgroundQueue {

void submit(std::function<void()> task);
/// Waits for the tasks to end, no longer than the limit; whether they have.
bool finish(std::chrono::milliseconds limit);

} // namespace BackgroundQueue
