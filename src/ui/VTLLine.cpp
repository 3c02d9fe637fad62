#include "ui/VTLLine.h"

#include "ui/InterfaceColorStyle.h"

#include <QPaintEvent>
#include <QPainter>

namespace {

constexpr QLatin1String background("bgcolor");
constexpr QLatin1String tint("tint");

} // namespace

VTLLine::VTLLine(const QString &name, QWidget *parent) : QWidget(parent), name_(name)
{
    didResignMain_ = NotificationHub::shared().observe(
        NotificationName::windowDidResignMain,
        [this](const auto &) { windowDidResignMainNotification(); });
    didBecomeMain_ = NotificationHub::shared().observe(
        NotificationName::windowDidBecomeMain,
        [this](const auto &) { windowDidBecomeMainNotification(); });
}

VTLLine::~VTLLine() = default;

void VTLLine::viewWillDraw()
{
    const bool isDark = InterfaceColorStyle::isDarkMode();
    if (!colorCache_.isBuilt() || lastMode_ != isDark)
        buildColorCacheForDarkMode(isDark);
}

void VTLLine::buildColorCacheForDarkMode(bool isDark)
{
    lastMode_ = isDark;
    colorCache_.build(name_, isDark, {{background, QLatin1String("bg")}});
    const std::optional<QColor> inactive = ColorCache::inactiveColor(name_, isDark);
    hasKeyColor_ = inactive.has_value();
    if (!isMainWindow_ && inactive)
        colorCache_.insert(tint, *inactive);
}

void VTLLine::windowDidResignMainNotification()
{
    takeMainWindow(false);
}

void VTLLine::windowDidBecomeMainNotification()
{
    takeMainWindow(true);
}

void VTLLine::takeMainWindow(bool isMain)
{
    if (!hasKeyColor_)
        return;
    isMainWindow_ = isMain;
    colorCache_.drop();
    update();
}

void VTLLine::paintEvent(QPaintEvent *event)
{
    viewWillDraw();
    QPainter painter(this);
    drawRect(painter, event->rect());
}

void VTLLine::drawRect(QPainter &painter, const QRect &dirtyRect)
{
    if (const auto color = colorCache_.color(background))
        painter.fillRect(dirtyRect, *color);
}
