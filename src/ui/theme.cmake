# Colours, type, pictures and the themed views.
vantorel_add_library(vantorel_ui_theme GUI
  LINKS vantorel_support Qt6::Widgets Qt6::Svg
  SOURCES
    Appearance.cpp
    ColorCache.cpp
    ColorProperties.cpp
    DesignColors.cpp
    InterfaceColorStyle.cpp
    IsColorTheme.cpp
    LineThin.cpp
    Pictures.cpp
    RoundedCorners.cpp
    StyleDrawing.cpp
    TextLabel.cpp
    ThemedView.cpp
    ToolTips.cpp
    Typography.cpp
    VTLLine.cpp
    VTLView.cpp
    VantorelStyle.cpp
    ViewMain.cpp
    WindowDrag.cpp
    pictures.qrc
)
set_target_properties(vantorel_ui_theme PROPERTIES AUTORCC ON)
