#pragma once

#include "platform/Descriptor.h"
#include "platform/SystemCalls.h"

#include <QByteArray>

#include <atomic>
#include <optional>

/// What stands at a path to which a log is to be written. To find that out makes, empties and
/// changes nothing; a regular file is opened for writing, and closed again.
struct LogPathFacts
{
    /// Of the name itself, a link is a link; Unknown for one of the kernel's own files. Nothing: it
    /// is free.
    std::optional<FileKind> kind;
    int error = 0; ///< why it cannot be looked at, written or made; 0 where nothing speaks against
};

/// The file that takes the log: a regular one, opened for appending. Anything else is refused
/// unopened: a FIFO would hang, opening alone sets some devices in motion, and a link might empty a
/// file that nobody named. The kernel's own files (proc, sysfs, ...) only look regular. Nothing
/// waits for a program that holds a lease on the file: that is EWOULDBLOCK.
///
/// Thread:  open() once, before the others; write() any
/// Owns:    the descriptor
/// Blocks:  on disk I/O
/// Failure: an error number (positive); what was written before stays
class LogFile
{
  public:
    static LogPathFacts look(const QByteArray &path);

    /// Makes the file, or empties the one that is there. 0 or the error number: EISDIR, ELOOP and
    /// EINVAL for a folder, a link, and anything else that is not regular.
    int open(const QByteArray &path);
    [[nodiscard]] bool isOpen() const { return file_.isOpen(); }
    /// Whether its last name is gone, and with it what is written. Thread: any
    [[nodiscard]] bool isRemoved() const;

    /// Puts the line at the end of the file with one call, so that no other line comes in between.
    /// A line that the disk took only a part of is ended before the next one.
    int write(const QByteArray &line);

  private:
    Descriptor file_;
    std::atomic<bool> isLineCut_ = false;
};
