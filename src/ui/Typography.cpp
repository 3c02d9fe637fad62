#include "ui/Typography.h"

#include <QApplication>
#include <QFontInfo>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr double systemFontPixels = 13;
constexpr double smallestPixels = 12;

struct Measure
{
    double size;
    double line;
    QFont::Weight weight;
};

Measure measure(TextStyle style)
{
    switch (style) {
    case TextStyle::Result:
        return {28, 36, QFont::DemiBold};
    case TextStyle::Headline:
        return {24, 32, QFont::DemiBold};
    case TextStyle::Heading:
        return {20, 28, QFont::DemiBold};
    case TextStyle::DialogTitle:
        return {15, 20, QFont::DemiBold};
    case TextStyle::Value:
        return {14, 20, QFont::DemiBold};
    case TextStyle::Body:
        return {13, 20, QFont::Normal};
    case TextStyle::BodyMedium:
        return {13, 20, QFont::Medium};
    case TextStyle::BodyStrong:
        return {13, 20, QFont::DemiBold};
    case TextStyle::Small:
        return {12, 16, QFont::Normal};
    case TextStyle::SmallMedium:
        return {12, 16, QFont::Medium};
    case TextStyle::SmallStrong:
        return {12, 20, QFont::DemiBold};
    case TextStyle::Description:
        return {12, 18, QFont::Normal};
    }
    return {systemFontPixels, 20, QFont::Normal};
}

} // namespace

double Typography::factorFor(double pixels)
{
    return std::clamp(pixels / systemFontPixels, 1.0, 1.6);
}

int Typography::pixelSizeFor(TextStyle style, double factor)
{
    return int(std::lround(std::max(measure(style).size * factor, smallestPixels)));
}

int Typography::lineHeightFor(TextStyle style, double factor)
{
    return int(std::lround(measure(style).line * factor));
}

double Typography::factor()
{
    const QFont font = QApplication::font();
    const int pixels = font.pixelSize() > 0 ? font.pixelSize() : QFontInfo(font).pixelSize();
    return factorFor(pixels);
}

int Typography::scaled(double length)
{
    return int(std::lround(length * factor()));
}

QFont Typography::font(TextStyle style)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixelSizeFor(style, factor()));
    font.setWeight(measure(style).weight);
    return font;
}

int Typography::lineHeight(TextStyle style)
{
    return lineHeightFor(style, factor());
}

QStringList Typography::wrapped(const QString &text, const QFont &font, int width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QStringList lines;
    for (const QString &paragraph : text.split(QLatin1Char('\n'))) {
        QTextLayout layout(paragraph, font);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            lines.append(paragraph.mid(line.textStart(), line.textLength()));
        }
        layout.endLayout();
    }
    return lines;
}
