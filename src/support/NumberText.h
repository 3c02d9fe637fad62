#pragma once

#include <QString>

#include <cstdint>
#include <limits>

/// Turns numbers into the digits that are printed, in the C locale. It knows no units.
///
/// Thread:     pure
/// Failure:    none; a value outside the integer's range gives the nearest end of the range, a
///             value that is not a number gives 0
class NumberText
{
  public:
    /// The largest single-precision value: what lies above it is shown as nothing at all.
    static constexpr double largestShown = std::numeric_limits<float>::max();

    static std::int32_t truncatedTo32Bits(double value);
    static std::int64_t truncatedTo64Bits(double value);

    /// Rounded from the exact binary value, so that 1.125, a tie, becomes the even "1.12".
    static QString withTwoDecimals(double value);

    /// "1,000,000"
    static QString grouped(std::int64_t count);
};
