#pragma once

#include "platform/SystemCalls.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// The places that are never erased: the root folder and the roots of /proc, /sys and /dev, by
/// whatever path they are reached, also where they are mounted below something that was named; the
/// kernel's own file systems, whose files are switches and not data; and the empty path, which
/// names nothing.
///
/// Thread: any
/// Blocks: on disk I/O
class ProtectedPlaces
{
  public:
    /// Looks the places up as they are now.
    ProtectedPlaces();

    /// Whether the folder is one of the places, or on one of the kernel's file systems.
    [[nodiscard]] bool contains(const FileStatus &folder, std::uint64_t fileSystemType) const;

    /// Why an item that was named is refused, in the user's words; a null text where it is not.
    static QString refusal(const QByteArray &path);
    /// The same for a folder that was met on the way.
    static QString refusalOnTheWay();

  private:
    std::vector<FileStatus> places_;
};
