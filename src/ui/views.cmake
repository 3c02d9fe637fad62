# The five views of the main window: layout over the controls and the table.
vantorel_add_library(vantorel_ui_views GUI
  LINKS vantorel_ui_table vantorel_ui_controls vantorel_desktop
  SOURCES
    AddCallout.cpp
    ContentView.cpp
    DropView.cpp
    DropZone.cpp
    ErasingView.cpp
    Figure.cpp
    FinishedView.cpp
    PreferenceRow.cpp
    PreferencesView.cpp
    ReadyView.cpp
    StatusPicture.cpp
    ViewLayouts.cpp
    ViewRuler.cpp
)
