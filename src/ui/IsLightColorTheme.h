#pragma once

#include "ui/IsColorTheme.h"

/// The light theme's transformer.
class IsLightColorTheme final : public IsColorTheme
{
  public:
    IsLightColorTheme() : IsColorTheme(ColorThemeClass::ColorThemeLight) {}
};
