#pragma once

#include "platform/PlatformData.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <vector>

/// The call by which a second start leaves what it was given to the one that runs: Open of
/// org.freedesktop.Application where there are files, Activate where there are none. Starts nothing
/// on demand. The files travel as percent-encoded locations, since texts on the bus are UTF-8 and
/// names need not be.
///
/// Thread: main
/// Blocks: until the other one has answered, at most for the limit
namespace ApplicationHandOver {

enum class Outcome {
    Accepted,
    Unanswered, ///< nobody owns the name, or its owner left or kept silent
    Refused     ///< by its owner or by the bus
};

struct Answer
{
    Outcome outcome = Outcome::Refused;
    QString cause; ///< the bus's own words; empty where it was accepted
};

/// `paths` are absolute. On the connection of this name; the session bus where it is empty.
Answer call(const QString &connection, const std::vector<QByteArray> &paths,
            const PlatformData &platformData, std::chrono::milliseconds limit);

} // namespace ApplicationHandOver
