#include "ui/ValueTransformers.h"

#include "support/ValueTransformerRegistry.h"
#include "ui/IconStore.h"
#include "ui/IsDarkColorTheme.h"
#include "ui/IsLightColorTheme.h"
#include "ui/IsSystemColorTheme.h"

namespace {

struct Registered : ValueTransformerRegistry
{
    Registered() : ValueTransformerRegistry(IconStore::shared())
    {
        add(QLatin1String("IsLightColorTheme"), std::make_unique<IsLightColorTheme>());
        add(QLatin1String("IsDarkColorTheme"), std::make_unique<IsDarkColorTheme>());
        add(QLatin1String("IsSystemColorTheme"), std::make_unique<IsSystemColorTheme>());
    }
};

} // namespace

const ValueTransformerRegistry &ValueTransformers::shared()
{
    static const Registered registered;
    return registered;
}
