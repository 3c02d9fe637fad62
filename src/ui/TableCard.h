#pragma once

#include <QSizeF>

class QPainter;

/// The card that a table stands on: its rounded outline and the edge along it, in pieces for the
/// head and the rows, which are drawn apart.
///
/// Thread: main
namespace TableCard {

inline constexpr double radius = 6;

/// Clips to a card of this size, whose left upper corner is the painter's origin.
void clip(QPainter &painter, const QSizeF &size);
/// The edge, one line of whole device pixels inside the outline; over all else.
void paintEdge(QPainter &painter, const QSizeF &size);

} // namespace TableCard
