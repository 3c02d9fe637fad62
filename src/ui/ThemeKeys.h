#pragma once

#include <QString>

/// The preferences' keys of the colour theme.
namespace ThemeKeys {

inline const QString theme = QStringLiteral("UserDefinedSystemColorTheme");
inline const QString darkMode = QStringLiteral("DarkMode");
inline const QString isThemeEnabled = QStringLiteral("enableUserDefinedSystemColorTheme");
inline const QString appearanceDark = QStringLiteral("appearanceDark");
inline const QString appearanceLight = QStringLiteral("appearanceLight");
inline const QString forceDarkSidebar = QStringLiteral("ForceDarkSidebarAppearance");

} // namespace ThemeKeys
