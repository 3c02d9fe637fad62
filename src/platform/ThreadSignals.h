#pragma once

/// Keeps a worker thread out of signal handling, so that no system call of its is interrupted and
/// the main thread alone hears of SIGINT and SIGTERM.
///
/// Thread: the calling one
namespace ThreadSignals {

void blockAll();

} // namespace ThreadSignals
