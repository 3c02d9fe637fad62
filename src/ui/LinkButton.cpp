#include "ui/LinkButton.h"

#include <QPainter>

namespace {

constexpr int underlineDistance = 3;

} // namespace

LinkButton::LinkButton(const QString &title, QWidget *parent) : ControlButton(parent)
{
    setText(title);
    setCursor(Qt::PointingHandCursor);
}

void LinkButton::setLook(TextStyle style, ColorRole role)
{
    style_ = style;
    role_ = role;
    updateGeometry();
    update();
}

void LinkButton::setAlwaysUnderlined(bool isAlwaysUnderlined)
{
    isAlwaysUnderlined_ = isAlwaysUnderlined;
    update();
}

QSize LinkButton::sizeHint() const
{
    const QFontMetrics metrics(Typography::font(style_));
    return {metrics.horizontalAdvance(text()) + 1, Typography::lineHeight(style_)};
}

void LinkButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(Typography::font(style_));
    const QColor color = DesignColors::color(isEnabled() ? role_ : ColorRole::TextDisabled);
    painter.setPen(color);
    const QFontMetrics metrics = painter.fontMetrics();
    const int baseline = (height() - metrics.height()) / 2 + metrics.ascent();
    painter.drawText(0, baseline, text());
    if (isAlwaysUnderlined_ || isHovered() || (isEnabled() && hasFocus()))
        painter.fillRect(
            QRect(0, baseline + underlineDistance, metrics.horizontalAdvance(text()), 1), color);
}
