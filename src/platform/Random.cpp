#include "platform/Random.h"

#include <cstdlib>

void Random::fill(std::span<std::uint32_t> draws)
{
    ::arc4random_buf(draws.data(), draws.size_bytes());
}

std::uint32_t Random::draw()
{
    return ::arc4random();
}

std::uint32_t Random::below(std::uint32_t bound)
{
    return ::arc4random_uniform(bound);
}
