#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QSize>

class QPainter;

/// The soft shadow under what lies over the window's views: sheets and cards.
///
/// Thread: main
/// Units:  logical pixels
class SoftShadow
{
  public:
    struct Look
    {
        double sigma = 12; ///< of the blur
        int drop = 8;      ///< how much lower than its box it lies
        double light = 0.2;
        double dark = 0.5; ///< its greatest opacity in the dark theme

        bool operator==(const Look &) const = default;
    };

    explicit SoftShadow(const Look &look) : look_(look) {}

    void paint(QPainter &painter, const QRect &box);

    /// The shadow of a box of this size, `reach` wider on each side. Pure.
    static QImage image(const QSize &box, double sigma, double opacity);
    static int reach(double sigma);

  private:
    Look look_;
    QSize size_;
    bool isDark_ = false;
    QImage image_;
};
