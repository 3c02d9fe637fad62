# Colours, type, pictures and the themed views.
vantorel_add_library(vantorel_ui_theme GUI
  LINKS vantorel_support Qt6::Widgets Qt6::Svg
  SOURCES
    Appearance.cpp
    ColorProperties.cpp
    DesignColors.cpp
    InterfaceColorStyle.cpp
    TextLabel.cpp
    Typography.cpp
)
