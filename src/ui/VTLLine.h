#pragma once

#include "ui/ThemedView.h"

/// A separator line in the colour that its style name has in the table of colours, for the current
/// theme; never darker than the theme, whatever "ForceDarkSidebarAppearance" says. Kept on purpose:
/// of a style with a colour for windows that are not the main one it keeps that colour as its tint,
/// and never draws it.
///
/// Thread: main
class VTLLine : public ThemedView
{
    Q_OBJECT

  public:
    explicit VTLLine(const QString &name = {}, QWidget *parent = nullptr);

  protected:
    void buildColorsForDarkMode(bool isDark) override;
    void drawRect(QPainter &painter, const QRect &dirtyRect) override;
};
