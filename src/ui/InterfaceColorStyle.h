#pragma once

#include <QString>

#include <cstdint>

/// The one entry for questions about the colour theme and for changes of it. All state stands in
/// the preferences.
///
/// Thread: main
class InterfaceColorStyle
{
  public:
    /// Whether the theme is dark: exactly when the stored value is 1. (Kept on purpose: the name
    /// speaks of the theme, the answer says whether it is dark.)
    static bool currentTheme();
    static bool isDarkMode();

    /// The identifier of the window's appearance under the current theme; null where none is
    /// stored.
    static QString appearance();

    /// Takes in the user's choice, a value of ColorThemeClass.
    ///
    /// Kept on purpose: the choice is compared with the "DarkMode" mirror, not with the stored
    /// theme. Light while light colours show changes nothing, also when the system's theme is
    /// stored; that one always counts.
    static void userChangedAppearanceTo(std::int64_t theme);
};
