#include "ui/DialogGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int gapBelowMainWindow = 40;
constexpr int gapBelowOtherWindow = 60;

QRect inTheMiddle(const QSize &dialog, const QRect &usable)
{
    return {usable.x() + (usable.width() - dialog.width()) / 2,
            usable.y() + (usable.height() - dialog.height()) / 2, dialog.width(), dialog.height()};
}

/// Where an edge at `wanted` comes to lie. The upper bound wins where both cannot hold.
double kept(double wanted, double lowest, double highest)
{
    return std::min(std::max(wanted, lowest), highest);
}

} // namespace

DialogGeometry::Growth DialogGeometry::grown(const QRectF &field, const QSizeF &fitting,
                                             const QRect &window)
{
    const int more = int(fitting.height() - field.height());
    if (more <= 0)
        return {field, window};
    const double bottom = field.bottom() + more;
    return {QRectF(QPointF(field.x(), bottom - fitting.height()), fitting),
            window.adjusted(0, 0, 0, more)};
}

QRect DialogGeometry::placed(const QSize &dialog, const std::optional<Reference> &reference,
                             const QRect &screen, const QRect &usable)
{
    if (!reference)
        return inTheMiddle(dialog, usable);
    const int gap = reference->isMainWindow ? gapBelowMainWindow : gapBelowOtherWindow;
    const QRect &over = reference->frame;
    // From here y grows upwards from the screen's lower edge, x from its left one.
    const double floor = screen.y() + screen.height();
    const double usableY = floor - (usable.y() + usable.height());
    const double y =
        kept(floor - over.y() - dialog.height() - gap, usableY, usable.height() - dialog.height());
    const double middle = over.x() - screen.x() + over.width() / 2.0;
    const double x = kept(middle - dialog.width() / 2.0, usable.x() - screen.x(),
                          usable.width() - dialog.width());
    return {int(std::floor(screen.x() + x)), int(floor - y - dialog.height()), dialog.width(),
            dialog.height()};
}

DialogGeometry::Span DialogGeometry::buttonSpan(double windowWidth, std::optional<double> lastLeft,
                                                double fittedWidth, const RowMeasure &measure)
{
    const double gap = measure.gap;
    const double anchor = std::trunc(lastLeft ? *lastLeft + gap : windowWidth);
    const double width = std::max(fittedWidth, measure.leastWidth);
    const double left = anchor - width - gap;
    if (left >= 0)
        return {left, width};
    return {gap, width + std::trunc(left) - gap};
}

DialogGeometry::ModalResponse DialogGeometry::responseFor(std::int64_t clickedButton)
{
    switch (clickedButton) {
    case 1:
        return FirstButton;
    case 2:
        return SecondButton;
    case 3:
        return ThirdButton;
    case -1:
        return Cancelled;
    default:
        return Closed;
    }
}

std::int64_t DialogGeometry::nextButton(std::int64_t active, std::int64_t count, bool towardsLeft)
{
    const std::int64_t next = towardsLeft ? active + 1 : active - 1;
    if (next > count)
        return 1;
    return next < 1 ? count : next;
}
