#pragma once

#include "kit/FakeService.h"

#include <QDBusUnixFileDescriptor>

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

/// A login manager. Its lock is the writing end of a pipe; whoever holds the last copy of it holds
/// the lock.
class FakeLoginManager : public FakeService
{
  public:
    FakeLoginManager()
        : FakeService(QStringLiteral("org.freedesktop.login1"),
                      QStringLiteral("/org/freedesktop/login1"))
    {
        answerWith = [this](const Call &) { return QVariantList{makeLock()}; };
    }
    ~FakeLoginManager() override { closeReader(); }

    /// Whether the lock that was given last is held by anyone.
    [[nodiscard]] bool isHeld() const
    {
        struct pollfd end = {reader_, POLLIN, 0};
        return reader_ >= 0 && ::poll(&end, 1, 0) == 0;
    }
    [[nodiscard]] bool hasGivenLock() const { return reader_ >= 0; }

    void prepareForShutdown(bool isComing)
    {
        announce(QStringLiteral("org.freedesktop.login1.Manager"),
                 QStringLiteral("PrepareForShutdown"), {isComing});
    }

  private:
    QVariant makeLock()
    {
        closeReader();
        std::array<int, 2> ends = {-1, -1};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            qFatal("no pipe");
        reader_ = ends[0];
        QDBusUnixFileDescriptor lock;
        lock.giveFileDescriptor(ends[1]);
        return QVariant::fromValue(lock);
    }
    void closeReader()
    {
        if (reader_ >= 0)
            ::close(reader_);
        reader_ = -1;
    }

    int reader_ = -1;
};
