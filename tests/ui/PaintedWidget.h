#pragma once

#include <QApplication>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <cmath>

/// Pictures of single widgets, and the colours expected in them.
namespace PaintedWidget {

/// The application's font, of the height for which the design's numbers are.
inline void useFontOf(int pixels)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    QApplication::setFont(font);
}

/// The widget and its children over this ground.
inline QImage of(QWidget &widget, const QColor &ground, double ratio = 1)
{
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(ground);
    QPainter painter(&image);
    widget.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

inline QColor over(const QColor &color, const QColor &ground)
{
    const auto part = [&color](int upper, int lower) {
        return int(std::lround(lower + (upper - lower) * double(color.alphaF())));
    };
    return {part(color.red(), ground.red()), part(color.green(), ground.green()),
            part(color.blue(), ground.blue())};
}

inline bool isAbout(const QColor &color, const QColor &expected, int tolerance = 2)
{
    const auto isNear = [tolerance](int one, int other) {
        return std::abs(one - other) <= tolerance;
    };
    return isNear(color.red(), expected.red()) && isNear(color.green(), expected.green()) &&
           isNear(color.blue(), expected.blue());
}

} // namespace PaintedWidget

/// Shows both colours where they differ.
#define COMPARE_COLOR(actual, expected)                                                            \
    do {                                                                                           \
        const QColor actualColor = (actual);                                                       \
        const QColor expectedColor = (expected);                                                   \
        if (!PaintedWidget::isAbout(actualColor, expectedColor))                                   \
            QCOMPARE(actualColor.name(), expectedColor.name());                                    \
    } while (false)
