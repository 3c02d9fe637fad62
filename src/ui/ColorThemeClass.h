#pragma once

#include <cstdint>

/// Holds the enumeration of the colour themes, as they stand in the preferences.
class ColorThemeClass
{
  public:
    enum ColorTheme : std::int64_t {
        ColorThemeLight = 0,
        ColorThemeDark = 1,
        /// Kept on purpose: drawn light while it stands, and dark from the next start.
        ColorThemeSystem = 2
    };
};
