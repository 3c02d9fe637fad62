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
    const auto add = [this](const char *name, std::unique_ptr<const ValueTransformer> made) {
        entries_.push_back({QLatin1String(name), std::move(made)});
    };
    add("BytesToString", std::make_unique<BytesToString>());
    add("PercentageToString", std::make_unique<PercentageToString>());
    add("SecondsToString", std::make_unique<SecondsToString>());
    add("StatusToImage", std::make_unique<StatusToImage>(images));
    add("MainStatusToImage", std::make_unique<MainStatusToImage>(images));
    add("ExtensionImage", std::make_unique<ExtensionImage>(images));
    add("IntegerToString", std::make_unique<IntegerToString>());
}

ValueTransformerRegistry::~ValueTransformerRegistry() = default;

const ValueTransformer *ValueTransformerRegistry::transformerForName(const QString &name) const
{
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&name](const Entry &entry) { return entry.name == name; });
    return found == entries_.end() ? nullptr : found->transformer.get();
}
