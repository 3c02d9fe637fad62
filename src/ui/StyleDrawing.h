#pragma once

class QPainter;
class QRect;
class QSize;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionMenuItem;
class QStyleOptionSlider;

/// The shapes in which VantorelStyle draws Qt's own widgets, in the current theme's colours.
///
/// Thread: main
/// Units:  logical pixels
namespace StyleDrawing {

/// Without rounded corners where the desktop draws no transparent windows.
void menuPanel(QPainter &painter, const QRect &rect, bool isRounded);
void menuItem(QPainter &painter, const QStyleOptionMenuItem &option);
QSize menuItemSize(const QStyleOptionMenuItem &option, const QSize &text);

void toolTipPanel(QPainter &painter, const QRect &rect, bool isRounded);

/// The bar that stands for the visible part: thin, over the content, and clear of its ends.
QRect scrollBarThumb(const QStyleOptionSlider &option);
void scrollBar(QPainter &painter, const QStyleOptionSlider &option);

void textField(QPainter &painter, const QStyleOption &option);
void button(QPainter &painter, const QStyleOptionButton &option);
void selector(QPainter &painter, const QStyleOption &option);
/// No ground at rest.
void toolButton(QPainter &painter, const QStyleOption &option);
void downArrow(QPainter &painter, const QRect &rect, bool isEnabled);
void headerSection(QPainter &painter, const QRect &rect);
void frame(QPainter &painter, const QRect &rect);
void focusFrame(QPainter &painter, const QRect &rect);

} // namespace StyleDrawing
