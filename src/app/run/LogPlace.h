#pragma once

#include "platform/SystemCalls.h"

#include <QByteArray>

class EraseRun;

/// Whether a file that a run writes, its log above all, is among what is to be erased. A log is
/// emptied when it is opened, so what it held would be gone without having been overwritten.
///
/// Files and folders are known by device and inode, so by whatever names, links and mounts. Links
/// count where what they lead to is erased: `linkTargets` is LastLink::Stop where it is left alone.
///
/// Thread:  any
/// Blocks:  on disk I/O: a look at each link, and at what has the file's inode number or name
/// Failure: what cannot be looked at is no conflict
namespace LogPlace {

/// Whether both name one file; one that is not there yet, by its folder and name.
bool isSameFile(const QByteArray &one, const QByteArray &other, SystemCalls::LastLink linkTargets);
/// The file stands, or would stand, in the folder or below it. A link to a folder holds nothing.
bool isInFolder(const QByteArray &file, const QByteArray &folder);

/// Nothing stands there that would be emptied, and it is in no folder that the run is to remove.
bool isFree(const QByteArray &file, const EraseRun &run);
/// A queued name leads to the file.
bool isQueued(const QByteArray &file, const EraseRun &run, SystemCalls::LastLink linkTargets);
/// It stands in a folder that the run is to remove.
bool isInFolder(const QByteArray &file, const EraseRun &run);

} // namespace LogPlace
