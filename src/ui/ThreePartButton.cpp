#include "ui/ThreePartButton.h"

#include "ui/ControlPaint.h"
#include "ui/Pictures.h"
#include "ui/ReturnKey.h"

#include <QPainter>

namespace {

constexpr double spaceBesideTitle = 16;
constexpr double disabledTitleAlpha = 0.3;

} // namespace

ThreePartButton::ThreePartButton(Look look, const QString &title, QWidget *parent)
    : QPushButton(title, parent), look_(std::move(look))
{
    awakeFromNib();
}

void ThreePartButton::awakeFromNib()
{
    setCheckable(false);
    setFlat(true);
    setAutoDefault(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    const auto made = [this](const QString &image) {
        return ThreePartImage::makeThreepartImage(image, look_.leftCapWidth, look_.middleWidth,
                                                  look_.rightCapWidth);
    };
    imgNormal_ = made(look_.image);
    imgHigh_ = made(look_.image + QStringLiteral("_hi"));
    imgInactive_ = made(look_.image + QStringLiteral("_in"));
}

const ThreePartImage *ThreePartButton::imageSet(int highlightState) const
{
    if (!isEnabled())
        return &imgInactive_;
    switch (highlightState) {
    case 0:
        return &imgNormal_;
    case 1:
        return &imgHigh_;
    default:
        return nullptr;
    }
}

QColor ThreePartButton::titleColor() const
{
    QColor white(Qt::white);
    white.setAlphaF(isEnabled() ? 1.0F : float(disabledTitleAlpha));
    return white;
}

void ThreePartButton::drawInterior(QPainter &painter, const QRectF &frame, int highlightState) const
{
    if (const ThreePartImage *image = imageSet(highlightState))
        image->draw(painter, frame);
    drawTitle(painter, text(), frame);
}

QRectF ThreePartButton::drawTitle(QPainter &painter, const QString &title,
                                  const QRectF &frame) const
{
    painter.save();
    painter.setFont(Typography::font(look_.titleStyle));
    painter.setPen(titleColor());
    const QRectF taken = ControlPaint::text(painter, frame, title, Qt::AlignHCenter);
    painter.restore();
    return taken;
}

QSize ThreePartButton::sizeHint() const
{
    const QFontMetrics metrics(Typography::font(look_.titleStyle));
    const double height = Pictures::sizeOf(look_.image).height();
    return {metrics.horizontalAdvance(text()) + 2 * Typography::scaled(spaceBesideTitle),
            Typography::scaled(height)};
}

QSize ThreePartButton::minimumSizeHint() const
{
    return sizeHint();
}

void ThreePartButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawInterior(painter, QRectF(rect()), isDown() ? 1 : 0);
}

void ThreePartButton::keyPressEvent(QKeyEvent *event)
{
    if (!ReturnKey::clicks(*this, *event))
        QPushButton::keyPressEvent(event);
}
