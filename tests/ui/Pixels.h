#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

#include <cmath>

/// Looks at what a widget paints. Thread: main
namespace Pixels {

/// What the widget alone paints on a ground of this colour, with one pixel a point.
inline QImage painted(QWidget &widget, const QColor &ground = Qt::transparent)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

inline bool areNear(const QColor &one, const QColor &other, int tolerance = 1)
{
    const auto near = [tolerance](int a, int b) { return std::abs(a - b) <= tolerance; };
    return near(one.red(), other.red()) && near(one.green(), other.green()) &&
           near(one.blue(), other.blue()) && near(one.alpha(), other.alpha());
}

/// The colour that this one gives over an opaque one.
inline QColor over(const QColor &color, const QColor &below)
{
    const double alpha = color.alphaF();
    const auto mixed = [alpha](int top, int bottom) {
        return int(std::lround(top * alpha + bottom * (1 - alpha)));
    };
    return {mixed(color.red(), below.red()), mixed(color.green(), below.green()),
            mixed(color.blue(), below.blue())};
}

} // namespace Pixels

/// A colour at a place, with both written out where they differ.
#define COMPARE_PIXEL(image, x, y, expected)                                                       \
    QVERIFY2(Pixels::areNear((image).pixelColor(x, y), expected),                                  \
             qPrintable(QStringLiteral("%1 instead of %2")                                         \
                            .arg((image).pixelColor(x, y).name(QColor::HexArgb),                   \
                                 QColor(expected).name(QColor::HexArgb))))
