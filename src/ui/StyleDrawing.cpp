#include "ui/StyleDrawing.h"

#include "ui/ColorProperties.h"
#include "ui/DesignColors.h"
#include "ui/Hairline.h"
#include "ui/Typography.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace {

constexpr double controlRadius = 4;
constexpr double menuRadius = 8;

constexpr int menuRow = 28;
constexpr int menuSeparator = 9;
constexpr int menuInset = 6;
constexpr int menuSeparatorInset = 12;
constexpr int menuCheckCenter = 22;
constexpr int menuText = 36;
constexpr int menuEnd = 18;
constexpr int menuGap = 12;

constexpr int thumbWidth = 6;
constexpr int thumbSideGap = 4;
constexpr int thumbEndGap = 6;
constexpr int thumbShortest = 40;

QColor faded(QColor color, double opacity)
{
    color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}

/// Ground and a line along its inner edge; the line lies over the ground.
void panel(QPainter &painter, const QRect &rect, double radius, const QColor &ground,
           const QColor &edge)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, radius > 0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect, radius, radius);
    painter.setRenderHint(QPainter::Antialiasing);
    const double width = hairline(painter);
    const double inset = width / 2;
    painter.setPen(QPen(edge, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    const double inner = std::max(radius - inset, 0.0);
    painter.drawRoundedRect(QRectF(rect).adjusted(inset, inset, -inset, -inset), inner, inner);
    painter.restore();
}

void fill(QPainter &painter, const QRectF &rect, double radius, const QBrush &brush)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRoundedRect(rect, radius, radius);
    painter.restore();
}

void strokes(QPainter &painter, const QPolygonF &points, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points);
    painter.restore();
}

bool isOn(const QStyleOption &option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

/// Hover and pressed, of what stands on its own ground.
ColorRole ground(const QStyleOption &option)
{
    if (isOn(option, QStyle::State_Sunken) || isOn(option, QStyle::State_On))
        return ColorRole::ControlPressed;
    return isOn(option, QStyle::State_MouseOver) ? ColorRole::ControlHover : ColorRole::Control;
}

void menuMark(QPainter &painter, const QStyleOptionMenuItem &option, const QColor &color)
{
    const QPointF center(option.rect.left() + Typography::scaled(menuCheckCenter),
                         option.rect.top() + option.rect.height() / 2.0);
    if (option.checked) {
        strokes(
            painter,
            {center + QPointF(-4.5, 0.5), center + QPointF(-1.5, 3.5), center + QPointF(4.5, -3.5)},
            color);
    } else if (!option.icon.isNull()) {
        QRect place(0, 0, 16, 16);
        place.moveCenter(center.toPoint());
        option.icon.paint(&painter, place, Qt::AlignCenter,
                          isOn(option, QStyle::State_Enabled) ? QIcon::Normal : QIcon::Disabled);
    }
}

void menuTexts(QPainter &painter, const QStyleOptionMenuItem &option, const QColor &color)
{
    const bool isEnabled = isOn(option, QStyle::State_Enabled);
    const QRect place =
        option.rect.adjusted(Typography::scaled(menuText), 0, -Typography::scaled(menuEnd), 0);
    const QString title = option.text.section(QLatin1Char('\t'), 0, 0);
    painter.setFont(option.font);
    painter.setPen(color);
    painter.drawText(place, int(Qt::AlignVCenter | Qt::AlignLeft) | Qt::TextShowMnemonic, title);
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu) {
        const QPointF center(place.right() - 3, place.top() + place.height() / 2.0);
        strokes(painter,
                {center + QPointF(-2, -4), center + QPointF(2, 0), center + QPointF(-2, 4)}, color);
        return;
    }
    painter.setFont(Typography::font(TextStyle::Small));
    painter.setPen(
        DesignColors::color(isEnabled ? ColorRole::TextSecondary : ColorRole::TextDisabled));
    painter.drawText(place, int(Qt::AlignVCenter | Qt::AlignRight),
                     option.text.section(QLatin1Char('\t'), 1));
}

} // namespace

void StyleDrawing::menuPanel(QPainter &painter, const QRect &rect, bool isRounded)
{
    panel(painter, rect, isRounded ? menuRadius : 0, DesignColors::color(ColorRole::Menu),
          DesignColors::color(ColorRole::Edge));
}

void StyleDrawing::menuItem(QPainter &painter, const QStyleOptionMenuItem &option)
{
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        const QRect &rect = option.rect;
        if (const auto line =
                ColorProperties::current(QStringLiteral("DefaultLine"), QLatin1String("bg")))
            painter.fillRect(rect.left() + menuSeparatorInset, rect.top() + rect.height() / 2,
                             rect.width() - 2 * menuSeparatorInset, 1, *line);
        return;
    }
    const bool isEnabled = isOn(option, QStyle::State_Enabled);
    if (isEnabled && isOn(option, QStyle::State_Selected))
        fill(painter, option.rect.adjusted(menuInset, 0, -menuInset, 0), controlRadius,
             DesignColors::color(ColorRole::GhostHover));
    const QColor color = DesignColors::color(isEnabled ? ColorRole::Text : ColorRole::TextDisabled);
    painter.save();
    menuMark(painter, option, color);
    menuTexts(painter, option, color);
    painter.restore();
}

