#pragma once

#include "ui/ViewRuler.h"

#include <QRect>
#include <QSize>
#include <QString>

#include <optional>
#include <vector>

/// The arithmetic of windows: sizes, frames, edges and corners.
///
/// Thread: pure
/// Units:  logical pixels, y downwards
namespace WindowGeometry {

/// The height of a window's own header; it does not grow with the font.
inline constexpr int headerHeight = 37;
/// The least height of the content area that a window is first shown with, header included.
inline constexpr int leastFirstHeight = headerHeight + ViewRuler::smallestHeight;
inline constexpr int leastFirstWidth = ViewRuler::smallestWidth;
/// How far from the window's edge the mouse resizes it.
inline constexpr int resizeMargin = 6;
/// How far along an edge its corner reaches.
inline constexpr int cornerReach = 16;
inline constexpr int roundRadius = 10;

/// The content area that fits a view of this size under the header. Its top left corner stays where
/// it was: the window grows or shrinks to the right and downwards.
QRect contentRect(const QRect &content, const QSize &view);

/// The content area's first size: the natural one, cut to what the screen has, but not below the
/// least.
QSize firstContentSize(const QSize &natural, const QSize &available);

/// A remembered frame on the screens that there are now (their areas without panels): as it was
/// where its header can still be grasped, else moved into the nearest screen, and cut to fit it.
QRect restoredFrame(const QRect &saved, const std::vector<QRect> &screens, const QSize &least);

/// The window's edges that a press at this point resizes; none inside.
Qt::Edges edgesAt(const QPoint &point, const QSize &window);
Qt::CursorShape cursorFor(Qt::Edges edges);

/// Whether the frame fills its screen from one side to the other, at an edge: what a window manager
/// does that tiles.
bool isTiled(const QRect &frame, const QRect &available);
/// Of the window's corners: round only where a compositing manager lets the ground shine through.
int cornerRadius(bool isComposited, bool isTiled, bool isMaximised);

/// "x y w h", as a frame stands in the preferences.
QString textFromFrame(const QRect &frame);
/// Nothing where the text is no frame or has no area.
std::optional<QRect> frameFromText(const QString &text);

} // namespace WindowGeometry
