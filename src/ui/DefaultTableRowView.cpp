#include "ui/DefaultTableRowView.h"

#include "platform/UserDefaults.h"
#include "ui/InterfaceColorStyle.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <cmath>

namespace {

constexpr QLatin1String withHover("RowViewWithMouseHover");
constexpr QLatin1String withHoverAndBorder("RowViewWithMouseHover+Border");
constexpr QLatin1String withBorder("RowViewWithBorder");

constexpr double hoverAlphaLight = 0.04;
constexpr double hoverAlphaDark = 0.1;
constexpr double borderThickness = 1.0;
constexpr double faintSelectionAlpha = 0.2;

QColor blackWithAlpha(double alpha)
{
    return QColor::fromRgbF(0, 0, 0, float(alpha));
}

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

QColor platformBackgroundColor()
{
    return QApplication::palette().color(QPalette::Base);
}

void darken(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.setCompositionMode(QPainter::CompositionMode_Darken);
    painter.fillRect(rect, color);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
}

/// Transparent, as fine as what it will be laid over.
QImage emptyLayer(const QSizeF &size, double ratio)
{
    QImage layer(int(std::ceil(size.width() * ratio)), int(std::ceil(size.height() * ratio)),
                 QImage::Format_ARGB32_Premultiplied);
    layer.setDevicePixelRatio(ratio);
    layer.fill(Qt::transparent);
    return layer;
}

} // namespace

DefaultTableRowView::DefaultTableRowView(const QRectF &frame)
    : frame_(frame), colorStyleName_(QStringLiteral("DefaultTableRowView"))
{
}

void DefaultTableRowView::takeFlagsFromIdentifier()
{
    mouseHoverEnabled_ = identifier_ == withHover || identifier_ == withHoverAndBorder;
    useBorder_ = identifier_ == withBorder || identifier_ == withHoverAndBorder;
}

void DefaultTableRowView::buildColorCache()
{
    takeFlagsFromIdentifier();
    const bool isDark = InterfaceColorStyle::isDarkMode();
    if (colorCache_.isBuilt() && isDark == lastMode_)
        return;
    lastMode_ = isDark;
    isDarkMode_ = isDark;
    // "bg", "hovbg", "row" and "rowodd" are kept on purpose, though no drawing reads them: rows do
    // not alternate, and the shade under the mouse is a fixed one.
    colorCache_.build(colorStyleName_, isDark,
                      {{QLatin1String("bg"), QLatin1String("bg")},
                       {QLatin1String("bc"), QLatin1String("bc")},
                       {QLatin1String("selbg"), QLatin1String("selbg")},
                       {QLatin1String("selbginactive"), QLatin1String("selbginactive")},
                       {QLatin1String("hovbg"), QLatin1String("hovbg")},
                       {QLatin1String("row"), QLatin1String("row")},
                       {QLatin1String("rowodd"), QLatin1String("rowodd")}});
}

void DefaultTableRowView::updateColorStyleName(const QString &name)
{
    colorStyleName_ = name;
    buildColorCache();
    redisplay();
}

void DefaultTableRowView::updateBackgroundColorWithColor(const std::optional<QColor> &color)
{
    if (color == bgColor_)
        return;
    bgColor_ = color;
    redisplay();
}

void DefaultTableRowView::overWriteSelectionColorWithColor(const std::optional<QColor> &color)
{
    if (color == tempSelectionColor_)
        return;
    tempSelectionColor_ = color;
    redisplay();
}

void DefaultTableRowView::enableMSRowHoverChangeNotification()
{
    const bool isEnabled =
        UserDefaults::standard().boolean(QStringLiteral("useMouseHoverRowColor"));
    if (isEnabled == mouseHoverEnabled_)
        return;
    mouseHoverEnabled_ = isEnabled;
    if (isEnabled)
        startTrackingArea();
    else
        removeTrackingArea();
}

void DefaultTableRowView::msRowHoverDarknessChangeNotification()
{
    redisplay();
}

void DefaultTableRowView::startTrackingArea()
{
    trackingArea_ = {bounds(), TrackingArea::mouseEnteredAndExited | TrackingArea::activeAlways |
                                   TrackingArea::inVisibleRect};
    isTracking_ = true;
}

void DefaultTableRowView::removeTrackingArea()
{
    isTracking_ = false;
}

void DefaultTableRowView::mouseEntered()
{
    if (mouseInside_)
        return;
    mouseInside_ = true;
    redisplay();
}

void DefaultTableRowView::mouseExited()
{
    mouseInside_ = false;
    redisplay();
}

void DefaultTableRowView::updateTrackingAreas()
{
    mouseInside_ = false;
}

void DefaultTableRowView::redisplay() const
{
    if (redisplay_)
        redisplay_();
}

void DefaultTableRowView::paint(QPainter &painter)
{
    viewWillDraw();
    QImage layer = emptyLayer(frame_.size(), painter.device()->devicePixelRatioF());
    QPainter layerPainter(&layer);
    layerPainter.setCompositionMode(QPainter::CompositionMode_Source);
    drawBackgroundInRect(layerPainter);
    drawSelectionInRect(layerPainter);
    layerPainter.end();
    painter.drawImage(frame_.topLeft(), layer);
}

void DefaultTableRowView::viewWillDraw()
{
    buildColorCache();
}

void DefaultTableRowView::drawBackgroundInRect(QPainter &painter)
{
    if (mouseHoverEnabled_ && !trackingArea_)
        startTrackingArea();
    // Kept on purpose: a selected row has no ground, even where no selection is drawn either.
    if (isSelected_)
        return;
    tempSelectionColor_.reset();
    const QColor ground = bgColor_.value_or(platformBackgroundColor());
    painter.fillRect(bounds(), ground);
    if (mouseInside_)
        darken(painter, bounds(), blackWithAlpha(isDarkMode_ ? hoverAlphaDark : hoverAlphaLight));
    else if (useBorder_)
        drawBorder(painter, ground);
}

void DefaultTableRowView::drawBorder(QPainter &painter, const QColor &groundColor) const
{
    const QRectF whole = bounds();
    const QRectF line(whole.left(), whole.bottom() - borderThickness, whole.width(),
                      borderThickness);
    darken(painter, line, colorCache_.color(QLatin1String("bc")).value_or(groundColor));
}

std::optional<QColor> DefaultTableRowView::selectionColor() const
{
    if (!tempSelectionColor_)
        return colorCache_.color(isEmphasized_ ? QLatin1String("selbg")
                                               : QLatin1String("selbginactive"));
    // Kept on purpose: the faint one is for the focused table in the dark, and for the other one
    // in the light.
    if (isDarkMode_)
        return isEmphasized_ ? withAlpha(*tempSelectionColor_, faintSelectionAlpha)
                             : colorCache_.color(QLatin1String("selbginactive"));
    return isEmphasized_ ? *tempSelectionColor_
                         : withAlpha(*tempSelectionColor_, faintSelectionAlpha);
}

void DefaultTableRowView::drawSelectionInRect(QPainter &painter) const
{
    if (highlightStyle_ != SelectionHighlightStyle::Regular || !isSelected_)
        return;
    const std::optional<QColor> fill = selectionColor();
    if (fill)
        painter.fillRect(bounds(), *fill);
    // Kept on purpose: the light theme's shade in both.
    if (mouseInside_)
        darken(painter, bounds(), blackWithAlpha(hoverAlphaLight));
}
