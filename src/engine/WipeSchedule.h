#pragma once

#include <array>
#include <cstdint>
#include <span>

/// The passes of the wipe methods.
///
/// Thread: pure
namespace WipeSchedule {

/// One overwrite of the whole file.
struct Pass
{
    enum class Kind : std::uint8_t { Byte, ThreeBytes, Random };

    Kind kind = Kind::Random;
    std::array<std::uint8_t, 3> bytes{}; ///< Byte: the first; ThreeBytes: all
};

constexpr std::int64_t firstMethod = 1;
constexpr std::int64_t lastMethod = 10;

/// The passes of the method in their order; none for a number outside firstMethod..lastMethod.
/// 4: US DoD 5220.22-M; 3: GOST R 50739-95; 7: BSI VSITR; 10: P. Gutmann, "Secure Deletion of Data
/// from Magnetic and Solid-State Memory", 1996, table of overwrite patterns.
std::span<const Pass> passes(std::int64_t method);

} // namespace WipeSchedule
