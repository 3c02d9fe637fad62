#include "ui/ViewRuler.h"

#include <cmath>

ViewRuler::ViewRuler(QSize size, double factor) : size_(size), factor_(factor)
{
}

int ViewRuler::length(double length) const
{
    return int(std::lround(length * factor_));
}

int ViewRuler::left(double x) const
{
    return margin + length(x - margin);
}

int ViewRuler::right(double x) const
{
    return size_.width() - margin - length(naturalWidth - margin - x);
}

int ViewRuler::top(double y) const
{
    return length(y);
}

int ViewRuler::bottom(double y) const
{
    return size_.height() - length(naturalHeight - y);
}

int ViewRuler::across(double x) const
{
    return size_.width() / 2 + length(x - naturalWidth / 2);
}

int ViewRuler::down(double y) const
{
    return (size_.height() - length(naturalHeight)) / 2 + length(y);
}

QRect ViewRuler::centred(double x, double y, double width, double height) const
{
    return {across(x), down(y), length(width), length(height)};
}

QRect ViewRuler::line(int y, double height) const
{
    return {margin, y, size_.width() - 2 * margin, length(height)};
}
