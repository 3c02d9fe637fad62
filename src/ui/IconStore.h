#pragma once

#include "support/ImageSource.h"

#include <QCache>
#include <QIcon>

/// The window's pictures as icons: the application's own drawings by name, and the desktop's icons
/// by a file's extension. No file is looked at.
///
/// Thread:  main
/// Failure: a null QVariant for a name without picture; the bundled document where the desktop has
///          no icon for an extension
class IconStore final : public ImageSource
{
  public:
    static const IconStore &shared();

    /// Both answer a QIcon.
    QVariant imageNamed(const QString &name) const override;
    QVariant iconForExtension(const QString &extension) const override;

  private:
    static constexpr int rememberedExtensions = 1000;

    [[nodiscard]] QIcon desktopIcon(const QString &extension) const;

    QIcon document_ = icon(QStringLiteral("document"));
    mutable QCache<QString, QIcon> byExtension_{rememberedExtensions};

    static QIcon icon(const QString &name);
};
