#pragma once

#include <QColor>

/// What a colour of the design is for. The themed views' own colours are in ColorProperties.
enum class ColorRole {
    Text,
    TextSecondary,
    TextDisabled,
    TextOnSelection,
    TextOnInactiveSelection,
    Accent, ///< links
    Focus,  ///< focus ring, frame of the drop zone under a drag
    Ok,
    Bad,
    Warn,
    WarnBackground,
    WarnEdge,
    WarnIcon,
    Surface, ///< tables, cards
    SurfaceHead,
    Edge,        ///< of cards
    EdgeControl, ///< of buttons and selectors
    EdgeField,   ///< of text fields
    WindowEdge,
    Control,
    ControlHover,
    ControlPressed,
    GhostHover, ///< header buttons, menu rows
    GhostPressed,
    Tint,    ///< drop target
    TintRow, ///< row in work
    Track,   ///< ground behind a progress bar
    SwitchOff,
    SwitchOn,
    SegmentBackground,
    SegmentOn,
    DropBackground,
    DropDash,
    Menu,
    Scrim,       ///< over a window under a sheet or dialog
    DialogStrip, ///< behind a dialog's buttons
    PassLine,
    PassFill,
    Blue ///< progress, pass cells of a run; the same in both themes
};

/// The colours of the design by their role.
///
/// Thread: main
namespace DesignColors {

QColor color(ColorRole role, bool isDark);
/// In the current theme. With high contrast, edges are as strong as secondary text.
QColor color(ColorRole role);

void setHighContrast(bool isHigh);

} // namespace DesignColors
