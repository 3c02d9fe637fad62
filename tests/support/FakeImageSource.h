#pragma once

#include "support/ImageSource.h"

/// Pictures that are texts: what was asked for is what is shown.
class FakeImageSource final : public ImageSource
{
  public:
    QVariant imageNamed(const QString &name) const override
    {
        return QString(QStringLiteral("image named ") + name);
    }

    QVariant iconForExtension(const QString &extension) const override
    {
        return QString(QStringLiteral("icon for [") + extension + QLatin1Char(']'));
    }
};
