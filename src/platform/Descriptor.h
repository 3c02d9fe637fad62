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
    /// `fd` may be the negative error number of the call that should have opened it.
    explicit Descriptor(int fd) : fd_(fd < 0 ? -1 : fd), error_(fd < 0 ? -fd : 0) {}
    Descriptor(Descriptor &&other) noexcept
        : fd_(std::exchange(other.fd_, -1)), error_(other.error_)
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        if (this != &other) {
            close();
            fd_ = std::exchange(other.fd_, -1);
            error_ = other.error_;
        }
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }
    /// -1 when closed.
    [[nodiscard]] int fd() const { return fd_; }
    /// 0, or the error number where the call that should have opened it failed.
    [[nodiscard]] int error() const { return error_; }

    void close()
    {
        if (fd_ >= 0)
            SystemCalls::current().close(fd_);
        fd_ = -1;
    }

  private:
    int fd_ = -1;
    int error_ = 0;
};
