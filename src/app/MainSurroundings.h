#pragma once

#include "platform/FileUrl.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class QWidget;
class UpdaterDelegate;

/// What the workflow needs of the world around it: time, the desktop, and dialogs.
///
/// Thread: main
struct MainSurroundings
{
    using Call = std::function<void()>;
    /// Hears why something failed.
    using Problem = std::function<void(const QString &)>;
    /// 1 for OK, and what was chosen.
    using PanelEnd = std::function<void(int response, const std::vector<QByteArray> &paths)>;

    /// Whole seconds since 1970, the fraction cut off.
    std::function<std::int64_t()> currentTimestamp;
    /// Runs the call once, after this time.
    std::function<void(std::chrono::milliseconds, Call)> schedule;
    /// Shows the user a message; calls `done` when it is out.
    std::function<void(const QString &title, const QString &infoText, Call done)> showMessage;
    /// Lets the user choose files and folders, on a sheet of this window.
    std::function<void(QWidget *window, const QString &title, const QString &prompt, PanelEnd)>
        openPanel;
    /// Shows the files, selected, in the file manager.
    std::function<void(const std::vector<FileUrl> &urls, Problem failed)> activateFileViewer;
    std::function<bool()> isDialogOpen;
    Call terminate; ///< the application
    /// Makes this the updater's delegate, and lets it check as the preferences say.
    std::function<void(const std::weak_ptr<UpdaterDelegate> &)> setUpUpdater;

    /// The real ones, but for `terminate` and `setUpUpdater`, which are the caller's to set.
    static MainSurroundings ofTheDesktop();
};
