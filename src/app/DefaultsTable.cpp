#include "app/DefaultsTable.h"

#include "ui/ColorProperties.h"
#include "ui/ColorThemeClass.h"
#include "ui/ThemeKeys.h"

namespace {

QVariantMap themeDefaults(bool isDark)
{
    const auto theme = isDark ? ColorThemeClass::ColorThemeDark : ColorThemeClass::ColorThemeLight;
    return {{ThemeKeys::theme, qlonglong(theme)},
            {ThemeKeys::darkMode, isDark},
            {ThemeKeys::isThemeEnabled, isDark}};
}

} // namespace

QVariantMap DefaultsTable::defaults(const Facts &facts)
{
    QVariantMap table{
        {QStringLiteral("AppVersionNr"), facts.version},
        {QStringLiteral("AppBuildNr"), facts.build},
        {QStringLiteral("appSupportPath"), facts.supportPath},
        {QStringLiteral("WipeMethod"), 4},
        {QStringLiteral("AutoExit"), false},
        {QStringLiteral("skipLinkTargets"), false},
        {QStringLiteral("checkForUpdates"), true},
        {QStringLiteral("htmlLinkContactus"), QStringLiteral("https://vantorel.org/contact")},
        {QStringLiteral("colorProperties"), ColorProperties::defaultTable()},
    };
    table.insert(themeDefaults(facts.offersDarkAppearance));
    return table;
}

QVariantMap DefaultsTable::withoutDarkAppearance()
{
    QVariantMap table = themeDefaults(false);
    table.insert(ThemeKeys::forceDarkSidebar, true);
    return table;
}
