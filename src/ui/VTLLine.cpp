#include "ui/VTLLine.h"

#include <QPainter>

VTLLine::VTLLine(const QString &name, QWidget *parent) : ThemedView(name, parent)
{
}

void VTLLine::buildColorsForDarkMode(bool isDark)
{
    buildColors(isDark, {{background, QLatin1String("bg")}});
}

void VTLLine::drawRect(QPainter &painter, const QRect &dirtyRect)
{
    if (const auto color = colorCache().color(background))
        painter.fillRect(dirtyRect, *color);
}
