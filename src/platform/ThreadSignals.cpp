#include "platform/ThreadSignals.h"

#include <csignal>

void ThreadSignals::blockAll()
{
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}
