#pragma once

#include <QColor>
#include <QPixmap>
#include <QRectF>
#include <QSize>
#include <QString>

#include <optional>

class QPainter;

/// The application's own drawings, by exactly their name: resources ":/pictures/<name>.svg", drawn
/// from vectors at the device's ratio. One that has a dark form, "<name>_dark", shows it in the
/// dark theme.
///
/// Thread:  main
/// Failure: a name without picture draws nothing, its pixmap is null
namespace Pictures {

bool exists(const QString &name);
/// The drawing's own size in points; empty where there is none.
QSizeF sizeOf(const QString &name);
/// With a tint the drawing's shape is filled with that colour.
void paint(QPainter &painter, const QString &name, const QRectF &rect,
           std::optional<QColor> tint = std::nullopt);
QPixmap pixmap(const QString &name, const QSize &size, double devicePixelRatio,
               std::optional<QColor> tint = std::nullopt);

/// Fills `target` with the part `source` of the drawing, in the drawing's own points.
void paintPart(QPainter &painter, const QString &name, const QRectF &source, const QRectF &target);

} // namespace Pictures
