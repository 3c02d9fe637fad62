#include "app/MainInterface.h"

#include "app/AppDelegate.h"
#include "app/MainLayout.h"
#include "app/MainMenuController.h"
#include "app/MainVC.h"
#include "app/PreferencesPresenter.h"
#include "support/view/ErrorLogWindow.h"
#include "ui/DropView.h"
#include "ui/FinishedView.h"
#include "ui/HeaderBar.h"
#include "ui/HeaderButton.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/PreferencesView.h"
#include "ui/ReadyView.h"
#include "ui/ScanningSheet.h"

/// The parts in the order in which they depend on each other: the last made goes first.
struct MainInterface::Parts
{
    MainLayout layout;
    std::shared_ptr<MainVC> workflow;
    std::unique_ptr<PreferencesPresenter> preferences;
    std::unique_ptr<MainMenuController> menu;

    void connectViews();
    void connectPreferences();
    void connectWindow();
};

MainInterface::MainInterface(AppDelegate &delegate) : parts_(std::make_unique<Parts>())
{
    Parts &parts = *parts_;
    // Nothing brings a hidden window back yet, so it is minimised instead.
    parts.layout.window.setCanBeReopened([] { return false; });
    parts.layout.window.awakeFromNib();
    parts.layout.errorLog.awakeFromNib();
    parts.workflow = MainVC::create(parts.layout.outlets);
    parts.workflow->awakeFromNib();
    parts.connectViews();
    parts.connectPreferences();
    parts.connectWindow();
    delegate.setWindow(&parts.layout.window);
    delegate.setMenuItemMainWindow(parts.layout.window.mainMenu()->mainWindow());
}

MainInterface::~MainInterface() = default;

void MainInterface::Parts::connectViews()
{
    MainVC *vc = workflow.get();
    QObject *window = &layout.window;
    const MainOutlets &outlets = layout.outlets;
    const auto add = [vc] { vc->btnAddFilesClicked(); };
    QObject::connect(outlets.viewDragDrop, &DropView::chooseClicked, window, add);
    QObject::connect(outlets.viewDragDrop, &DropView::addClicked, window, add);
    QObject::connect(outlets.viewPressStart, &ReadyView::startClicked, window,
                     [vc] { vc->btnStartClicked(); });
    QObject::connect(outlets.viewFinished, &FinishedView::eraseMoreClicked, window,
                     [vc] { vc->showViewDragDrop(); });
    QObject::connect(outlets.viewFinished, &FinishedView::showErrorLogClicked, window,
                     [vc] { vc->showErrorLogClicked(); });
    QObject::connect(outlets.viewPreferences, &PreferencesView::doneClicked, window,
                     [vc] { vc->toggleViewPreferences(); });
}

void MainInterface::Parts::connectPreferences()
{
    MainVC *vc = workflow.get();
    const MainOutlets &outlets = layout.outlets;
    preferences = std::make_unique<PreferencesPresenter>(
        outlets.viewPreferences,
        PreferencesPresenter::Actions{[vc] { vc->wipeSelectorClicked(); },
                                      [vc](int theme) { vc->appearanceSettingChanged(theme); }},
        nullptr);
    preferences->bindMethodSelector(outlets.viewPressStart->methodSelector());
}

void MainInterface::Parts::connectWindow()
{
    MainVC *vc = workflow.get();
    MainWindow *window = &layout.window;
    HeaderBar *header = window->header();
    QObject::connect(header->btnAddFiles(), &HeaderButton::clicked, window,
                     [vc] { vc->btnAddFilesClicked(); });
    QObject::connect(header->btnPreferences(), &HeaderButton::clicked, window,
                     [vc] { vc->btnPreferencesClicked(); });
    QObject::connect(header->btnErrorLog(), &HeaderButton::clicked, window,
                     [vc] { vc->showErrorLogClicked(); });
    QObject::connect(window->windowScanningFiles(), &ScanningSheet::stopClicked, window,
                     [vc] { vc->btnStopScanningClicked(); });
    QObject::connect(window, &MainWindow::dragStateChanged, window,
                     [vc](int items) { vc->dragStateChanged(items); });
    QObject::connect(&layout.errorLog, &ErrorLogWindow::willClose, window,
                     [vc, this] { vc->windowWillClose(&layout.errorLog); });
    QObject::connect(&layout.errorLog, &ErrorLogWindow::showInFolder, window,
                     [vc] { vc->revealInFinderlicked(); });
    menu =
        std::make_unique<MainMenuController>(window->mainMenu(), workflow, layout.outlets, nullptr);
}
