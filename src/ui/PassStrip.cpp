#include "ui/PassStrip.h"

#include "engine/WipeSchedule.h"
#include "ui/ControlPaint.h"
#include "ui/Typography.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

using WipeSchedule::Pass;
using CellKind = PassStrip::CellKind;

constexpr double widestCell = 24;
/// In a cell narrower than this the drawing is smaller.
constexpr double narrowestCell = 7;
constexpr double wideGap = 4;
constexpr double narrowGap = 2;
constexpr int mostWideGaps = 10;
constexpr double cellRadius = 2;
constexpr double frameOpacity = 0.55;
constexpr double toComeOpacity = 0.45;
constexpr int barDistance = 3;
constexpr int barHeight = 2;

struct Ink
{
    QColor line;
    QColor fill;
};

bool writesThreeBytes(std::span<const Pass> passes)
{
    return std::any_of(passes.begin(), passes.end(),
                       [](const Pass &pass) { return pass.kind == Pass::Kind::ThreeBytes; });
}

CellKind kindOf(const Pass &pass, bool isTable)
{
    if (pass.kind == Pass::Kind::Random)
        return CellKind::Random;
    // Kept on purpose: in a whole table of patterns the plain bytes are patterns like the others.
    if (pass.kind == Pass::Kind::ThreeBytes || isTable)
        return CellKind::Pattern;
    if (pass.bytes[0] == 0x00)
        return CellKind::Zeros;
    return pass.bytes[0] == 0xFF ? CellKind::HighBytes : CellKind::Pattern;
}

void paintFrame(QPainter &painter, const QRectF &cell, const QColor &color, double width,
                double radius)
{
    const double inset = width / 2;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, width));
    painter.drawRoundedRect(cell.adjusted(inset, inset, -inset, -inset), radius, radius);
}

void paintFaintFrame(QPainter &painter, const QRectF &cell, QColor color)
{
    color.setAlphaF(color.alphaF() * float(frameOpacity));
    paintFrame(painter, cell, color, 1, cellRadius);
}

/// Four rows of dots, every second one offset. In a narrow cell a row has one dot, at the left or
/// at the right.
void paintDots(QPainter &painter, const QRectF &cell, const QColor &color, double unit)
{
    // A scaled cell is of whole pixels, and may so lack a little of its columns' width.
    const int columns = int(std::floor((cell.width() / unit - 4) / 5 + 0.1));
    const bool isNarrow = columns < 2;
    const double radius = (isNarrow ? 0.95 : 1.05) * unit;
    const double pitch = isNarrow ? (cell.height() - 6.5 * unit) / 3 : 3.4 * unit;
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    for (int row = 0; row < 4; ++row) {
        const bool isOffset = row % 2 == 1;
        const double y = cell.center().y() + (row - 1.5) * pitch;
        for (int column = 0; column < std::max(columns, 1); ++column) {
            const double x = isNarrow ? (isOffset ? cell.width() - 2.45 * unit : 2.45 * unit)
                                      : ((isOffset ? 6 : 3.5) + 5 * column) * unit;
            painter.drawEllipse(QPointF(cell.left() + x, y), radius, radius);
        }
    }
}

void paintStrokes(QPainter &painter, const QRectF &cell, const QColor &color, double unit)
{
    const double inset = 1.5 * unit;
    const double rise = std::min(4.1 * unit, 0.86 * (cell.width() - 2 * inset));
    painter.setPen(QPen(color, 1.2 * unit, Qt::SolidLine, Qt::FlatCap));
    for (int stroke = -1; stroke <= 1; ++stroke) {
        const double y = cell.center().y() + stroke * 3.9 * unit;
        painter.drawLine(QPointF(cell.left() + inset, y + rise / 2),
                         QPointF(cell.right() - inset, y - rise / 2));
    }
}

void paintCell(QPainter &painter, const QRectF &cell, CellKind kind, const Ink &ink, double scale)
{
    const double unit = std::min(scale, cell.width() / narrowestCell);
    switch (kind) {
    case CellKind::Zeros:
        paintFrame(painter, cell, ink.line, 1.5, cellRadius - 0.5);
        return;
    case CellKind::HighBytes:
        ControlPaint::fill(painter, cell, ink.fill, cellRadius);
        return;
    case CellKind::Random:
        paintFaintFrame(painter, cell, ink.line);
        paintDots(painter, cell, ink.fill, unit);
        return;
    case CellKind::Pattern:
        paintFaintFrame(painter, cell, ink.line);
        paintStrokes(painter, cell, ink.fill, unit);
        return;
    }
}

