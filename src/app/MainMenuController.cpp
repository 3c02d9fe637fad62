#include "app/MainMenuController.h"

#include "app/MainOutlets.h"
#include "app/MainVC.h"
#include "platform/UserDefaults.h"
#include "ui/ButtonRed.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/ReadyView.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

MainMenuController::MainMenuController(MainMenu *menu, std::shared_ptr<MainVC> workflow,
                                       const MainOutlets &outlets, QObject *parent)
    : QObject(parent), menu_(menu), workflow_(std::move(workflow)), outlets_(outlets)
{
    connectFile(outlets);
    connectWindow(outlets);
    connect(menu_->contactTheMakers(), &QAction::triggered, this, [] {
        QDesktopServices::openUrl(
            QUrl(UserDefaults::standard().text(QStringLiteral("htmlLinkContactus"))));
    });
    connect(menu_, &QMenu::aboutToShow, this, [this] { showWhatCanBeChosen(); });
    connect(menu_, &QMenu::aboutToHide, this, [this] { enableAll(); });
}

void MainMenuController::connectFile(const MainOutlets &outlets)
{
    connect(menu_->addFilesAndFolders(), &QAction::triggered, this, [this] {
        if (canAdd())
            workflow_->btnAddFilesClicked();
    });
    connect(menu_->startErasing(), &QAction::triggered, this, [this, outlets] {
        if (canStart())
            outlets.viewPressStart->start();
    });
    connect(menu_->preferences(), &QAction::triggered, this, [this, outlets] {
        if (outlets.btnPreferences->isEnabled() && !workflow_->scanningFilesWindowIsOpen())
            workflow_->btnPreferencesClicked();
    });
    connect(menu_->quit(), &QAction::triggered, this, [this] { quit(); });
}

void MainMenuController::connectWindow(const MainOutlets &outlets)
{
    MainWindow *window = outlets.windowMain;
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
    menu_->preferences()->setEnabled(outlets_.btnPreferences->isEnabled());
    menu_->quit()->setEnabled(!workflow_->isBusyWiping());
}

void MainMenuController::enableAll()
{
    for (QAction *action :
         {menu_->addFilesAndFolders(), menu_->startErasing(), menu_->preferences(), menu_->quit()})
        action->setEnabled(true);
}

/// A run in work is not to be cut off, half-way through a file.
void MainMenuController::quit()
{
    if (!workflow_->isBusyWiping())
        QApplication::quit();
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
