#include "engine/WipeSchedule.h"

#include <vector>

namespace {

using WipeSchedule::Pass;
using Passes = std::vector<Pass>;

constexpr Pass random = {};

constexpr Pass byte(std::uint8_t value)
{
    return {Pass::Kind::Byte, {value, 0, 0}};
}

constexpr Pass threeBytes(std::uint8_t first, std::uint8_t second, std::uint8_t third)
{
    return {Pass::Kind::ThreeBytes, {first, second, third}};
}

Passes randomTimes(std::size_t count)
{
    return Passes(count, random);
}

Passes operator+(Passes passes, const Passes &more)
{
    passes.insert(passes.end(), more.begin(), more.end());
    return passes;
}

Passes gutmannPatterns()
{
    Passes patterns = {byte(0x55), byte(0xAA), threeBytes(0x92, 0x49, 0x24),
                       threeBytes(0x49, 0x24, 0x92), threeBytes(0x24, 0x92, 0x49)};
    for (unsigned value = 0x00; value <= 0xFF; value += 0x11)
        patterns.push_back(byte(static_cast<std::uint8_t>(value)));
    return patterns + Passes{threeBytes(0x92, 0x49, 0x24), threeBytes(0x49, 0x24, 0x92),
                             threeBytes(0x24, 0x92, 0x49), threeBytes(0x6D, 0xB6, 0xDB),
                             threeBytes(0xB6, 0xDB, 0x6D), threeBytes(0xDB, 0x6D, 0xB6)};
}

std::vector<Passes> makeSchedules()
{
    const Pass zeros = byte(0x00);
    const Pass ones = byte(0xFF);
    const Passes dodE = {zeros, ones, random};
    return {
        {},
        {zeros},
        {random},
        {zeros, random},
        dodE,
        randomTimes(3) + Passes{zeros},
        Passes{ones, zeros} + randomTimes(5),
        {zeros, ones, zeros, ones, zeros, ones, random},
        dodE + Passes{random} + dodE,
        randomTimes(33),
        randomTimes(4) + gutmannPatterns() + randomTimes(4),
    };
}

} // namespace

std::span<const Pass> WipeSchedule::passes(std::int64_t method)
{
    static const std::vector<Passes> schedules = makeSchedules();
    if (method < firstMethod || method > lastMethod)
        return {};
    return schedules[static_cast<std::size_t>(method)];
}
