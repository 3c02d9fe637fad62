#pragma once

#include <QString>
#include <QVariant>

/// Where the image transformers get their pictures. It says nothing of a picture's type, so that
/// whoever decides which picture to show needs no graphics library.
///
/// Thread:     main
/// Failure:    a null QVariant where there is no such picture
class ImageSource
{
  public:
    ImageSource() = default;
    virtual ~ImageSource();

    /// The application's own picture of exactly this name.
    virtual QVariant imageNamed(const QString &name) const = 0;

    /// The desktop's icon for files with this extension, written in lower case and without the
    /// full stop; the generic document icon for the empty extension.
    virtual QVariant iconForExtension(const QString &extension) const = 0;

  private:
    Q_DISABLE_COPY_MOVE(ImageSource)
};
