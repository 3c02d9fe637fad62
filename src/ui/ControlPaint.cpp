#include "ui/ControlPaint.h"

#include "ui/Hairline.h"
#include "ui/InterfaceColorStyle.h"

#include <QPainter>
#include <QPixmapCache>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

/// How much of a box from 0 to `length` a blur leaves at each device pixel, along one axis.
std::vector<double> coverage(double length, double reach, double sigma, double ratio)
{
    const auto share = [sigma](double at) {
        return 0.5 * std::erfc(-at / (sigma * std::sqrt(2.0)));
    };
    std::vector<double> values(std::size_t(std::ceil((length + 2 * reach) * ratio)));
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double at = (double(i) + 0.5) / ratio - reach;
        values[i] = share(at) - share(at - length);
    }
    return values;
}

QPixmap shadowOf(const QSizeF &size, const QColor &color, double reach, double sigma, double ratio)
{
    const std::vector<double> columns = coverage(size.width(), reach, sigma, ratio);
    const std::vector<double> rows = coverage(size.height(), reach, sigma, ratio);
    QImage image(int(columns.size()), int(rows.size()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double alpha = color.alpha() * rows[std::size_t(y)] * columns[std::size_t(x)];
            line[x] = qPremultiply(
                qRgba(color.red(), color.green(), color.blue(), int(std::lround(alpha))));
        }
    }
    image.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(image);
}

double ratioOf(const QPainter &painter)
{
    return std::abs(painter.deviceTransform().m11());
}

} // namespace

void ControlPaint::fill(QPainter &painter, const QRectF &rect, const QColor &ground,
                        double cornerRadius)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect, cornerRadius, cornerRadius);
}

void ControlPaint::box(QPainter &painter, const QRectF &rect, const QColor &ground,
                       const QColor &edge, double cornerRadius)
{
    if (ground.isValid())
        fill(painter, rect, ground, cornerRadius);
    const double line = hairline(painter);
    const double inset = line / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(edge, line));
    painter.drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), cornerRadius - inset,
                            cornerRadius - inset);
}

void ControlPaint::shadow(QPainter &painter, const QRectF &box, const QColor &color, double blur,
                          double drop)
{
    const double ratio = ratioOf(painter);
    const double sigma = blur / 2;
    const double reach = std::ceil(sigma * 3);
    const QString key = QStringLiteral("vantorel/shadow/%1x%2/%3/%4/%5")
                            .arg(box.width())
                            .arg(box.height())
                            .arg(color.name(QColor::HexArgb))
                            .arg(blur)
                            .arg(ratio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = shadowOf(box.size(), color, reach, sigma, ratio);
        QPixmapCache::insert(key, pixmap);
    }
    painter.drawPixmap(box.topLeft() + QPointF(-reach, drop - reach), pixmap);
}

void ControlPaint::menuShadow(QPainter &painter, const QRectF &box)
{
    const QColor color =
        InterfaceColorStyle::isDarkMode() ? QColor(0, 0, 0, 128) : QColor(16, 24, 32, 56);
    shadow(painter, box, color, 28, 8);
}

void ControlPaint::cardShadow(QPainter &painter, const QRectF &box)
{
    shadow(painter, box, QColor(0, 0, 0, InterfaceColorStyle::isDarkMode() ? 128 : 52), 26, 8);
}

QRectF ControlPaint::text(QPainter &painter, const QRectF &rect, const QString &text,
                          Qt::Alignment horizontal)
{
    constexpr double belowMiddle = 3.5 / 13;
    const QFontMetricsF metrics = painter.fontMetrics();
    const QString shown = metrics.elidedText(text, Qt::ElideRight, rect.width());
    const double width = metrics.horizontalAdvance(shown);
    const double x = horizontal & Qt::AlignHCenter ? rect.center().x() - width / 2 : rect.left();
    const double baseline = rect.center().y() + painter.font().pixelSize() * belowMiddle;
    painter.drawText(QPointF(x, baseline), shown);
    return {x, baseline - metrics.ascent(), width, metrics.height()};
}

void ControlPaint::arrowHead(QPainter &painter, const QPointF &tip, const QColor &color)
{
    constexpr double reach = 3.5;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF{tip + QPointF(-reach, -reach), tip, tip + QPointF(reach, -reach)});
}
