#pragma once

#include "ui/IsColorTheme.h"

/// The system's theme's transformer.
class IsSystemColorTheme final : public IsColorTheme
{
  public:
    IsSystemColorTheme() : IsColorTheme(ColorThemeClass::ColorThemeSystem) {}
};