void paintBar(QPainter &painter, const QRectF &cell)
{
    const QRectF bar(cell.left(), cell.bottom() + barDistance, cell.width(), barHeight);
    ControlPaint::fill(painter, bar, DesignColors::color(ColorRole::Blue), barHeight / 2.0);
}

} // namespace

PassStrip::PassStrip(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(tr("Passes"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void PassStrip::setMethod(std::int64_t method)
{
    method_ = method;
    passesChanged();
}

void PassStrip::setCurrentPass(std::optional<int> pass)
{
    if (pass == currentPass_)
        return;
    currentPass_ = pass;
    passesChanged();
}

void PassStrip::passesChanged()
{
    const int passes = int(WipeSchedule::passes(method_).size());
    setAccessibleDescription(currentPass_ ? tr("Pass %1 of %2").arg(*currentPass_).arg(passes)
                                          : QString::number(passes));
    update();
}

void PassStrip::setAlignment(Qt::Alignment alignment)
{
    alignment_ = alignment;
    update();
}

QList<CellKind> PassStrip::kinds(std::int64_t method)
{
    const std::span<const Pass> passes = WipeSchedule::passes(method);
    const bool isTable = writesThreeBytes(passes);
    QList<CellKind> kinds;
    for (const Pass &pass : passes)
        kinds.append(kindOf(pass, isTable));
    return kinds;
}

QList<QRectF> PassStrip::cells(int count, const QRectF &rect, double scale, Qt::Alignment alignment)
{
    if (count <= 0)
        return {};
    const double gap = std::round((count > mostWideGaps ? narrowGap : wideGap) * scale);
    const double fitting = std::floor((rect.width() - gap * (count - 1)) / count);
    const double width = std::max(1.0, std::min(std::round(widestCell * scale), fitting));
    const double all = width * count + gap * (count - 1);
    double x = alignment & Qt::AlignRight ? rect.right() - all : rect.left();
    QList<QRectF> cells;
    for (int i = 0; i < count; ++i, x += width + gap)
        cells.append(QRectF(x, rect.top(), width, rect.height()));
    return cells;
}

QList<QRectF> PassStrip::cellsOf(std::int64_t method, const QRectF &rect, double scale,
                                 Qt::Alignment alignment)
{
    return cells(int(WipeSchedule::passes(method).size()), rect, scale, alignment);
}

void PassStrip::paintCells(QPainter &painter, const QRectF &rect, std::int64_t method,
                           std::optional<int> currentPass, Qt::Alignment alignment)
{
    const double unit = Typography::factor();
    const QList<CellKind> kinds = PassStrip::kinds(method);
    const QList<QRectF> places = cellsOf(method, rect, unit, alignment);
    const QColor blue = DesignColors::color(ColorRole::Blue);
    const Ink rest{DesignColors::color(ColorRole::PassLine),
                   DesignColors::color(ColorRole::PassFill)};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < kinds.size(); ++i) {
        const bool isReached = currentPass && i < *currentPass;
        painter.setOpacity(currentPass && !isReached ? toComeOpacity : 1);
        paintCell(painter, places.at(i), kinds.at(i), isReached ? Ink{blue, blue} : rest, unit);
        if (currentPass && i + 1 == *currentPass)
            paintBar(painter, places.at(i));
    }
    painter.restore();
}

QSize PassStrip::sizeHint() const
{
    const int cellHeight = Typography::scaled(usualCellHeight);
    const QList<QRectF> all =
        cellsOf(method_, QRectF(0, 0, Typography::scaled(336), cellHeight), Typography::factor());
    return {all.isEmpty() ? 0 : int(all.last().right()), cellHeight + barDistance + barHeight};
}

QSize PassStrip::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void PassStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintCells(painter, QRectF(0, 0, width(), Typography::scaled(usualCellHeight)), method_,
               currentPass_, alignment_);
}
