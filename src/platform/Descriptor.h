#pragma once

#include "platform/SystemCalls.h"

#include <utility>

/// An open file descriptor that is closed when it goes. For descriptors whose close cannot lose
/// anything: folders, handles, files opened for reading. A file that was written is closed by hand,
/// since its close may fail.
///
/// Owns: the descriptor
class Descriptor
{
  public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        if (this != &other) {
            close();
            fd_ = std::exchange(other.fd_, -1);
        }
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }
    /// -1 when closed, never an error number (AT_FDCWD is negative, too).
    [[nodiscard]] int fd() const { return fd_ < 0 ? -1 : fd_; }
    /// 0, or the error number where the call that should have opened it failed.
    [[nodiscard]] int error() const { return fd_ < 0 ? -fd_ : 0; }

    void close()
    {
        if (fd_ >= 0)
            SystemCalls::current().close(fd_);
        fd_ = -1;
    }

  private:
    int fd_ = -1; ///< below 0: closed, or the negative error number of the open call
};
