#pragma once

#include "app/run/EraseRun.h"
#include "platform/SystemCalls.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// The log file that `vantorel-cli erase` was asked to write, and what speaks against it. It is
/// made or emptied with the first thing that is logged; nothing here touches it.
///
/// Thread:  main
/// Blocks:  on disk I/O
/// Failure: a text; empty where nothing speaks against the file
class LogOption
{
  public:
    /// `path` as the user gave it, null for none; `startFolder` is what it is relative to. Where
    /// the targets of links are left alone, a link to the log does not speak against it.
    LogOption(const QByteArray &path, const QByteArray &startFolder,
              bool leavesLinkTargets = false);

    [[nodiscard]] bool isWanted() const { return !given_.isNull(); }
    /// Absolute.
    [[nodiscard]] const QByteArray &path() const { return path_; }

    /// Whether it can be written, and is neither the report nor one of the items, which are
    /// absolute paths, nor in a folder that is one. An empty report path is none.
    [[nodiscard]] QString problem(const std::vector<QByteArray> &items,
                                  const QByteArray &report) const;
    /// Whether it, or another name of it, is queued, or the run removes a folder above it, by
    /// whatever names: its content would be overwritten.
    [[nodiscard]] QString problem(const EraseRun &run) const;
    /// The line for a text that says what is wrong with it.
    [[nodiscard]] QString line(const QString &text) const;

  private:
    QByteArray given_;
    QByteArray path_;
    SystemCalls::LastLink linkTargets_;
};
