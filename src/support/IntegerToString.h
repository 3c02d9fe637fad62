#pragma once

#include "support/ValueTransformer.h"

/// Hands a number on unchanged: the view itself prints integers.
///
/// Thread:     main; stateless
class IntegerToString final : public ValueTransformer
{
  public:
    IntegerToString();
};
