#pragma once

#include "support/ValueTransformer.h"

#include <QString>

class ImageSource;

/// The desktop's icon for a file name or path, chosen by the name's extension alone; the file
/// itself is not looked at.
///
/// Thread:     main; stateless
/// Holds weakly: the image source, which must outlive it
/// Failure:    a null QVariant for no value and where the source has no icon
class ExtensionImage final : public ValueTransformer
{
  public:
    explicit ExtensionImage(const ImageSource &images);

    QVariant transformedValue(const QVariant &value) const override;

    QVariant getIconForFileExtension(const QString &extension) const;

    /// What follows the last full stop of the last path component, in lower case; empty where
    /// there is none. A full stop that begins the name starts no extension, and slashes at the
    /// end of the path do not count.
    static QString lowerCaseExtension(const QString &path);

  private:
    const ImageSource &images_;
};
