#pragma once

#include <QByteArray>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

/// Holds a file for itself: who else opens it would wait for a minute.
class Lease
{
  public:
    explicit Lease(const QByteArray &path)
        : handler_(std::signal(SIGIO, SIG_IGN)), fd_(::open(path.constData(), O_RDWR | O_CLOEXEC)),
          isHeld_(fd_ >= 0 && ::fcntl(fd_, F_SETLEASE, F_WRLCK) == 0)
    {
    }
    ~Lease()
    {
        ::close(fd_);
        std::signal(SIGIO, handler_);
    }
    Lease(const Lease &) = delete;
    Lease &operator=(const Lease &) = delete;

    [[nodiscard]] bool isHeld() const { return isHeld_; }

  private:
    void (*handler_)(int);
    int fd_;
    bool isHeld_;
};
