#pragma once

#include "support/ValueTransformer.h"

#include <QString>

#include <cstdint>

class ImageSource;

/// The icon of the run as a whole, chosen by the run's status. The icon of one file comes from
/// StatusToImage.
///
/// Thread:     main; stateless
/// Holds weakly: the image source, which must outlive it
/// Failure:    a null QVariant where the source has no such picture
class MainStatusToImage final : public ValueTransformer
{
  public:
    explicit MainStatusToImage(const ImageSource &images);

    QVariant transformedValue(const QVariant &value) const override;

    static QString imageName(std::int64_t runStatus);

  private:
    const ImageSource &images_;
};
