#pragma once

#include "kit/ForwardingSystemCalls.h"

#include <algorithm>
#include <atomic>

/// Keeps count of the descriptors that are open, and of the most that were open at once.
class RecordingDescriptors : public ForwardingSystemCalls
{
  public:
    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        return opened(ForwardingSystemCalls::open(folder, path, access, lastLink));
    }
    int openFolderWithoutLinks(int folder, const char *path) override
    {
        return opened(ForwardingSystemCalls::openFolderWithoutLinks(folder, path));
    }
    int reopen(int handle, Access access) override
    {
        return opened(ForwardingSystemCalls::reopen(handle, access));
    }
    int close(int fd) override
    {
        --openNow_;
        return ForwardingSystemCalls::close(fd);
    }

    [[nodiscard]] int openNow() const { return openNow_; }
    [[nodiscard]] int mostOpen() const { return mostOpen_; }

  private:
    int opened(int result)
    {
        if (result >= 0) {
            const int now = ++openNow_;
            mostOpen_ = std::max(mostOpen_.load(), now);
        }
        return result;
    }

    std::atomic<int> openNow_ = 0;
    std::atomic<int> mostOpen_ = 0;
};
