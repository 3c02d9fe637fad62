#include "ui/ThreePartImage.h"

#include "ui/Pictures.h"

#include <QPainter>

#include <algorithm>

namespace {

/// Of the edge at the top and at the bottom, with its corners.
constexpr double edgeHeight = 4;

struct Band
{
    double sourceTop;
    double sourceHeight;
    double top;
    double height;
};

void drawBand(QPainter &painter, const ThreePartImage::Part &part, const QRectF &place,
              const Band &band)
{
    Pictures::paintPart(
        painter, part.image,
        QRectF(part.source.x(), band.sourceTop, part.source.width(), band.sourceHeight),
        QRectF(place.x(), band.top, place.width(), band.height));
}

void drawPart(QPainter &painter, const ThreePartImage::Part &part, const QRectF &place)
{
    const double sourceHeight = part.source.height();
    const double edge = std::min({edgeHeight, sourceHeight / 2, place.height() / 2});
    drawBand(painter, part, place, {0, edge, place.top(), edge});
    drawBand(painter, part, place,
             {edge, sourceHeight - 2 * edge, place.top() + edge, place.height() - 2 * edge});
    drawBand(painter, part, place, {sourceHeight - edge, edge, place.bottom() - edge, edge});
}

} // namespace

ThreePartImage ThreePartImage::makeThreepartImage(const QString &image, double leftCapWidth,
                                                  double middleWidth, double rightCapWidth)
{
    const QSizeF size = Pictures::sizeOf(image);
    const auto part = [&](double left, double width) {
        return Part{image, QRectF(left, 0, width, size.height())};
    };
    return {part(0, leftCapWidth), part(leftCapWidth, middleWidth),
            part(size.width() - rightCapWidth, rightCapWidth)};
}

ThreePartImage::Places ThreePartImage::places(const QRectF &frame) const
{
    const double left = std::min(lp.source.width(), frame.width() / 2);
    const double right = std::min(rp.source.width(), frame.width() / 2);
    return {QRectF(frame.x(), frame.y(), left, frame.height()),
            QRectF(frame.x() + left, frame.y(), frame.width() - left - right, frame.height()),
            QRectF(frame.right() - right, frame.y(), right, frame.height())};
}

void ThreePartImage::draw(QPainter &painter, const QRectF &frame) const
{
    const Places place = places(frame);
    drawPart(painter, lp, place.lp);
    drawPart(painter, mp, place.mp);
    drawPart(painter, rp, place.rp);
}
