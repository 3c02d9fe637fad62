#include "support/ValueTransformerRegistry.h"

#include "support/BytesToString.h"
#include "support/ExtensionImage.h"
#include "support/IntegerToString.h"
#include "support/MainStatusToImage.h"
#include "support/PercentageToString.h"
#include "support/SecondsToString.h"
#include "support/StatusToImage.h"

#include <algorithm>
#include <utility>

ValueTransformerRegistry::ValueTransformerRegistry(const ImageSource &images)
{
    add(QLatin1String("BytesToString"), std::make_unique<BytesToString>());
    add(QLatin1String("PercentageToString"), std::make_unique<PercentageToString>());
    add(QLatin1String("SecondsToString"), std::make_unique<SecondsToString>());
    add(QLatin1String("StatusToImage"), std::make_unique<StatusToImage>(images));
    add(QLatin1String("MainStatusToImage"), std::make_unique<MainStatusToImage>(images));
    add(QLatin1String("ExtensionImage"), std::make_unique<ExtensionImage>(images));
    add(QLatin1String("IntegerToString"), std::make_unique<IntegerToString>());
}

ValueTransformerRegistry::~ValueTransformerRegistry() = default;

void ValueTransformerRegistry::add(QLatin1String name,
                                   std::unique_ptr<const ValueTransformer> transformer)
{
    entries_.push_back({name, std::move(transformer)});
}

const ValueTransformer *ValueTransformerRegistry::transformerForName(const QString &name) const
{
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&name](const Entry &entry) { return entry.name == name; });
    return found == entries_.end() ? nullptr : found->transformer.get();
}
