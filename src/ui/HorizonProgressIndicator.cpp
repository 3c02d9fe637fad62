#include "ui/HorizonProgressIndicator.h"

#include "ui/ColorProperties.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr ColorComponents fill{0.361, 0.612, 0.875, 1.0};
constexpr int naturalWidth = 100;
constexpr int naturalHeight = 8;

} // namespace

HorizonProgressIndicator::HorizonProgressIndicator(QWidget *parent) : QProgressBar(parent)
{
    setRange(0, 100);
    setValue(0);
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void HorizonProgressIndicator::setMaxValue(double maxValue)
{
    maxValue_ = maxValue;
    tellScreenReaders();
    update();
}

void HorizonProgressIndicator::setDoubleValue(double doubleValue)
{
    doubleValue_ = doubleValue;
    tellScreenReaders();
    update();
}

double HorizonProgressIndicator::fillWidth(double boundsWidth, double maxValue, double doubleValue)
{
    const double width = boundsWidth / maxValue * doubleValue;
    return std::isfinite(width) && width > 0 ? width : 0;
}

void HorizonProgressIndicator::tellScreenReaders()
{
    // Cut, as the text beside the bar.
    setValue(int(std::min(100.0, fillWidth(100, maxValue_, doubleValue_))));
}

QSize HorizonProgressIndicator::sizeHint() const
{
    return {naturalWidth, naturalHeight};
}

QSize HorizonProgressIndicator::minimumSizeHint() const
{
    return {0, 0};
}

void HorizonProgressIndicator::paintEvent(QPaintEvent *)
{
    const QRectF bounds(rect());
    const double width = fillWidth(bounds.width(), maxValue_, doubleValue_);
    if (width == 0)
        return;
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    // What is wider than the bounds would be cut off anyway, and can be too wide for the painter.
    painter.fillRect(QRectF(0, 0, std::min(width, bounds.width()), bounds.height()), fill.color());
}
