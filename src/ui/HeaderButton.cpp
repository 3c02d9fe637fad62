#include "ui/HeaderButton.h"

#include "ui/ControlPaint.h"
#include "ui/Pictures.h"
#include "ui/Typography.h"

#include <QPainter>

namespace {

constexpr int side = 28;
constexpr int symbolSide = 16;
constexpr int widthWithBadge = 44;
constexpr int widthWithLongBadge = 52;
constexpr int longBadge = 3;
constexpr int badgeX = 26;
constexpr int badgePixels = 12;
constexpr float disabledOpacity = 0.6F;

} // namespace

HeaderButton::HeaderButton(const QString &symbolName, const QString &accessibleName,
                           QWidget *parent)
    : ControlButton(parent), symbolName_(symbolName)
{
    setAccessibleName(accessibleName);
    resize(sizeHint());
}

void HeaderButton::setKeptPressed(bool isKeptPressed)
{
    isKeptPressed_ = isKeptPressed;
    update();
}

void HeaderButton::setBadgeText(const QString &text)
{
    if (text == badgeText_)
        return;
    badgeText_ = text;
    resize(sizeHint());
    updateGeometry();
    update();
}

QSize HeaderButton::sizeHint() const
{
    if (badgeText_.isEmpty())
        return {side, side};
    return {badgeText_.size() < longBadge ? widthWithBadge : widthWithLongBadge, side};
}

QColor HeaderButton::symbolColor() const
{
    if (!isEnabled()) {
        QColor color = DesignColors::color(ColorRole::TextDisabled);
        color.setAlphaF(disabledOpacity);
        return color;
    }
    if (!badgeText_.isEmpty())
        return DesignColors::color(ColorRole::Bad);
    const bool isStrong = isHovered() || isKeptPressed_;
    return DesignColors::color(isStrong ? ColorRole::Text : ColorRole::TextSecondary);
}

void HeaderButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (isEnabled() && (isDown() || isKeptPressed_))
        ControlPaint::fill(painter, rect(), DesignColors::color(ColorRole::GhostPressed));
    else if (isHovered())
        ControlPaint::fill(painter, rect(), DesignColors::color(ColorRole::GhostHover));
    constexpr int margin = (side - symbolSide) / 2;
    Pictures::paint(painter, symbolName_, QRectF(margin, margin, symbolSide, symbolSide),
                    symbolColor());
    if (badgeText_.isEmpty())
        return;
    QFont font = Typography::font(TextStyle::SmallStrong);
    font.setPixelSize(badgePixels);
    painter.setFont(font);
    painter.setPen(symbolColor());
    painter.drawText(rect().adjusted(badgeX, 0, 0, 0), int(Qt::AlignLeft | Qt::AlignVCenter),
                     badgeText_);
}
