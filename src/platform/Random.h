#pragma once

#include <cstdint>
#include <span>

/// Random numbers of the C library's arc4random(3), which the kernel's generator feeds.
///
/// Thread:  any
/// Failure: none; the library ends the process rather than return weak numbers
namespace Random {

/// A draw of arc4random() for each element, fetched in one go.
void fill(std::span<std::uint32_t> draws);
std::uint32_t draw();
/// Uniform below `bound`.
std::uint32_t below(std::uint32_t bound);

} // namespace Random
