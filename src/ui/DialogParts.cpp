#include "ui/DialogParts.h"

#include "ui/ColorProperties.h"
#include "ui/DesignColors.h"
#include "ui/DropDrawing.h"
#include "ui/Hairline.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/Typography.h"

#include <QPainter>

namespace {

constexpr QRectF motifPlace(292, -72, 160, 235);
constexpr double motifAngle = 12;

/// The stored colour of a style, else the one that the application begins with.
QColor storedColor(const QString &style)
{
    const QString key =
        ColorProperties::key(style, QLatin1String("bg"), InterfaceColorStyle::isDarkMode());
    if (const auto stored = ColorProperties::color(key))
        return *stored;
    return ColorProperties::unarchived(ColorProperties::defaultTable().value(key).toByteArray())
        .value_or(ColorComponents{})
        .color();
}

} // namespace

DialogGround::DialogGround(QWidget *parent) : VTLView(QStringLiteral("DefaultAlertView"), parent)
{
    setAllowDraggingWindow(true);
}

void DialogGround::drawRect(QPainter &painter, const QRect &dirtyRect)
{
    painter.fillRect(dirtyRect, storedColor(name()));
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
    painter.fillRect(QRectF(0, 0, width(), hairline(painter)),
                     storedColor(QStringLiteral("DefaultLine")));
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
