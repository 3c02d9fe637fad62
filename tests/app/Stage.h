#pragma once

#include "app/Announcer.h"
#include "app/FolderScanUrls.h"
#include "app/MainLayout.h"
#include "app/MainVC.h"
#include "platform/NotificationHub.h"
#include "support/view/ErrorLogModel.h"
#include "support/view/ErrorLogWindow.h"
#include "support/view/TableViewErrorLog.h"
#include "ui/DropView.h"
#include "ui/ErasingView.h"
#include "ui/FinishedView.h"
#include "ui/HeaderBar.h"
#include "ui/HeaderButton.h"
#include "ui/MainWindow.h"
#include "ui/PlainButton.h"
#include "ui/PreferencesView.h"
#include "ui/PushTransition.h"
#include "ui/ReadyView.h"
#include "ui/ScanningSheet.h"
#include "ui/ThemedPreferences.h"
#include "ui/VTLLine.h"
#include "ui/ViewAnimator.h"

#include <QLabel>
#include <QTest>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

/// The main window with its real views, and a workflow over them whose surroundings are the test's:
/// time stands where it was set, nothing is scheduled but noted, and no dialog, file manager or
/// notification comes.
class Stage
{
  public:
    static constexpr std::int64_t zeros = 1; ///< the method of one pass

    explicit Stage(std::int64_t method = zeros)
    {
        UserDefaults::standard().registerDefaults(
            {{QStringLiteral("WipeMethod"), qlonglong(method)}});
        window.setCanBeReopened([] { return true; });
        vc = MainVC::create(outlets, surroundings());
        vc->awakeFromNib();
        QObject::connect(window.findChild<Announcer *>(), &Announcer::announced,
                         [this](const QString &text) { heard.append(text); });
        vc->viewAnimator()->transition()->setPrefersReducedMotion([] { return true; });
        window.windowScanningFiles()->setPrefersReducedMotion([] { return true; });
        window.show();
    }
    ~Stage() { vc.reset(); }
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    static void drop(const std::vector<QByteArray> &paths)
    {
        NotificationHub::shared().post(
            NotificationName::folderScanUrls, nullptr,
            QVariant::fromValue(FolderScanUrls{{paths.begin(), paths.end()}}));
    }
    static void guiHasStarted()
    {
        NotificationHub::shared().post(NotificationName::applicationDidStartGUI);
    }
    /// Lets a drop be scanned and the view come.
    bool scan(const std::vector<QByteArray> &paths)
    {
        drop(paths);
        return waitFor([this] { return !vc->isScanningFiles(); });
    }
    bool run()
    {
        vc->btnStartClicked();
        return waitFor([this] { return vc->currentView() == MainView::Finished; });
    }
    /// Until everything that was posted has been heard.
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }
    static bool waitFor(const std::function<bool()> &condition)
    {
        return QTest::qWaitFor(condition, 20'000);
    }
    [[nodiscard]] PushTransition::Subtype side() const
    {
        return vc->viewAnimator()->transition()->subtype();
    }
    [[nodiscard]] QString title() const { return outlets.titleTextField->text(); }
    [[nodiscard]] QueueStatsObject &stats() const { return *vc->queueStatsObject(); }

    struct Scheduled
    {
        std::chrono::milliseconds after;
        std::function<void()> call;
    };
    struct Message
    {
        QString title;
        QString infoText;
        std::function<void()> done;
    };
    struct Panel
    {
        QWidget *window;
        QString title;
        QString prompt;
        MainSurroundings::PanelEnd end;
    };

    ThemedPreferences preferences;
    MainLayout layout;
    MainWindow &window = layout.window;
    ErrorLogWindow &errorLog = layout.errorLog;
    const MainOutlets &outlets = layout.outlets;
    std::int64_t now = 1'000'000;
    std::function<void()> whenAskedForTime;
    std::function<void()> whenMessageComes;
    std::vector<Scheduled> scheduled;
    std::vector<Message> messages;
    std::vector<Panel> panels;
    QStringList heard; ///< by a screen reader, as alerts
    std::vector<std::vector<FileUrl>> revealed;
    MainSurroundings::Problem revealFailed;
    bool isDialogOpen = false;
    int terminations = 0;
    std::vector<std::weak_ptr<UpdaterDelegate>> updaterDelegates;
    std::shared_ptr<MainVC> vc;

  private:
    MainSurroundings surroundings()
    {
        MainSurroundings own;
        own.currentTimestamp = [this] {
            if (whenAskedForTime)
                whenAskedForTime();
            return now;
        };
        own.schedule = [this](std::chrono::milliseconds after, MainSurroundings::Call call) {
            scheduled.push_back({after, std::move(call)});
        };
        own.showMessage = [this](const QString &title, const QString &infoText,
                                 MainSurroundings::Call done) {
            messages.push_back({title, infoText, std::move(done)});
            if (whenMessageComes)
                whenMessageComes();
        };
        own.openPanel = [this](QWidget *over, const QString &title, const QString &prompt,
                               MainSurroundings::PanelEnd end) {
            panels.push_back({over, title, prompt, std::move(end)});
        };
        own.activateFileViewer = [this](const std::vector<FileUrl> &urls,
                                        MainSurroundings::Problem failed) {
            revealed.push_back(urls);
            revealFailed = std::move(failed);
        };
        own.isDialogOpen = [this] { return isDialogOpen; };
        own.terminate = [this] { ++terminations; };
        own.setUpUpdater = [this](const std::weak_ptr<UpdaterDelegate> &delegate) {
            updaterDelegates.push_back(delegate);
        };
        return own;
    }
};
