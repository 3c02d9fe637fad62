#pragma once

#include "app/OutsideEntries.h"
#include "platform/FileUrl.h"
#include "ui/DropReceiver.h"

#include <QByteArray>
#include <QStandardPaths>

#include <functional>
#include <memory>
#include <vector>

class MainWindow;
class ApplicationService;
class QAction;

/// Brings the application up, and is the door through which files from outside reach the queue:
/// each entry ends in one "FolderScanUrls". It knows the main window and nothing of the run.
///
/// Thread:       main
/// Owns:         the activity.  Holds weakly: the window, its menu item and the desktop's service,
///               which outlive it
/// Failure:      without a support folder initialize() answers false and nothing is to be started
class AppDelegate : public DropReceiver, public std::enable_shared_from_this<AppDelegate>
{
    struct Private
    {
    };

  public:
    enum class SearchPathDomain { User, System };

    /// What the desktop has for it; without it the application is heard of by nobody, and the
    /// machine may fall asleep.
    struct Desktop
    {
        ApplicationService *service = nullptr;
        std::function<std::shared_ptr<void>()> beginActivity;
    };

    static std::shared_ptr<AppDelegate> create(Desktop desktop);
    AppDelegate(Private, Desktop desktop);

    void setWindow(MainWindow *window) { window_ = window; }
    void setMenuItemMainWindow(QAction *item) { menuItemMainWindow_ = item; }

    /// Installs the fallbacks of the preferences and makes sure of the support folder; before
    /// anything reads a preference. Where the folder cannot be made it says so in a dialog and
    /// answers false.
    static bool initialize();
    /// The first folder of this kind in the domain, with the component appended; made if nothing
    /// stands there. Kept on purpose: what stands there need not be a folder.
    static bool findOrCreateDirectory(QStandardPaths::StandardLocation kind,
                                      SearchPathDomain inDomain,
                                      const QByteArray &appendPathComponent, QByteArray *path);

    void applicationDidFinishLaunching();
    [[nodiscard]] bool answers(Call) const override { return true; }
    /// Absolute paths; empty ones are passed over.
    void openFiles(const std::vector<QByteArray> &paths) override;
    void addUrlArrayToQueue(const std::vector<FileUrl> &urls);

    /// From now on other programs reach the queue, and bring the window to the front.
    void setUpService();
    void startGUI();
    void notifyAppThatGUIIsStarted();
    void showMainWindow();
    void menuShowMainWindow() { showMainWindow(); }
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    void windowDidBecomeKey();
    void windowDidResignKey();
    /// Keeps the machine from falling asleep by itself, to the process's end.
    void disableAppNap();

  private:
    Desktop desktop_;
    OutsideEntries outside_;
    std::shared_ptr<void> activity_;
    MainWindow *window_ = nullptr;
    QAction *menuItemMainWindow_ = nullptr;
};
