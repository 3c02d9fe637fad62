#pragma once

#include "platform/PlatformData.h"

#include <QByteArray>

#include <chrono>
#include <vector>

class ApplicationService;

/// At most one Vantorel a session: a start becomes the first one, or leaves what it was given to
/// the one that runs.
///
/// Thread:  main, before the event loop runs
/// Blocks:  on the running one's answer, at most for `patience` and a second; not at all without a
///          session bus
/// Failure: where the running one does not answer, this one goes on by itself and says so in the
///          system log; nothing that was given is lost. One that hung and awakes has the files,
///          too: they are queued in both, and queueing erases nothing
namespace SingleInstance {

/// What this start was given.
struct Start
{
    std::vector<QByteArray> paths; ///< absolute
    PlatformData platformData;
    std::chrono::milliseconds patience{2000};
};

enum class Standing {
    First,      ///< the service's name is ours: calls and later starts come here
    HandedOver, ///< another one has everything: to end now
    Alone       ///< there is no bus, or nobody answers on it: to go on; nothing will be heard
};

Standing begin(ApplicationService &service, const Start &start);

} // namespace SingleInstance
