#pragma once

/// The session's message bus.
///
/// Thread: main
/// Blocks: on connecting to the bus, once
namespace SessionBus {

/// Whether this process is connected to it.
bool isThere();

} // namespace SessionBus
