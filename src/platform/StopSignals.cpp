#include "platform/StopSignals.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

std::array<int, 2> wakePipe = {-1, -1};
volatile std::sig_atomic_t wasStopped = 0;

/// Only async-signal-safe calls, signal-safety(7).
void handle(int signal)
{
    if (wasStopped != 0)
        ::_exit(128 + signal);
    wasStopped = 1;
    const int interruptedCallsError = errno;
    const char number = static_cast<char>(signal);
    [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &number, 1);
    errno = interruptedCallsError;
}

void handleUnlessIgnored(int signal)
{
    struct sigaction old = {};
    if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler == SIG_IGN)
        return;
    struct sigaction action = {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

StopSignals::StopSignals(std::function<void(int)> stop) : stop_(std::move(stop))
{
    if (::pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        char number = 0;
        if (::read(wakePipe[0], &number, 1) == 1)
            stop_(number);
    });
    handleUnlessIgnored(SIGINT);
    handleUnlessIgnored(SIGTERM);
}
