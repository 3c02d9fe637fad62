#pragma once

#include <QString>

/// Whether windows may be transparent: whether a compositing manager runs.
///
/// Thread:  main
/// Blocks:  on two answers of the X server
namespace Compositor {

/// `platformName` is the window system's, as Qt names it. On X11 the owner of the selection
/// _NET_WM_CM_S<screen> is asked for (Extended Window Manager Hints); Wayland always composites,
/// and so do platforms without screen. False where the X server does not answer.
bool isRunning(const QString &platformName);

} // namespace Compositor
