#include "ui/IsColorTheme.h"

#include "platform/UserDefaults.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/ThemeKeys.h"

IsColorTheme::IsColorTheme(ColorThemeClass::ColorTheme theme) : theme_(theme)
{
}

QVariant IsColorTheme::transformedValue(const QVariant &) const
{
    return UserDefaults::standard().integer(ThemeKeys::theme) == theme_ ? 1 : 0;
}

QVariant IsColorTheme::reverseTransformedValue(const QVariant &) const
{
    if (UserDefaults::standard().integer(ThemeKeys::theme) != theme_)
        InterfaceColorStyle::userChangedAppearanceTo(theme_);
    return int(theme_);
}

QMetaType IsColorTheme::transformedValueClass()
{
    return QMetaType::fromType<int>();
}

bool IsColorTheme::allowsReverseTransformation()
{
    return true;
}
