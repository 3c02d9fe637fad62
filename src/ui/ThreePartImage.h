#pragma once

#include <QRectF>
#include <QString>

class QPainter;

/// One of the application's drawings, cut into a left cap, a middle and a right cap: the caps keep
/// their width, the middle is stretched. Drawn from the vectors, so sharp at any ratio; never
/// mirrored.
///
/// Thread:  main
/// Units:   points
/// Failure: a part without drawing or without width draws nothing
struct ThreePartImage
{
    /// What a part shows: this piece of the drawing of that name.
    struct Part
    {
        QString image;
        QRectF source;
    };

    Part lp; ///< left cap
    Part mp; ///< middle
    Part rp; ///< right cap

    static ThreePartImage makeThreepartImage(const QString &image, double leftCapWidth,
                                             double middleWidth, double rightCapWidth);

    /// Where the parts come to lie in a frame. Where it is narrower than both caps, they share it.
    struct Places
    {
        QRectF lp;
        QRectF mp;
        QRectF rp;
    };
    [[nodiscard]] Places places(const QRectF &frame) const;

    /// A frame higher than the drawing stretches its middle only: the edge's lines and corners at
    /// the top and the bottom keep their size, too.
    void draw(QPainter &painter, const QRectF &frame) const;
};
