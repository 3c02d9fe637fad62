#include "app/MainLayout.h"

#include "support/view/ErrorLogModel.h"
#include "support/view/TableViewErrorLog.h"
#include "ui/DropView.h"
#include "ui/ErasingView.h"
#include "ui/FinishedView.h"
#include "ui/HeaderBar.h"
#include "ui/HeaderButton.h"
#include "ui/ImageView.h"
#include "ui/PlainButton.h"
#include "ui/PreferencesView.h"
#include "ui/ReadyView.h"
#include "ui/ScanningSheet.h"
#include "ui/VTLLine.h"

MainLayout::MainLayout()
{
    makeViews();
    findOutlets();
}

void MainLayout::makeViews()
{
    outlets.viewMain = new QWidget;
    window.setBody(outlets.viewMain);
    QWidget *body = outlets.viewMain->parentWidget();
    outlets.viewDragDrop = new DropView(body);
    outlets.viewPressStart = new ReadyView(body);
    outlets.viewErasingFiles = new ErasingView(body);
    outlets.viewFinished = new FinishedView(body);
    outlets.viewPreferences = new PreferencesView(body);
    for (ContentView *view : std::initializer_list<ContentView *>{
             outlets.viewDragDrop, outlets.viewPressStart, outlets.viewErasingFiles,
             outlets.viewFinished, outlets.viewPreferences}) {
        view->hide();
        window.addContentView(view);
    }
    window.addDropTarget(outlets.viewDragDrop->imageView());
}

void MainLayout::findOutlets()
{
    HeaderBar *header = window.header();
    outlets.windowMain = &window;
    outlets.toolBarSeparator = header->toolBarSeparator();
    outlets.titleTextField = header->titleTextField();
    outlets.imgBtnInfo = outlets.viewDragDrop->imgBtnInfo();
    outlets.viewBtnInfo = outlets.viewDragDrop->viewBtnInfo();
    outlets.btnPreferences = header->btnPreferences();
    outlets.btnAddFiles = header->btnAddFiles();
    outlets.windowScanningFiles = window.windowScanningFiles();
    outlets.btnStopScanning = outlets.windowScanningFiles->btnStopScanning();
    outlets.windowErrorLog = &errorLog;
    outlets.tableViewErrorLog = errorLog.table();
    outlets.errorLogArrayController = errorLog.model();
}
