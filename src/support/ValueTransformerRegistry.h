#pragma once

#include "support/ValueTransformer.h"

#include <QLatin1String>
#include <QString>

#include <memory>
#include <vector>

class ImageSource;

/// The value transformers by their class names, one of each: those of this layer, and what is
/// added.
///
/// Thread:     main
/// Owns:       the transformers.  Holds weakly: the image source, which must outlive it
/// Failure:    nullptr for a name that is no transformer's
class ValueTransformerRegistry
{
  public:
    explicit ValueTransformerRegistry(const ImageSource &images);
    ~ValueTransformerRegistry();

    /// For the transformers of the layers above. A name that is taken keeps what it has.
    void add(QLatin1String name, std::unique_ptr<const ValueTransformer> transformer);

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
