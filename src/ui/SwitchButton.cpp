#include "ui/SwitchButton.h"

#include "ui/DesignColors.h"
#include "ui/FocusRing.h"
#include "ui/Typography.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double trackWidth = 36;
constexpr double trackHeight = 20;
constexpr double frame = 2;
constexpr double knobOn = 14;
constexpr double knobOff = 10;
constexpr double disabledOpacity = 0.4;

QRectF around(double x, double diameter)
{
    return {x - diameter / 2, (trackHeight - diameter) / 2, diameter, diameter};
}

void paintOn(QPainter &painter)
{
    const QRectF knob = around(trackWidth - trackHeight / 2, knobOn);
    QPainterPath track;
    track.addRoundedRect(QRectF(0, 0, trackWidth, trackHeight), trackHeight / 2, trackHeight / 2);
    // Where both are faint, the track must not show through the knob.
    if (painter.opacity() < 1)
        track.addEllipse(knob);
    painter.setBrush(DesignColors::color(ColorRole::SwitchOn));
    painter.drawPath(track);
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);
}

void paintOff(QPainter &painter)
{
    const QColor color = DesignColors::color(ColorRole::SwitchOff);
    painter.setBrush(color);
    painter.drawEllipse(around(trackHeight / 2, knobOff));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, frame));
    constexpr double inset = frame / 2;
    painter.drawRoundedRect(
        QRectF(0, 0, trackWidth, trackHeight).adjusted(inset, inset, -inset, -inset),
        trackHeight / 2 - inset, trackHeight / 2 - inset);
}

} // namespace

SwitchButton::SwitchButton(QWidget *parent) : SwitchButton(QString(), parent)
{
}

SwitchButton::SwitchButton(const QString &accessibleName, QWidget *parent) : QAbstractButton(parent)
{
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(accessibleName);
    FocusRing::setRadius(this, FocusRing::round);
}

QSize SwitchButton::sizeHint() const
{
    return {Typography::scaled(trackWidth), Typography::scaled(trackHeight)};
}

void SwitchButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    painter.scale(width() / trackWidth, height() / trackHeight);
    if (isChecked())
        paintOn(painter);
    else
        paintOff(painter);
}
