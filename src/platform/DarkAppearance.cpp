#include "platform/DarkAppearance.h"

#include <utility>

namespace {

/// The application draws both appearances itself, so each desktop offers them.
bool isOffered = true;

} // namespace

bool DarkAppearance::isSupported()
{
    return isOffered;
}

DarkAppearance::Replacement::Replacement(bool isSupported)
    : previous_(std::exchange(isOffered, isSupported))
{
}

DarkAppearance::Replacement::~Replacement()
{
    isOffered = previous_;
}
