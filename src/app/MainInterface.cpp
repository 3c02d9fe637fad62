#include "app/MainInterface.h"

#include "app/AppDelegate.h"
#include "app/MainLayout.h"
#include "app/MainMenuController.h"
#include "app/MainVC.h"
#include "app/PreferencesPresenter.h"
#include "app/Termination.h"
#include "app/UpdatePresenter.h"
#include "app/update/UpdateSettings.h"
#include "platform/ApplicationService.h"
#include "platform/FileManager.h"
#include "platform/PathBytes.h"
#include "platform/ProcessEnd.h"
#include "platform/SessionBus.h"
#include "platform/ShutdownDelay.h"
#include "platform/StopSignals.h"
#include "platform/UserDefaults.h"
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

#include <QApplication>
#include <QPointer>
#include <QSessionManager>

#include <vector>

namespace {

QString placeOf(const FileUrl &file)
{
    return QCoreApplication::translate(
               "MainInterface",
               "The new version is saved as %1. It could not be shown in a file manager.")
        .arg(PathBytes::printable(file.path()));
}

} // namespace

/// The parts in the order in which they depend on each other: the last made goes first.
struct MainInterface::Parts
{
    MainLayout layout;
    std::shared_ptr<MainVC> workflow;
    std::unique_ptr<PreferencesPresenter> preferences;
    std::unique_ptr<UpdatePresenter> updates;
    std::unique_ptr<MainMenuController> menu;
    std::unique_ptr<Termination> termination;
    std::unique_ptr<ShutdownDelay> shutdownDelay;
    std::unique_ptr<StopSignals> stopSignals;
    std::vector<NotificationHub::Token> runObservers;

    [[nodiscard]] MainSurroundings surroundings();
    void makeUpdates(Updater::Settings settings);
    void makeTermination(ApplicationService &service);
    void connectSystem();
    void connectViews();
    void connectPreferences();
    void connectWindow();
};

MainInterface::MainInterface(AppDelegate &delegate, ApplicationService &service, bool isFirst,
                             Updater::Settings updates)
    : parts_(std::make_unique<Parts>())
{
    Parts &parts = *parts_;
    parts.layout.window.setCanBeReopened([isFirst] { return isFirst && SessionBus::isThere(); });
    parts.layout.window.awakeFromNib();
    parts.layout.errorLog.awakeFromNib();
    parts.workflow = MainVC::create(parts.layout.outlets, parts.surroundings());
    parts.workflow->awakeFromNib();
    parts.connectViews();
    parts.connectPreferences();
    parts.connectWindow();
    parts.makeUpdates(std::move(updates));
    parts.makeTermination(service);
    parts.connectSystem();
    delegate.setWindow(&parts.layout.window);
    delegate.setMenuItemMainWindow(parts.layout.window.mainMenu()->mainWindow());
}

MainInterface::~MainInterface() = default;

MainSurroundings MainInterface::Parts::surroundings()
{
    MainSurroundings own = MainSurroundings::ofTheDesktop();
    own.terminate = [this] { termination->leave(); };
    own.setUpUpdater = [this](const std::weak_ptr<UpdaterDelegate> &delegate) {
        UpdateSettings::setSparkleSettings(&updates->updater(), delegate);
        UpdateSettings::followCheckForUpdates(&updates->updater());
    };
    return own;
}

void MainInterface::Parts::makeUpdates(Updater::Settings settings)
{
    MainVC *vc = workflow.get();
    const auto isBusy = [vc] {
        return vc->isBusyWiping() || vc->isScanningFiles() || QApplication::activeModalWidget() ||
               QApplication::activePopupWidget();
    };
    const auto reveal = [this](const FileUrl &file) {
        FileManager::showItems({file}, [presenter = QPointer(updates.get()), file](const auto &) {
            if (presenter)
                presenter->say(placeOf(file));
        });
    };
    updates = std::make_unique<UpdatePresenter>(std::move(settings), isBusy, reveal);
    layout.outlets.viewPreferences->setChecksForUpdates(updates->updater().isConfigured());
    QObject::connect(layout.window.mainMenu()->checkForUpdates(), &QAction::triggered,
                     updates.get(), [this, vc] {
                         if (!vc->isBusyWiping())
                             updates->updater().checkForUpdates();
                     });
}

void MainInterface::Parts::makeTermination(ApplicationService &service)
{
    MainVC *vc = workflow.get();
    Termination::Actions actions;
    actions.isErasing = [vc] { return vc->isBusyWiping(); };
    actions.stopErasing = [vc] { vc->stopErasing(); };
    actions.filesRemaining = [vc] { return vc->queueStatsObject()->totalFilesRemaining(); };
    actions.stopScan = [vc] { vc->stopScan(); };
    actions.stopListening = [&service] { service.close(); };
    actions.leave = [] { QApplication::quit(); };
    actions.endNow = [vc](int exitCode) {
        vc->logBrokenOff();
        UserDefaults::standard().synchronize();
        ProcessEnd::now(exitCode);
    };
    termination = std::make_unique<Termination>(std::move(actions));
    QObject::connect(menu.get(), &MainMenuController::quitChosen, termination.get(),
                     &Termination::quit);
}

void MainInterface::Parts::connectSystem()
{
    Termination *end = termination.get();
    stopSignals = std::make_unique<StopSignals>([end](int) { end->stop(); });
    shutdownDelay = std::make_unique<ShutdownDelay>([end] { end->stop(); });
    ShutdownDelay *delay = shutdownDelay.get();
    NotificationHub &hub = NotificationHub::shared();
    runObservers.push_back(
        hub.observe(NotificationName::runDidStart, [delay](const auto &) { delay->begin(); }));
    runObservers.push_back(
        hub.observe(NotificationName::runDidEnd, [delay](const auto &) { delay->end(); }));
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, end,
        [end](const QSessionManager &) { end->finishFileInWork(); }, Qt::DirectConnection);
    // What waited in a session is not to wait again in the next one.
    QObject::connect(
        qApp, &QGuiApplication::saveStateRequest, end,
        [](QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); },
        Qt::DirectConnection);
}

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
    // Qt asks only windows that are to be seen.
    MainMenu *actions = window->mainMenu();
    layout.errorLog.addActions(
        {actions->mainWindow(), actions->errorLog(), actions->aboutVantorel(), actions->quit()});
    menu =
        std::make_unique<MainMenuController>(window->mainMenu(), workflow, layout.outlets, nullptr);
}
