#pragma once

#include "kit/ForwardingSystemCalls.h"

#include <QByteArray>

#include <functional>
#include <vector>

/// Writes down what is done to files that are opened for writing, in order: one short word a call
/// ("open", "seek", "write 4096", "sync", "status", "close", "unlink NAME"), and the bytes of each
/// pass. Does not sync the disk, which the test does not need.
class RecordingSystemCalls : public ForwardingSystemCalls
{
  public:
    [[nodiscard]] const std::vector<QByteArray> &calls() const { return calls_; }
    /// What each fsync() put to disk, in order.
    [[nodiscard]] const std::vector<QByteArray> &passes() const { return passes_; }
    /// How each attempt to open a file for writing ended, in order: its error number, or 0.
    [[nodiscard]] const std::vector<int> &attempts() const { return attempts_; }
    void forget()
    {
        calls_.clear();
        passes_.clear();
        attempts_.clear();
    }

    int open(int folder, const char *path, Access access, LastLink lastLink) override
    {
        const int fd = ForwardingSystemCalls::open(folder, path, access, lastLink);
        if (access == Access::ReadWrite) {
            calls_.push_back("open");
            attempts_.push_back(fd < 0 ? -fd : 0);
            file_ = fd;
        }
        return fd;
    }
    int status(int fd, FileStatus &status) override
    {
        if (fd == file_)
            calls_.push_back("status");
        return ForwardingSystemCalls::status(fd, status);
    }
    std::int64_t seek(int fd, std::int64_t offset) override
    {
        if (fd == file_) {
            calls_.push_back("seek");
            written_.clear();
        }
        return ForwardingSystemCalls::seek(fd, offset);
    }
    std::int64_t write(int fd, const void *bytes, std::size_t count) override
    {
        const std::int64_t written = ForwardingSystemCalls::write(fd, bytes, count);
        calls_.push_back("write " + QByteArray::number(qulonglong(count)));
        if (written > 0)
            written_.append(static_cast<const char *>(bytes), qsizetype(written));
        return written;
    }
    int sync(int fd) override
    {
        calls_.push_back(fd == file_ ? "sync" : "sync of another descriptor");
        passes_.push_back(written_);
        return 0;
    }
    int close(int fd) override
    {
        if (fd == file_) {
            calls_.push_back("close");
            file_ = -1;
        }
        return ForwardingSystemCalls::close(fd);
    }
    int unlink(int folder, const char *name) override
    {
        calls_.push_back("unlink " + QByteArray(name));
        return ForwardingSystemCalls::unlink(folder, name);
    }

  private:
    int file_ = -1;
    QByteArray written_;
    std::vector<QByteArray> calls_;
    std::vector<QByteArray> passes_;
    std::vector<int> attempts_;
};
