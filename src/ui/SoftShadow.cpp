#include "ui/SoftShadow.h"

#include "ui/InterfaceColorStyle.h"

#include <QPainter>

#include <cmath>
#include <vector>

namespace {

/// How much of a blurred line of this length lies over each of its pixels.
std::vector<double> blurred(int length, double sigma, int reach)
{
    std::vector<double> cover(std::size_t(length + 2 * reach));
    const auto below = [sigma](double at) {
        return 0.5 * (1 + std::erf(at / (sigma * std::sqrt(2))));
    };
    for (std::size_t i = 0; i < cover.size(); ++i) {
        const double at = double(i) + 0.5 - reach;
        cover[i] = below(at) - below(at - length);
    }
    return cover;
}

} // namespace

int SoftShadow::reach(double sigma)
{
    return int(std::ceil(3 * sigma));
}

QImage SoftShadow::image(const QSize &box, double sigma, double opacity)
{
    const std::vector<double> across = blurred(box.width(), sigma, reach(sigma));
    const std::vector<double> down = blurred(box.height(), sigma, reach(sigma));
    QImage image(int(across.size()), int(down.size()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double cover = across[std::size_t(x)] * down[std::size_t(y)];
            line[x] = qRgba(0, 0, 0, int(std::lround(255 * opacity * cover)));
        }
    }
    return image;
}

void SoftShadow::paint(QPainter &painter, const QRect &box)
{
    const bool isDark = InterfaceColorStyle::isDarkMode();
    if (image_.isNull() || size_ != box.size() || isDark_ != isDark) {
        size_ = box.size();
        isDark_ = isDark;
        image_ = image(size_, look_.sigma, isDark ? look_.dark : look_.light);
    }
    const int margin = reach(look_.sigma);
    painter.drawImage(box.topLeft() - QPoint(margin, margin - look_.drop), image_);
}
