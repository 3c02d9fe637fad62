#pragma once

#include "support/ValueTransformer.h"
#include "ui/ColorThemeClass.h"

/// Whether the stored theme is a certain one, as the number 1 or 0; the way back makes it that one.
/// What the three transformers of the theme's controls have in common.
///
/// Kept on purpose: both ways ignore the value that they are given, and the way back always answers
/// the theme's own number.
///
/// Thread: main
class IsColorTheme : public ValueTransformer
{
  public:
    QVariant transformedValue(const QVariant &value) const override;
    QVariant reverseTransformedValue(const QVariant &value) const override;

    static QMetaType transformedValueClass();
    static bool allowsReverseTransformation();

  protected:
    explicit IsColorTheme(ColorThemeClass::ColorTheme theme);

  private:
    ColorThemeClass::ColorTheme theme_;
};
