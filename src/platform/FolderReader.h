#pragma once

#include "platform/SystemCalls.h"

#include <array>
#include <cstddef>

/// Reads the entries of one open folder, without "." and "..". No more than one buffer of them is
/// in memory, however wide the folder is.
///
/// Thread: any; one thread at a time
/// Blocks: on disk I/O
/// Holds:  the descriptor, without owning it; its position moves
class FolderReader
{
  public:
    struct Entry
    {
        const char *name;                  ///< valid until the next call of next()
        FileKind kind = FileKind::Unknown; ///< Unknown where the file system does not say
    };

    explicit FolderReader(int folder) : folder_(folder) {}

    /// False at the end and after an error.
    bool next(Entry &entry);
    /// 0, or the error number that ended the reading.
    [[nodiscard]] int error() const { return error_; }

  private:
    bool fill();

    int folder_;
    int error_ = 0;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    alignas(8) std::array<std::byte, 32768> buffer_;
};
