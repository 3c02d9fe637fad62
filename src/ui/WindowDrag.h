#pragma once

class QWidget;

/// Windows without a frame of the window system's are moved by what they show.
///
/// Thread: main
namespace WindowDrag {

/// Asks the window system to move the widget's window while the mouse button is down. Without a
/// window there nothing happens.
void begin(const QWidget &widget);

} // namespace WindowDrag
