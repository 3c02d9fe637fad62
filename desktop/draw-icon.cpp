// Draws one drawing at one size: draw-icon SVG PIXELS PNG. Runs while Vantorel is built.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char *argv[])
{
    const int pixels = argc == 4 ? QByteArray(argv[2]).toInt() : 0;
    QSvgRenderer drawing(pixels > 0 ? QString::fromLocal8Bit(argv[1]) : QString());
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    if (!drawing.isValid() || image.isNull()) {
        std::fputs("draw-icon: usage: draw-icon SVG PIXELS PNG\n", stderr);
        return 2;
    }
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, QRectF(image.rect()));
    painter.end();
    return image.save(QString::fromLocal8Bit(argv[3]), "PNG") ? 0 : 1;
}
