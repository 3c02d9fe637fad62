# The window and what belongs to it whatever view it shows.
vantorel_add_library(vantorel_ui_window GUI
  LINKS vantorel_ui_table vantorel_compositor vantorel_desktop
  SOURCES
    DragState.cpp
    DragVeil.cpp
    FocusOrder.cpp
    FramelessWindow.cpp
    HeaderBar.cpp
    MainMenu.cpp
    MainWindow.cpp
    OpenPanel.cpp
    OpenPanelModel.cpp
    PushTransition.cpp
    ScanningSheet.cpp
    ViewAnimator.cpp
    VTLGetMainWindow.cpp
    WindowGeometry.cpp
    WindowHeader.cpp
    WindowRegister.cpp
)
