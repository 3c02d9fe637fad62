#pragma once

#include "ui/DesignColors.h"

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

/// What the drawn controls have in common.
///
/// Thread: main
/// Units:  logical pixels
namespace ControlPaint {

inline constexpr double radius = 4;

/// A rounded box with its edge inside; an invalid ground leaves the edge alone.
void box(QPainter &painter, const QRectF &rect, const QColor &ground, const QColor &edge,
         double cornerRadius = radius);
void fill(QPainter &painter, const QRectF &rect, const QColor &ground,
          double cornerRadius = radius);

/// The soft shadow of a box that lies `drop` above its ground. Drawn outside of the box only.
void shadow(QPainter &painter, const QRectF &box, const QColor &color, double blur, double drop);
/// The shadow of menus and lists.
void menuShadow(QPainter &painter, const QRectF &box);
/// The shadow of sheets and cards over a view.
void cardShadow(QPainter &painter, const QRectF &box);
/// How far menuShadow() reaches at most.
inline constexpr int menuShadowReach = 36;

/// One line of text in the middle of a control, elided at the end where it does not fit. The eye
/// takes the middle of the letters for the middle of the text, so it stands a little higher than
/// its line. Answers the place that the text takes.
QRectF text(QPainter &painter, const QRectF &rect, const QString &text, Qt::Alignment horizontal);

/// The arrow head of a selector, its tip at `tip`.
void arrowHead(QPainter &painter, const QPointF &tip, const QColor &color);

} // namespace ControlPaint
