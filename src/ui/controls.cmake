# Buttons, pictures in their places, progress bars: the window's controls. No view, no table.
vantorel_add_library(vantorel_ui_controls GUI
  LINKS vantorel_ui_theme vantorel_engine vantorel_desktop
  SOURCES
    ApplicationIcon.cpp
    ButtonBlue.cpp
    ButtonRed.cpp
    Card.cpp
    CardRow.cpp
    CautionBand.cpp
    CautionList.cpp
    ControlButton.cpp
    ControlPaint.cpp
    DropDrawing.cpp
    DropReceiver.cpp
    FileDrop.cpp
    FocusRing.cpp
    HeaderButton.cpp
    HorizonProgressIndicator.cpp
    IconStore.cpp
    ImageView.cpp
    LinkButton.cpp
    MethodList.cpp
    MethodSelector.cpp
    PassStrip.cpp
    PathField.cpp
    PictureIcon.cpp
    PlainButton.cpp
    PopupCard.cpp
    ProgressTrack.cpp
    ReturnKey.cpp
    RunningBar.cpp
    SegmentedControl.cpp
    SwitchButton.cpp
    ThreePartButton.cpp
    ThreePartImage.cpp
    ValueTransformers.cpp
)