QSize StyleDrawing::menuItemSize(const QStyleOptionMenuItem &option, const QSize &text)
{
    if (option.menuItemType == QStyleOptionMenuItem::Separator)
        return {menuSeparatorInset * 2, menuSeparator};
    return {Typography::scaled(menuText + menuGap + menuEnd) + text.width(),
            Typography::scaled(menuRow)};
}

void StyleDrawing::toolTipPanel(QPainter &painter, const QRect &rect, bool isRounded)
{
    panel(painter, rect, isRounded ? controlRadius : 0, DesignColors::color(ColorRole::Menu),
          DesignColors::color(ColorRole::EdgeControl));
}

QRect StyleDrawing::scrollBarThumb(const QStyleOptionSlider &option)
{
    const bool isVertical = option.orientation == Qt::Vertical;
    const QRect &rect = option.rect;
    const int room = (isVertical ? rect.height() : rect.width()) - 2 * thumbEndGap;
    const double whole = double(option.maximum) - option.minimum + option.pageStep;
    if (option.maximum <= option.minimum || room <= 0)
        return {};
    const int length =
        std::clamp(int(room * (option.pageStep / whole)), std::min(thumbShortest, room), room);
    const int at = thumbEndGap + QStyle::sliderPositionFromValue(option.minimum, option.maximum,
                                                                 option.sliderPosition,
                                                                 room - length, option.upsideDown);
    if (isVertical)
        return {rect.right() + 1 - thumbSideGap - thumbWidth, rect.top() + at, thumbWidth, length};
    return {rect.left() + at, rect.bottom() + 1 - thumbSideGap - thumbWidth, length, thumbWidth};
}

void StyleDrawing::scrollBar(QPainter &painter, const QStyleOptionSlider &option)
{
    const QRect thumb = scrollBarThumb(option);
    if (thumb.isEmpty())
        return;
    const bool isHeld = isOn(option, QStyle::State_Sunken) &&
                        option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider);
    const bool isUnderMouse = isOn(option, QStyle::State_MouseOver);
    const double opacity = isHeld ? 0.85 : isUnderMouse ? 0.7 : 0.5;
    fill(painter, thumb, thumbWidth / 2.0,
         faded(DesignColors::color(ColorRole::TextDisabled), opacity));
}

void StyleDrawing::textField(QPainter &painter, const QStyleOption &option)
{
    const bool isEnabled = isOn(option, QStyle::State_Enabled);
    panel(painter, option.rect, controlRadius, DesignColors::color(ColorRole::Surface),
          DesignColors::color(isEnabled ? ColorRole::EdgeField : ColorRole::Edge));
}

void StyleDrawing::button(QPainter &painter, const QStyleOptionButton &option)
{
    if (!isOn(option, QStyle::State_Enabled)) {
        panel(painter, option.rect, controlRadius, Qt::transparent,
              DesignColors::color(ColorRole::Edge));
        return;
    }
    panel(painter, option.rect, controlRadius, DesignColors::color(ground(option)),
          DesignColors::color(option.features.testFlag(QStyleOptionButton::DefaultButton)
                                  ? ColorRole::Accent
                                  : ColorRole::EdgeControl));
}

void StyleDrawing::selector(QPainter &painter, const QStyleOption &option)
{
    const bool isEnabled = isOn(option, QStyle::State_Enabled);
    panel(painter, option.rect, controlRadius,
          isEnabled ? DesignColors::color(ground(option)) : QColor(Qt::transparent),
          DesignColors::color(ColorRole::EdgeControl));
}

void StyleDrawing::toolButton(QPainter &painter, const QStyleOption &option)
{
    if (!isOn(option, QStyle::State_Enabled))
        return;
    if (isOn(option, QStyle::State_Sunken) || isOn(option, QStyle::State_On))
        fill(painter, option.rect, controlRadius, DesignColors::color(ColorRole::GhostPressed));
    else if (isOn(option, QStyle::State_MouseOver))
        fill(painter, option.rect, controlRadius, DesignColors::color(ColorRole::GhostHover));
}

void StyleDrawing::downArrow(QPainter &painter, const QRect &rect, bool isEnabled)
{
    const QPointF center = QRectF(rect).center();
    strokes(painter, {center + QPointF(-4, -2), center + QPointF(0, 2), center + QPointF(4, -2)},
            DesignColors::color(isEnabled ? ColorRole::TextSecondary : ColorRole::TextDisabled));
}

void StyleDrawing::headerSection(QPainter &painter, const QRect &rect)
{
    painter.fillRect(rect, DesignColors::color(ColorRole::SurfaceHead));
    painter.fillRect(rect.left(), rect.bottom(), rect.width(), 1,
                     DesignColors::color(ColorRole::Edge));
}

void StyleDrawing::frame(QPainter &painter, const QRect &rect)
{
    panel(painter, rect, 0, Qt::transparent, DesignColors::color(ColorRole::Edge));
}

void StyleDrawing::focusFrame(QPainter &painter, const QRect &rect)
{
    panel(painter, rect, controlRadius, Qt::transparent, DesignColors::color(ColorRole::Focus));
}
