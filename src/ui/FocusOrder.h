#pragma once

#include <QList>

class QWidget;

/// The way of the Tab key through a window: first the view, then the header.
///
/// Thread: main
namespace FocusOrder {

/// What Tab stops at below `window`: in the order of Qt's focus chain, and then `last` in the order
/// given.
QList<QWidget *> stops(QWidget *window, const QList<QWidget *> &last);
/// The stop after `current`, or before it; at the end it begins again. Null where there is none.
QWidget *next(const QList<QWidget *> &stops, const QWidget *current, bool forwards);

} // namespace FocusOrder
