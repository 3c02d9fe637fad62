#include "ui/DropDrawing.h"

#include "ui/DesignColors.h"
#include "ui/Pictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>

namespace {

constexpr double width = 240;
constexpr double height = 176;
constexpr double cell = 12;
constexpr int columns = 8;
constexpr double firstColumn = 78; ///< middle of a square
constexpr double lowestRow = 73;
constexpr double squareRadius = 1.5;
constexpr double risePerRow = 1.6;
constexpr double outwards = 4;
/// Of the drawing, without what stands beside page and squares.
constexpr QRectF motif(60, 0, 120, height);

struct Row
{
    double side;
    std::array<double, columns> opacities;
};

/// From the line upwards, fainter and sparser; 0 is a place without square.
constexpr std::array<Row, 6> rows{{
    {10.0, {1.00, 1.00, 1.00, 1.00, 1.00, 1.00, 1.00, 1.00}},
    {9.4, {0.92, 0.80, 0.95, 0.00, 0.90, 0.92, 0.78, 0.95}},
    {8.4, {0.70, 0.85, 0.00, 0.75, 0.80, 0.60, 0.82, 0.00}},
    {7.2, {0.00, 0.60, 0.50, 0.66, 0.00, 0.62, 0.40, 0.58}},
    {6.0, {0.34, 0.00, 0.46, 0.00, 0.40, 0.00, 0.44, 0.00}},
    {4.8, {0.00, 0.22, 0.00, 0.30, 0.00, 0.18, 0.00, 0.26}},
}};

QColor faint(QColor color, double opacity)
{
    color.setAlphaF(float(opacity));
    return color;
}

QColor blue(double opacity)
{
    return faint(DesignColors::color(ColorRole::Blue), opacity);
}

void paintRow(QPainter &painter, const Row &row, double middle, const QColor &color)
{
    const double radius = std::min(squareRadius, row.side / 4);
    double x = firstColumn;
    for (const double opacity : row.opacities) {
        painter.setBrush(faint(color, opacity));
        painter.drawRoundedRect(QRectF(x - row.side / 2, middle - row.side / 2, row.side, row.side),
                                radius, radius);
        x += cell;
    }
}

void paintSquares(QPainter &painter, double spread, const QColor &color)
{
    double middle = lowestRow;
    for (const Row &row : rows) {
        paintRow(painter, row, middle, color);
        middle -= cell + risePerRow * spread;
    }
}

void paintLine(QPainter &painter)
{
    const QRectF line(36, 81.5, 168, 3);
    QLinearGradient gradient(line.left(), 0, line.right(), 0);
    gradient.setColorAt(0, blue(0));
    gradient.setColorAt(0.14, blue(1));
    gradient.setColorAt(0.86, blue(1));
    gradient.setColorAt(1, blue(0));
    painter.fillRect(line, gradient);
}

void paintPart(QPainter &painter, const QString &name, double shift)
{
    Pictures::paint(painter, name, QRectF(shift, 0, width, height));
}

/// The page without its folded corner.
QPainterPath pageShape()
{
    constexpr double corner = 6;
    QPainterPath page(QPointF(72, 84));
    page.lineTo(168, 84);
    page.lineTo(168, 138);
    page.lineTo(142, 164);
    page.lineTo(72 + corner, 164);
    page.arcTo(72, 164 - 2 * corner, 2 * corner, 2 * corner, 270, -90);
    page.closeSubpath();
    return page;
}

} // namespace

QSizeF DropDrawing::size()
{
    return {width, height};
}

void DropDrawing::paint(QPainter &painter, const QRectF &rect, double spread)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.translate(rect.topLeft());
    painter.scale(rect.width() / width, rect.height() / height);
    paintPart(painter, QStringLiteral("drop_folder"), -outwards * spread);
    paintPart(painter, QStringLiteral("drop_picture"), outwards * spread);
    paintPart(painter, QStringLiteral("drop_page"), 0);
    paintSquares(painter, spread, blue(1));
    paintLine(painter);
    painter.restore();
}

void DropDrawing::paintMotif(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.translate(rect.topLeft());
    painter.scale(rect.width() / motif.width(), rect.height() / motif.height());
    painter.translate(-motif.topLeft());
    painter.fillPath(pageShape(), color);
    paintSquares(painter, 0, color);
    painter.restore();
}
