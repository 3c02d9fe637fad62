# The application's own dialog boxes.
vantorel_add_library(vantorel_ui_dialogs GUI
  LINKS vantorel_ui_window
  SOURCES
    CautionIcon.cpp
    DialogBox.cpp
    DialogBoxes.cpp
    DialogButton.cpp
    DialogGeometry.cpp
    DialogParts.cpp
    DialogScrim.cpp
)
