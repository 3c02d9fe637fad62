#pragma once

#include <functional>

/// Hand-over of work to the application's main thread, under any kind of QCoreApplication.
///
/// Calls run one after the other in the order in which they were handed over, also across threads
/// and also while one of them runs an event loop of its own. What a thread wrote before it handed a
/// call over, the call sees; what a waiting call wrote, the thread sees when it returns.
///
/// A QCoreApplication has to be there first. When its event loop has ended, calls stay unrun, and a
/// thread that waits for one goes on waiting.
///
/// Thread: any
namespace MainThread {

using Call = std::function<void()>;

[[nodiscard]] bool isCurrent();

/// Runs `call` on the main thread later, never at once. Does not block.
void post(Call call);

/// Runs `call` on the main thread and returns when it is done; from the main thread itself it runs
/// at once. Blocks on the main thread's event loop.
void callAndWait(const Call &call);

/// The same for two calls: `second` runs behind all that `first` posts. One wait instead of two.
/// Not from the main thread.
void callAndWait(const Call &first, const Call &second);

} // namespace MainThread
