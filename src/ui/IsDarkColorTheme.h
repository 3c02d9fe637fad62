#pragma once

#include "ui/IsColorTheme.h"

/// The dark theme's transformer.
class IsDarkColorTheme final : public IsColorTheme
{
  public:
    IsDarkColorTheme() : IsColorTheme(ColorThemeClass::ColorThemeDark) {}
};
