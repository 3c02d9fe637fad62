#pragma once

#include <QLatin1String>

/// The name by which the desktop knows the application: of its desktop entry, its icon, its name on
/// the session bus and its own interface there.
inline constexpr QLatin1String applicationId("org.vantorel.Vantorel");
