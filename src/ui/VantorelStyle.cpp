#include "ui/VantorelStyle.h"

#include "ui/ColorProperties.h"
#include "ui/DesignColors.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/StyleDrawing.h"
#include "ui/ToolTips.h"
#include "ui/Typography.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>

namespace {

constexpr int menuWidth = 280;
constexpr int menuEnds = 6;
constexpr int toolTipPadding = 7;
constexpr int scrollBarExtent = 14;
constexpr int smallestButton = 96;
constexpr int buttonHeight = 32;
constexpr int buttonPadding = 32;
constexpr int rowHeight = 28;
constexpr int headHeight = 24;

bool hasTransparentWindows = false;

bool isToolTip(const QObject *object)
{
    return object->inherits("QTipLabel");
}

/// The ground of a window of Qt's own: that of our dialogs.
QColor windowGround(bool isDark)
{
    return ColorProperties::colorOrDefault(QStringLiteral("DefaultAlertView"), QLatin1String("bg"),
                                           isDark);
}

QColor selectionGround(QLatin1String property, bool isDark)
{
    return ColorProperties::colorOrDefault(QStringLiteral("DefaultTableRowView"), property, isDark);
}

void setGrounds(QPalette &palette, bool isDark)
{
    const auto color = [isDark](ColorRole role) { return DesignColors::color(role, isDark); };
    palette.setColor(QPalette::Window, windowGround(isDark));
    palette.setColor(QPalette::Base, color(ColorRole::Surface));
    palette.setColor(QPalette::AlternateBase, color(ColorRole::SurfaceHead));
    palette.setColor(QPalette::Button, color(ColorRole::Control));
    palette.setColor(QPalette::ToolTipBase, color(ColorRole::Menu));
    palette.setColor(QPalette::Light, color(ColorRole::ControlHover));
    palette.setColor(QPalette::Midlight, color(ColorRole::ControlHover));
    palette.setColor(QPalette::Mid, color(ColorRole::ControlPressed));
    palette.setColor(QPalette::Dark, windowGround(isDark).darker(130));
    palette.setColor(QPalette::Shadow, Qt::black);
}

void setTexts(QPalette &palette, bool isDark)
{
    const auto color = [isDark](ColorRole role) { return DesignColors::color(role, isDark); };
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, color(ColorRole::Text));
        palette.setColor(QPalette::Disabled, role, color(ColorRole::TextDisabled));
    }
    palette.setColor(QPalette::PlaceholderText, color(ColorRole::TextSecondary));
    palette.setColor(QPalette::Link, color(ColorRole::Accent));
    palette.setColor(QPalette::LinkVisited, color(ColorRole::Accent));
}

void setSelection(QPalette &palette, bool isDark)
{
    const auto color = [isDark](ColorRole role) { return DesignColors::color(role, isDark); };
    const QColor inactive = selectionGround(QLatin1String("selbginactive"), isDark);
    palette.setColor(QPalette::Highlight, selectionGround(QLatin1String("selbg"), isDark));
    palette.setColor(QPalette::HighlightedText, color(ColorRole::TextOnSelection));
    for (const auto group : {QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Highlight, inactive);
        palette.setColor(group, QPalette::HighlightedText,
                         color(ColorRole::TextOnInactiveSelection));
    }
}

} // namespace

VantorelStyle::VantorelStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
}

QPalette VantorelStyle::palette(bool isDark)
{
    QPalette palette;
    setGrounds(palette, isDark);
    setTexts(palette, isDark);
    setSelection(palette, isDark);
    return palette;
}

void VantorelStyle::applyTheme()
{
    const QPalette palette = VantorelStyle::palette(InterfaceColorStyle::isDarkMode());
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

void VantorelStyle::setTransparentWindows(bool has)
{
    hasTransparentWindows = has;
}

void VantorelStyle::setHighContrast(bool isHigh)
{
    DesignColors::setHighContrast(isHigh);
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets)
        widget->update();
}

void VantorelStyle::polish(QPalette &palette)
{
    palette = VantorelStyle::palette(InterfaceColorStyle::isDarkMode());
}

void VantorelStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    const bool isMenu = qobject_cast<QMenu *>(widget) != nullptr;
    // In every case, for a compositing manager may come while the window is there already.
    if (isMenu || isToolTip(widget))
        widget->setAttribute(Qt::WA_TranslucentBackground);
    if (isMenu)
        widget->setMinimumWidth(Typography::scaled(menuWidth));
    else if (isToolTip(widget))
        widget->installEventFilter(this);
    else if (qobject_cast<QScrollBar *>(widget) != nullptr)
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
}

bool VantorelStyle::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPlaced = event->type() == QEvent::Show || event->type() == QEvent::Resize;
    if (auto *label = qobject_cast<QLabel *>(watched); label && isPlaced && isToolTip(label))
        wrapToolTip(*label);
    return QProxyStyle::eventFilter(watched, event);
}

/// Tool tips of Qt's own widgets come here as one line.
void VantorelStyle::wrapToolTip(QLabel &label)
{
    const QString shown = ToolTips::shownText(label.text());
    if (Qt::mightBeRichText(label.text()) || shown == label.text())
        return;
    label.setText(shown);
    label.resize(label.sizeHint() + QSize(1, 0));
    QRect place = label.geometry();
    const QRect room = label.screen()->geometry();
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    label.move(place.topLeft());
}

void VantorelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                  QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelMenu:
        return StyleDrawing::menuPanel(*painter, option->rect, hasTransparentWindows);
    case PE_PanelTipLabel:
        return StyleDrawing::toolTipPanel(*painter, option->rect, hasTransparentWindows);
    case PE_FrameMenu:
    case PE_PanelScrollAreaCorner:
        return;
    case PE_FrameLineEdit:
        return StyleDrawing::textField(*painter, *option);
    case PE_PanelLineEdit:
        if (const auto *field = qstyleoption_cast<const QStyleOptionFrame *>(option);
            field && field->lineWidth > 0)
            StyleDrawing::textField(*painter, *option);
        return;
    case PE_PanelButtonCommand:
        if (const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option))
            return StyleDrawing::button(*painter, *button);
        break;
    case PE_PanelButtonTool:
        return StyleDrawing::toolButton(*painter, *option);
    case PE_IndicatorArrowDown:
        return StyleDrawing::downArrow(*painter, option->rect, option->state & State_Enabled);
    case PE_Frame:
        return StyleDrawing::frame(*painter, option->rect);
    case PE_FrameFocusRect:
        return StyleDrawing::focusFrame(*painter, option->rect);
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void VantorelStyle::drawControl(ControlElement element, const QStyleOption *option,
                                QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case CE_MenuItem:
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option))
            return StyleDrawing::menuItem(*painter, *item);
        break;
    case CE_MenuEmptyArea:
        return;
    case CE_HeaderSection:
    case CE_HeaderEmptyArea:
        return StyleDrawing::headerSection(*painter, option->rect);
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void VantorelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                       QPainter *painter, const QWidget *widget) const
{
    if (control == CC_ScrollBar) {
        if (const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return StyleDrawing::scrollBar(*painter, *slider);
    } else if (control == CC_ComboBox) {
        const auto *box = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        if (box && box->editable)
            StyleDrawing::textField(*painter, *option);
        else
            StyleDrawing::selector(*painter, *option);
        return StyleDrawing::downArrow(
            *painter, proxy()->subControlRect(control, option, SC_ComboBoxArrow, widget),
            option->state & State_Enabled);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect VantorelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                    SubControl part, const QWidget *widget) const
{
    const auto *slider =
        control == CC_ScrollBar ? qstyleoption_cast<const QStyleOptionSlider *>(option) : nullptr;
    return slider ? scrollBarPart(*slider, part)
                  : QProxyStyle::subControlRect(control, option, part, widget);
}

/// The thumb is taken hold of over the bar's whole width; what lies before and behind it turns the
/// page; there are no arrows.
QRect VantorelStyle::scrollBarPart(const QStyleOptionSlider &option, SubControl part)
{
    const QRect thumb = StyleDrawing::scrollBarThumb(option);
    QRect held = option.rect;
    QRect before = option.rect;
    QRect behind = option.rect;
    if (option.orientation == Qt::Vertical) {
        held.setTop(thumb.top());
        held.setBottom(thumb.bottom());
        before.setBottom(thumb.top() - 1);
        behind.setTop(thumb.bottom() + 1);
    } else {
        held.setLeft(thumb.left());
        held.setRight(thumb.right());
        before.setRight(thumb.left() - 1);
        behind.setLeft(thumb.right() + 1);
    }
    switch (part) {
    case SC_ScrollBarSlider:
        return held;
    case SC_ScrollBarSubPage:
        return before;
    case SC_ScrollBarAddPage:
        return behind;
    case SC_ScrollBarGroove:
        return option.rect;
    default:
        return {};
    }
}

QSize VantorelStyle::sizeFromContents(ContentsType type, const QStyleOption *option,
                                      const QSize &size, const QWidget *widget) const
{
    if (type == CT_MenuItem) {
        if (const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option))
            return StyleDrawing::menuItemSize(*item, size);
    }
    if (type == CT_PushButton)
        return {std::max(Typography::scaled(smallestButton),
                         size.width() + Typography::scaled(buttonPadding)),
                Typography::scaled(buttonHeight)};
    const QSize own = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_HeaderSection)
        return own.expandedTo({0, Typography::scaled(headHeight)});
    const bool isRow = type == CT_ItemViewItem || type == CT_ComboBox || type == CT_LineEdit;
    return isRow ? own.expandedTo({0, Typography::scaled(rowHeight)}) : own;
}

int VantorelStyle::pixelMetric(PixelMetric metric, const QStyleOption *option,
                               const QWidget *widget) const
{
    switch (metric) {
    case PM_MenuPanelWidth:
    case PM_MenuHMargin:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_MenuVMargin:
        return menuEnds;
    case PM_ToolTipLabelFrameWidth:
        return toolTipPadding;
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
        return scrollBarExtent;
    case PM_ScrollBarSliderMin:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int VantorelStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                             QStyleHintReturn *answer) const
{
    switch (hint) {
    case SH_ScrollBar_Transient:
    case SH_Menu_MouseTracking:
        return 1;
    case SH_ComboBox_Popup:
    case SH_ToolTip_Mask:
    case SH_Menu_Mask:
        return 0;
    case SH_ToolTipLabel_Opacity:
        return 255;
    default:
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}
