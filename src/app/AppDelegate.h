#pragma once

#include "platform/FileUrl.h"
#include "ui/DropReceiver.h"

#include <QByteArray>
#include <QStandardPaths>

#include <memory>
#include <vector>

class MainWindow;
class QAction;

/// Brings the application up, and is the door through which files from outside reach the queue:
/// each entry ends in one "FolderScanUrls". It knows the main window and nothing of the run.
///
/// Thread:       main
/// Owns:         nothing.  Holds weakly: the window and its menu item, which outlive it
/// Failure:      without a support folder initialize() answers false and nothing is to be started
class AppDelegate : public DropReceiver, public std::enable_shared_from_this<AppDelegate>
{
    struct Private
    {
    };

  public:
    enum class SearchPathDomain { User, System };

    static std::shared_ptr<AppDelegate> create()
    {
        return std::make_shared<AppDelegate>(Private{});
    }
    explicit AppDelegate(Private) {}

    void setWindow(MainWindow *window) { window_ = window; }
    void setMenuItemMainWindow(QAction *item) { menuItemMainWindow_ = item; }

    /// Installs the fallbacks of the preferences and makes sure of the support folder; before
    /// anything reads a preference. `supportPath` gets the folder's path, also where it could not
    /// be made; null where there is no place for it.
    static bool initialize(QByteArray *supportPath);
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

    void startGUI();
    void notifyAppThatGUIIsStarted();
    void showMainWindow();
    void menuShowMainWindow() { showMainWindow(); }
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    void windowDidBecomeKey();
    void windowDidResignKey();

  private:
    MainWindow *window_ = nullptr;
    QAction *menuItemMainWindow_ = nullptr;
};
