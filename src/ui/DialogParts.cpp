#include "ui/DialogParts.h"

#include "ui/ColorProperties.h"
#include "ui/DesignColors.h"
#include "ui/DropDrawing.h"
#include "ui/Hairline.h"
#include "ui/Typography.h"

#include <QPainter>

namespace {

constexpr QRectF motifPlace(292, -72, 160, 235);
constexpr double motifAngle = 12;

} // namespace

DialogGround::DialogGround(QWidget *parent) : VTLView(QStringLiteral("DefaultAlertView"), parent)
{
    setAllowDraggingWindow(true);
}

void DialogGround::drawRect(QPainter &painter, const QRect &dirtyRect)
{
    if (!colorCache().color(background))
        painter.fillRect(dirtyRect, ColorProperties::currentOrDefault(name(), QLatin1String("bg")));
    VTLView::drawRect(painter, dirtyRect);
}

DialogStrip::DialogStrip(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DialogStrip::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), DesignColors::color(ColorRole::DialogStrip));
    painter.fillRect(
        QRectF(0, 0, width(), hairline(painter)),
        ColorProperties::currentOrDefault(QStringLiteral("DefaultLine"), QLatin1String("bg")));
}

DialogMotif::DialogMotif(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DialogMotif::setOpacity(double opacity)
{
    opacity_ = opacity;
    update();
}

void DialogMotif::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const double scale = Typography::factor();
    painter.setOpacity(opacity_);
    painter.scale(scale, scale);
    painter.translate(motifPlace.center());
    painter.rotate(motifAngle);
    painter.translate(-motifPlace.center());
    DropDrawing::paintMotif(painter, motifPlace, DesignColors::color(ColorRole::Text));
}

DialogImage::DialogImage(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DialogImage::setImage(const QIcon &image)
{
    image_ = image;
    update();
}

void DialogImage::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    image_.paint(&painter, rect());
}
