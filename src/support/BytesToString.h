#pragma once

#include "support/ValueTransformer.h"

/// Shows a number of bytes as BytesFormatter does.
///
/// Thread:     main; stateless
/// Units:      bytes
/// Failure:    none; no value and what is not a number read "0 Bytes"
class BytesToString final : public ValueTransformer
{
  public:
    QVariant transformedValue(const QVariant &value) const override;
};
