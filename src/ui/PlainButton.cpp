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
    paintControl(painter);
    ControlPaint::text(painter, rect().adjusted(4, 0, -4, 0), text(), Qt::AlignHCenter);
}
