#pragma once

#include "support/ValueTransformer.h"

#include <QString>

#include <cstdint>

class ImageSource;

/// The icon of one file of the queue, chosen by the file's status.
///
/// Thread:     main; stateless
/// Holds weakly: the image source, which must outlive it
/// Failure:    a null QVariant for a pending file and where the source has no such picture
class StatusToImage final : public ValueTransformer
{
  public:
    explicit StatusToImage(const ImageSource &images);

    QVariant transformedValue(const QVariant &value) const override;

    /// A null name means that no icon is shown.
    static QString imageName(std::int64_t status);

  private:
    const ImageSource &images_;
};
