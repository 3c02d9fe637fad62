#pragma once

#include <QPainter>

#include <algorithm>
#include <cmath>

/// How wide a line of one pixel is for this painter, in logical pixels: a whole number of the
/// device's, so that no line is blurred at 125 or 150 %.
inline double hairline(const QPainter &painter)
{
    const double ratio = std::abs(painter.deviceTransform().m11());
    return std::max(1.0, std::floor(ratio)) / ratio;
}
