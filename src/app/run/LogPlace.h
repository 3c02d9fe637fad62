#pragma once

#include <QByteArray>

class EraseRun;

/// Whether a log file is among what is to be erased. It is emptied when it is opened, so what it
/// held would be gone without having been overwritten.
///
/// Thread:  any
/// Blocks:  on disk I/O
/// Failure: what cannot be looked at is no conflict
namespace LogPlace {

/// By whatever names and links.
bool isSameFile(const QByteArray &one, const QByteArray &other);
/// A queued name leads to the log.
bool isQueued(const QByteArray &log, const EraseRun &run);
/// The log stands in a folder that is to be removed.
bool isInFolder(const QByteArray &log, const EraseRun &run);

} // namespace LogPlace
