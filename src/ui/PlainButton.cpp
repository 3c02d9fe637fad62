#include "ui/PlainButton.h"

#include "ui/ControlPaint.h"
#include "ui/Typography.h"

#include <QPainter>

namespace {

constexpr int inset = 12;

} // namespace

PlainButton::PlainButton(const QString &title, QWidget *parent) : ControlButton(parent)
{
    setText(title);
}

QSize PlainButton::sizeHint() const
{
    const QFontMetrics metrics(Typography::font(TextStyle::BodyMedium));
    return {metrics.horizontalAdvance(text()) + 2 * Typography::scaled(inset),
            Typography::scaled(32)};
}

QSize PlainButton::minimumSizeHint() const
{
    return {Typography::scaled(48), Typography::scaled(28)};
}

void PlainButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor ground;
    if (isEnabled())
        ground = DesignColors::color(isDown()      ? ColorRole::ControlPressed
                                     : isHovered() ? ColorRole::ControlHover
                                                   : ColorRole::Control);
    ControlPaint::box(painter, rect(), ground, DesignColors::color(ColorRole::EdgeControl));
    painter.setFont(Typography::font(TextStyle::BodyMedium));
    painter.setPen(DesignColors::color(isEnabled() ? ColorRole::Text : ColorRole::TextDisabled));
    ControlPaint::text(painter, rect().adjusted(4, 0, -4, 0), text(), Qt::AlignHCenter);
}
