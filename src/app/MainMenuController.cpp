#include "app/MainMenuController.h"

#include "app/AboutBox.h"
#include "app/ContactLink.h"
#include "app/MainOutlets.h"
#include "app/MainVC.h"
#include "ui/ButtonRed.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/ReadyView.h"

#include <QAbstractButton>

MainMenuController::MainMenuController(MainMenu *menu, std::shared_ptr<MainVC> workflow,
                                       const MainOutlets &outlets, QObject *parent)
    : QObject(parent), menu_(menu), workflow_(std::move(workflow)), outlets_(outlets)
{
    connectFile();
    connectWindow();
    connect(menu_->contactTheMakers(), &QAction::triggered, this, [] { ContactLink::open(); });
    connect(menu_->aboutVantorel(), &QAction::triggered, this, [] { AboutBox::show(); });
    connect(menu_, &QMenu::aboutToShow, this, [this] { showWhatCanBeChosen(); });
    connect(menu_, &QMenu::aboutToHide, this, [this] { enableAll(); });
}

void MainMenuController::connectFile()
{
    connect(menu_->addFilesAndFolders(), &QAction::triggered, this, [this] {
        if (canAdd())
            workflow_->btnAddFilesClicked();
    });
    connect(menu_->startErasing(), &QAction::triggered, this, [this] {
        if (canStart())
            outlets_.viewPressStart->start();
    });
    connect(menu_->preferences(), &QAction::triggered, this, [this] {
        if (outlets_.btnPreferences->isEnabled() && !workflow_->scanningFilesWindowIsOpen())
            workflow_->btnPreferencesClicked();
    });
    connect(menu_->quit(), &QAction::triggered, this, &MainMenuController::quitChosen);
}

void MainMenuController::connectWindow()
{
    MainWindow *window = outlets_.windowMain;
    connect(menu_->mainWindow(), &QAction::triggered, window, &MainWindow::makeKeyAndOrderFront);
    connect(menu_->errorLog(), &QAction::triggered, this,
            [this] { workflow_->menuToggleErrorLogClicked(); });
    connect(menu_->minimise(), &QAction::triggered, window, &MainWindow::performMiniaturize);
    connect(menu_->closeWindow(), &QAction::triggered, window, &MainWindow::performClose);
}

void MainMenuController::showWhatCanBeChosen()
{
    menu_->addFilesAndFolders()->setEnabled(canAdd());
    menu_->startErasing()->setEnabled(canStart());
    menu_->checkForUpdates()->setEnabled(!workflow_->isBusyWiping());
    menu_->preferences()->setEnabled(outlets_.btnPreferences->isEnabled());
}

void MainMenuController::enableAll()
{
    for (QAction *action : {menu_->addFilesAndFolders(), menu_->startErasing(),
                            menu_->preferences(), menu_->checkForUpdates()})
        action->setEnabled(true);
}

bool MainMenuController::canAdd() const
{
    return outlets_.btnAddFiles->isEnabled() && !workflow_->scanningFilesWindowIsOpen();
}

bool MainMenuController::canStart() const
{
    return workflow_->currentView() == MainView::Ready &&
           outlets_.viewPressStart->startButton()->isEnabled() &&
           !workflow_->scanningFilesWindowIsOpen();
}
