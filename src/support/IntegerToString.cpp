#include "support/IntegerToString.h"

IntegerToString::IntegerToString() = default;
