#pragma once

#include "support/ValueTransformer.h"

/// Shows a percentage without decimals, cut off and not rounded: 99.9 reads "99 %".
///
/// Thread:     main; stateless
/// Units:      percent
/// Failure:    none; no value, what is not a number and what is infinite read "0 %"
class PercentageToString final : public ValueTransformer
{
  public:
    QVariant transformedValue(const QVariant &value) const override;
};
