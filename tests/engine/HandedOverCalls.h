#pragma once

#include <QCoreApplication>

/// Runs all that was handed over to the main thread, what that hands over in turn, and what follows
/// from that; no chain here is longer.
inline void runHandedOverCalls()
{
    for (int link = 0; link < 3; ++link)
        QCoreApplication::sendPostedEvents();
}
