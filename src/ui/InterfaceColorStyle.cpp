#include "ui/InterfaceColorStyle.h"

#include "platform/NotificationHub.h"
#include "platform/UserDefaults.h"
#include "ui/Appearance.h"
#include "ui/ColorThemeClass.h"
#include "ui/ThemeKeys.h"

bool InterfaceColorStyle::currentTheme()
{
    return UserDefaults::standard().integer(ThemeKeys::theme) == ColorThemeClass::ColorThemeDark;
}

bool InterfaceColorStyle::isDarkMode()
{
    return currentTheme();
}

QString InterfaceColorStyle::appearance()
{
    const QString key = isDarkMode() ? ThemeKeys::appearanceDark : ThemeKeys::appearanceLight;
    return Appearance::unarchived(UserDefaults::standard().value(key).toByteArray());
}

void InterfaceColorStyle::userChangedAppearanceTo(std::int64_t theme)
{
    if (std::int64_t(UserDefaults::standard().boolean(ThemeKeys::darkMode)) == theme)
        return;
    UserDefaults::standard().setValue(ThemeKeys::theme, qlonglong(theme));
    NotificationHub::shared().post(NotificationName::appearanceChanged);
}
