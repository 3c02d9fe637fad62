#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>

#include <cstdint>
#include <optional>

/// The arithmetic of dialog boxes: how they grow, where they stand, where their buttons stand, what
/// a pressed button means.
///
/// Thread: pure
/// Units:  logical pixels, y downwards
namespace DialogGeometry {

struct Growth
{
    QRectF field; ///< of the information text, in the window
    QRect window;
};

/// The field takes its fitting size, and field and window grow downwards by what the text is higher
/// than the field, cut to whole pixels; the window's top edge stays. Nothing changes for a text
/// that is not higher: a window never shrinks.
Growth grown(const QRectF &field, const QSizeF &fitting, const QRect &window);

/// The window that a dialog is placed over.
struct Reference
{
    QRect frame;
    bool isMainWindow = false;
};

/// The frame of a dialog of this size: centred over its reference window, its top edge 40 below
/// that of the main window, 60 below that of any other, and kept inside `usable`, which is `screen`
/// without panels. In the middle of `usable` where there is no reference window.
///
/// Kept on purpose: the upper bounds are the width and the height of `usable`, not its right and
/// upper edge, both counted from the screen's lower left corner. So a panel at the left keeps a
/// dialog as far from the right edge, and one below as far from the top.
QRect placed(const QSize &dialog, const std::optional<Reference> &reference, const QRect &screen,
             const QRect &usable);

/// A button's frame in its row, along x.
struct Span
{
    double left = 0;
    double width = 0;

    bool operator==(const Span &) const = default;
};

/// The row's own lengths: 81 and 10, larger with larger fonts.
struct RowMeasure
{
    double leastWidth;
    double gap;
};

/// The row is filled from right to left: the first button ends a gap from the window's right edge,
/// each later one where the last one, at `lastLeft`, begins. One that would begin left of the
/// window begins a gap from its left edge and is narrowed by that much; after one that takes the
/// whole row the next may have no width at all.
///
/// With larger fonts `scale` makes the least width and the gap larger.
Span buttonSpan(double windowWidth, std::optional<double> lastLeft, double fittedWidth,
                const RowMeasure &measure);

/// What the modal session ends with.
enum ModalResponse : int {
    FirstButton = 1000,
    SecondButton = 1001,
    ThirdButton = 1002,
    Cancelled = -1,
    Closed = 0
};
ModalResponse responseFor(std::int64_t clickedButton);

/// The number of the default button after this one. Number 1 is the rightmost; after the leftmost
/// comes the rightmost again.
std::int64_t nextButton(std::int64_t active, std::int64_t count, bool towardsLeft);

} // namespace DialogGeometry
