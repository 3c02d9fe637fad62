#include "ui/ColorProperties.h"

#include "platform/UserDefaults.h"
#include "ui/InterfaceColorStyle.h"

#include <QDataStream>
#include <QIODevice>

#include <cmath>

namespace {

struct Entry
{
    const char *key;
    ColorComponents color;
};

constexpr Entry entries[] = {
    {"DefaultWindowView_bggradstart_light", {0.953, 0.961, 0.965, 1.0}},
    {"DefaultWindowView_bggradend_light", {0.9, 0.904, 0.907, 1.0}},
    {"DefaultWindowView_bggradstart_dark", {0.153, 0.172, 0.192, 1.0}},
    {"DefaultWindowView_bggradend_dark", {0.123, 0.142, 0.162, 1.0}},
    {"DefaultLine_bg_light", {0.0, 0.0, 0.0, 0.1}},
    {"DefaultLine_bg_dark", {1.0, 1.0, 1.0, 0.05}},
    {"BtnInfoLine_bg_light", {0.0, 0.0, 0.0, 0.2}},
    {"BtnInfoLine_bg_dark", {1.0, 1.0, 1.0, 0.2}},
    {"DefaultAlertView_bg_light", {0.906, 0.906, 0.906, 1.0}},
    {"DefaultAlertView_bg_dark", {0.153, 0.172, 0.192, 1.0}},
    {"DefaultTableRowView_bg_light", {1.0, 1.0, 1.0, 1.0}},
    {"DefaultTableRowView_bg_dark", {0.0, 0.0, 0.0, 1.0}},
    {"DefaultTableRowView_hovbg_light", {0.902, 0.898, 0.902, 0.4}},
    {"DefaultTableRowView_hovbg_dark", {0.0, 0.0, 0.0, 0.1}},
    {"DefaultTableRowView_selbg_light", {0.239, 0.58, 1.0, 1.0}},
    {"DefaultTableRowView_selbg_dark", {0.192, 0.31, 0.471, 1.0}},
    {"DefaultTableRowView_selbginactive_light", {0.847, 0.918, 1.0, 1.0}},
    {"DefaultTableRowView_selbginactive_dark", {0.337, 0.353, 0.369, 1.0}},
    {"DefaultTableRowView_bc_light", {0.0, 0.0, 0.0, 0.04}},
    {"DefaultTableRowView_bc_dark", {1.0, 1.0, 1.0, 0.03}},
    {"DefaultTableRowView_row_light", {0.906, 0.906, 0.906, 1.0}},
    {"DefaultTableRowView_rowodd_light", {0.945, 0.949, 0.949, 1.0}},
    {"DefaultTableRowView_row_dark", {0.153, 0.173, 0.192, 1.0}},
    {"DefaultTableRowView_rowodd_dark", {0.192, 0.212, 0.231, 1.0}},
};

constexpr QLatin1String tableKey("colorProperties");

bool isComponent(double value)
{
    return value >= 0 && value <= 1; // false for what is not a number
}

std::optional<QColor> colorIn(const QVariantMap &table, const QString &key)
{
    const auto found = table.constFind(key);
    if (found == table.constEnd())
        return std::nullopt;
    const std::optional<ColorComponents> color = ColorProperties::unarchived(found->toByteArray());
    return color ? std::optional(color->color()) : std::nullopt;
}

} // namespace

QColor ColorComponents::color() const
{
    const auto rounded = [](double value) { return int(std::lround(value * 255)); };
    return {rounded(red), rounded(green), rounded(blue), rounded(alpha)};
}

QVariantMap ColorProperties::defaultTable()
{
    QVariantMap table;
    for (const Entry &entry : entries)
        table.insert(QLatin1String(entry.key), archived(entry.color));
    return table;
}

QByteArray ColorProperties::archived(const ColorComponents &color)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << color.red << color.green << color.blue << color.alpha;
    return bytes;
}

std::optional<ColorComponents> ColorProperties::unarchived(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    ColorComponents color;
    stream >> color.red >> color.green >> color.blue >> color.alpha;
    const bool isColor = stream.status() == QDataStream::Ok && stream.atEnd() &&
                         isComponent(color.red) && isComponent(color.green) &&
                         isComponent(color.blue) && isComponent(color.alpha);
    return isColor ? std::optional(color) : std::nullopt;
}

QString ColorProperties::key(const QString &styleName, QLatin1String property, bool isDark,
                             bool isInactive)
{
    return styleName + QLatin1Char('_') + property +
           (isDark ? QLatin1String("_dark") : QLatin1String("_light")) +
           (isInactive ? QLatin1String("_inactive") : QLatin1String());
}

std::optional<QColor> ColorProperties::color(const QString &key)
{
    return colorIn(UserDefaults::standard().value(tableKey).toMap(), key);
}

std::optional<QColor> ColorProperties::current(const QString &styleName, QLatin1String property)
{
    return color(key(styleName, property, InterfaceColorStyle::isDarkMode()));
}

QColor ColorProperties::colorOrDefault(const QString &styleName, QLatin1String property,
                                       bool isDark)
{
    const QString wanted = key(styleName, property, isDark);
    const std::optional<QColor> stored = color(wanted);
    return stored ? *stored : colorIn(defaultTable(), wanted).value_or(QColor(Qt::transparent));
}

QColor ColorProperties::currentOrDefault(const QString &styleName, QLatin1String property)
{
    return colorOrDefault(styleName, property, InterfaceColorStyle::isDarkMode());
}
