#include "ui/ThemedView.h"

#include "ui/InterfaceColorStyle.h"

#include <QPaintEvent>
#include <QPainter>

ThemedView::ThemedView(const QString &name, QWidget *parent) : QWidget(parent), name_(name)
{
    defaultInit();
}

void ThemedView::defaultInit()
{
    isMainWindow_ = true;
    didResignMain_ = NotificationHub::shared().observe(
        NotificationName::windowDidResignMain,
        [this](const auto &) { windowDidResignMainNotification(); });
    didBecomeMain_ = NotificationHub::shared().observe(
        NotificationName::windowDidBecomeMain,
        [this](const auto &) { windowDidBecomeMainNotification(); });
}

void ThemedView::setName(const QString &name)
{
    name_ = name;
    colorCache_.drop();
    update();
}

void ThemedView::viewWillDraw()
{
    const bool isDark = InterfaceColorStyle::isDarkMode();
    if (!colorCache_.isBuilt() || lastMode_ != isDark)
        buildColorCacheForDarkMode(isDark);
}

void ThemedView::buildColorCacheForDarkMode(bool isDark)
{
    lastMode_ = isDark;
    buildColorsForDarkMode(isDark);
}

void ThemedView::buildColors(bool isDark, std::initializer_list<ColorCache::Entry> entries)
{
    colorCache_.build(name_, isDark, entries);
    const std::optional<QColor> inactive = ColorCache::inactiveColor(name_, isDark);
    hasKeyColor_ = inactive.has_value();
    if (!isMainWindow_ && inactive)
        colorCache_.insert(tint, *inactive);
}

void ThemedView::windowDidResignMainNotification()
{
    takeMainWindow(false);
}

void ThemedView::windowDidBecomeMainNotification()
{
    takeMainWindow(true);
}

void ThemedView::takeMainWindow(bool isMain)
{
    if (!hasKeyColor_)
        return;
    isMainWindow_ = isMain;
    colorCache_.drop();
    update();
}

void ThemedView::paintEvent(QPaintEvent *event)
{
    viewWillDraw();
    QPainter painter(this);
    drawRect(painter, event->rect());
}
