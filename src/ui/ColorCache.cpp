#include "ui/ColorCache.h"

#include "ui/ColorProperties.h"

void ColorCache::build(const QString &styleName, bool isDark, std::initializer_list<Entry> entries)
{
    colors_.emplace();
    if (styleName.isEmpty())
        return;
    for (const Entry &entry : entries) {
        const std::optional<QColor> color =
            ColorProperties::color(ColorProperties::key(styleName, entry.property, isDark));
        if (color)
            insert(entry.key, *color);
    }
}

std::optional<QColor> ColorCache::color(QLatin1String key) const
{
    if (!colors_)
        return std::nullopt;
    const auto found = colors_->constFind(key);
    return found == colors_->constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<QColor> ColorCache::inactiveColor(const QString &styleName, bool isDark)
{
    if (styleName.isEmpty())
        return std::nullopt;
    return ColorProperties::color(
        ColorProperties::key(styleName, QLatin1String("bg"), isDark, true));
}
