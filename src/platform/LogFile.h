#pragma once

#include "platform/Descriptor.h"
#include "platform/SystemCalls.h"

#include <QByteArray>

#include <atomic>
#include <optional>

/// What stands at a path to which a log is to be written, found without making, emptying or
/// changing anything.
struct LogPathFacts
{
    std::optional<FileKind> kind; ///< of the name itself, a link is a link; nothing: it is free
    int error = 0; ///< why it cannot be looked at, written or made; 0 where nothing speaks against
};

/// The file that takes the log: a regular one, opened for appending. Anything else is refused
/// unopened: a FIFO would hang, opening alone sets some devices in motion, and a link might empty a
/// file that nobody named.
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

    /// Puts the line at the end of the file with one call, so that no other line comes in between.
    /// A line that the disk took only a part of is ended before the next one.
    int write(const QByteArray &line);

  private:
    Descriptor file_;
    std::atomic<bool> isLineCut_ = false;
};
