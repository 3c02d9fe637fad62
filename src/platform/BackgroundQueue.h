#pragma once

#include <functional>

/// Runs tasks on pool threads at raised priority, all signals blocked there.
///
/// Thread: any; what the submitting thread wrote before submit(), the task sees
namespace BackgroundQueue {

void submit(std::function<void()> task);

} // namespace BackgroundQueue
