#pragma once

#include "platform/SystemCalls.h"

#include <QByteArray>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

/// What stands in a folder, for a list in which the user chooses. Names are bytes; nothing is left
/// out, and nothing but the folder is opened.
///
/// Units: bytes
namespace FolderListing {

struct Entry
{
    QByteArray name;
    FileKind kind = FileKind::Unknown;
    bool isFolder = false; ///< or a link that leads to one
    std::int64_t size = 0; ///< of a regular file

    [[nodiscard]] bool isHidden() const { return name.startsWith('.'); }
};

struct Result
{
    QByteArray folder;
    int error = 0; ///< 0, or why the folder could not be read to its end
    std::vector<Entry> entries;
};

/// Set to make a reading end early; nobody is told then.
using Cancel = std::shared_ptr<std::atomic<bool>>;

/// Folders first, then by name, without regard to case.
///
/// Thread: any
/// Blocks: on disk I/O
Result read(const QByteArray &folder, const std::atomic<bool> &isCancelled);

/// Reads on a thread of its own, so that a folder that never answers keeps nobody waiting; `then`
/// runs on the main thread.
///
/// Thread: main
/// Blocks: never
Cancel start(const QByteArray &folder, std::function<void(Result)> then);

} // namespace FolderListing
