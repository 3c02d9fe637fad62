#include "ui/VTLView.h"

#include "platform/UserDefaults.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/RoundedCorners.h"
#include "ui/ThemeKeys.h"
#include "ui/WindowDrag.h"

#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>

#include <array>

namespace {

constexpr QLatin1String gradientStart("bggrad_start");
constexpr QLatin1String gradientEnd("bggrad_end");
constexpr QLatin1String topBorder("tbcolor");
constexpr QLatin1String rightBorder("rbcolor");
constexpr QLatin1String bottomBorder("bbcolor");
constexpr QLatin1String leftBorder("lbcolor");

} // namespace

VTLView::VTLView(const QString &name, QWidget *parent) : ThemedView(name, parent)
{
}

VTLView::~VTLView() = default;

void VTLView::changeToName(const QString &name)
{
    setName(name);
}

void VTLView::setCornerRadius(int radius)
{
    if (radius < 1)
        return;
    cornerRadius_ = radius;
    setGraphicsEffect(new RoundedCorners(radius, this));
}

void VTLView::setTrackForceDarkSidebarAppearance(bool tracks)
{
    trackForceDarkSidebarAppearance_ = tracks;
    if (tracks && !sidebarObservation_)
        sidebarObservation_ = connect(&UserDefaults::standard(), &UserDefaults::valueChanged, this,
                                      &VTLView::observeValueForKeyPath);
}

void VTLView::observeValueForKeyPath(const QString &keyPath)
{
    if (keyPath != ThemeKeys::forceDarkSidebar)
        return;
    buildColorCacheForDarkMode(InterfaceColorStyle::isDarkMode());
    update();
}

void VTLView::setViewIsflipped(bool isFlipped)
{
    viewIsflipped_ = isFlipped;
    update();
}

void VTLView::buildColorsForDarkMode(bool isDark)
{
    const bool drawsDark =
        isDark || (trackForceDarkSidebarAppearance_ &&
                   UserDefaults::standard().boolean(ThemeKeys::forceDarkSidebar));
    buildColors(drawsDark, {{background, QLatin1String("bg")},
                            {gradientStart, QLatin1String("bggradstart")},
                            {gradientEnd, QLatin1String("bggradend")},
                            {tint, QLatin1String("tint")},
                            {topBorder, QLatin1String("tb")},
                            {rightBorder, QLatin1String("rb")},
                            {bottomBorder, QLatin1String("bb")},
                            {leftBorder, QLatin1String("lb")}});
}

void VTLView::drawRect(QPainter &painter, const QRect &dirtyRect)
{
    drawBorders(painter);
    // Kept on purpose: the ground covers the border lines.
    drawBackground(painter);
    if (const auto color = colorCache().color(tint))
        painter.fillRect(dirtyRect, *color);
}

void VTLView::drawBorders(QPainter &painter) const
{
    const QRect bounds = rect();
    const QRect above(0, 0, bounds.width(), 1);
    const QRect below(0, bounds.height() - 1, bounds.width(), 1);
    const std::array<std::pair<QLatin1String, QRect>, 4> slices{
        {{leftBorder, QRect(0, 0, 1, bounds.height())},
         {rightBorder, QRect(bounds.width() - 1, 0, 1, bounds.height())},
         {bottomBorder, viewIsflipped_ ? above : below},
         {topBorder, viewIsflipped_ ? below : above}}};
    // Lines replace each other where they meet, the left one lying on top. Each fills what those
    // above it left free, so that no pixel is filled with two translucent colours.
    QRegion taken;
    for (const auto &[key, slice] : slices) {
        const std::optional<QColor> color = colorCache().color(key);
        if (!color)
            continue;
        for (const QRect &part : QRegion(slice).subtracted(taken))
            painter.fillRect(part, *color);
        taken += slice;
    }
}

void VTLView::drawBackground(QPainter &painter) const
{
    const std::optional<QColor> start = colorCache().color(gradientStart);
    const std::optional<QColor> end = colorCache().color(gradientEnd);
    if (start && end) {
        QLinearGradient gradient(0, 0, 0, height());
        gradient.setColorAt(0, viewIsflipped_ ? *end : *start);
        gradient.setColorAt(1, viewIsflipped_ ? *start : *end);
        painter.fillRect(rect(), gradient);
    } else if (const auto color = colorCache().color(background)) {
        painter.fillRect(rect(), *color);
    }
}

void VTLView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    event->accept();
    if (allowDraggingWindow_)
        performWindowDrag();
}

void VTLView::performWindowDrag()
{
    WindowDrag::begin(*this);
}
