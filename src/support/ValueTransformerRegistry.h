#pragma once

#include "support/ValueTransformer.h"

#include <QLatin1String>
#include <QString>

#include <memory>
#include <vector>

class ImageSource;

/// The value transformers by their class names, one of each.
///
/// Thread:     main
/// Owns:       the transformers.  Holds weakly: the image source, which must outlive it
/// Failure:    nullptr for a name that is no transformer's
class ValueTransformerRegistry
{
  public:
    explicit ValueTransformerRegistry(const ImageSource &images);
    ~ValueTransformerRegistry();

    const ValueTransformer *transformerForName(const QString &name) const;

  private:
    Q_DISABLE_COPY_MOVE(ValueTransformerRegistry)

    struct Entry
    {
        QLatin1String name;
        std::unique_ptr<const ValueTransformer> transformer;
    };

    std::vector<Entry> entries_;
};
