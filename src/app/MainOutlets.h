#pragma once

class DropView;
class ErasingView;
class ErrorLogModel;
class ErrorLogWindow;
class FinishedView;
class MainWindow;
class PreferencesView;
class QAbstractButton;
class QLabel;
class QWidget;
class ReadyView;
class ScanningSheet;
class TableViewErrorLog;

/// What the layout has made and the workflow works on. All of it outlives the workflow.
struct MainOutlets
{
    QWidget *viewMain = nullptr; ///< holds the one view that is shown
    DropView *viewDragDrop = nullptr;
    ReadyView *viewPressStart = nullptr;
    ErasingView *viewErasingFiles = nullptr;
    FinishedView *viewFinished = nullptr;
    PreferencesView *viewPreferences = nullptr;

    MainWindow *windowMain = nullptr;
    QWidget *toolBarSeparator = nullptr;
    QLabel *titleTextField = nullptr;
    QWidget *imgBtnInfo = nullptr;  ///< the arrow head in the callout
    QWidget *viewBtnInfo = nullptr; ///< the callout under the add button
    QAbstractButton *btnPreferences = nullptr;
    QAbstractButton *btnAddFiles = nullptr;

    ScanningSheet *windowScanningFiles = nullptr;
    QAbstractButton *btnStopScanning = nullptr;

    ErrorLogWindow *windowErrorLog = nullptr;
    TableViewErrorLog *tableViewErrorLog = nullptr;
    ErrorLogModel *errorLogArrayController = nullptr;
};
