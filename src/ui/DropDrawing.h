#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The drawing of the drop view: a page that lifts off as squares above a bright line, between a
/// folder and a picture.
///
/// Thread: main
/// Units:  points of the drawing
class DropDrawing
{
  public:
    static QSizeF size();
    /// In the theme's form. With `spread` (0 to 1) its parts come apart: the squares by rows,
    /// folder and picture outwards.
    static void paint(QPainter &painter, const QRectF &rect, double spread = 0);
    /// Page and squares alone, as shapes in one colour.
    static void paintMotif(QPainter &painter, const QRectF &rect, const QColor &color);
};
