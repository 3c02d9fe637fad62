#pragma once

#include "app/AutoExit.h"
#include "app/ContentTransitions.h"
#include "app/MainOutlets.h"
#include "app/MainSurroundings.h"
#include "app/run/EraseRun.h"
#include "app/update/UpdaterDelegate.h"
#include "engine/WipeController.h"
#include "engine/WipeDescriptionController.h"
#include "platform/NotificationHub.h"
#include "scan/FolderScannerController.h"
#include "ui/ViewAnimatorDelegate.h"

#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class ContentView;
class Presenters;
class ViewAnimator;
struct ErrorLogRow;

/// The workflow of the main window: moves it through its five views, hands what comes in to the
/// scanner and what that finds to the queue, runs an erase from Start to the summary, and clears up
/// behind it. It decides little and shows nothing itself: which view comes from where stands in
/// ContentTransitions, data and arithmetic of a run in EraseRun, what a view says in its presenter.
///
/// Thread:       main
/// Owns:         the run, the scanner, the wipe controller, the animator, the presenters
/// Holds weakly: the outlets, which outlive it
/// Blocks:       on disk I/O while it removes the folders at the end of a run, and for each line of
///               the log
/// Failure:      a failed file becomes a row of the error log, and nothing stops for it
class MainVC : public FolderScannerControllerDelegate,
               public WipeControllerDelegate,
               public ViewAnimatorDelegate,
               public QueueStatsObjectDelegate,
               public UpdaterDelegate,
               public std::enable_shared_from_this<MainVC>
{
    struct Private
    {
    };

  public:
    /// awakeFromNib() is to be called next.
    static std::shared_ptr<MainVC>
    create(const MainOutlets &outlets,
           MainSurroundings surroundings = MainSurroundings::ofTheDesktop());
    MainVC(Private, const MainOutlets &outlets, MainSurroundings surroundings);
    ~MainVC() override;
    MainVC(const MainVC &) = delete;
    MainVC &operator=(const MainVC &) = delete;

    // Set-up
    void awakeFromNib();
    void initControllers();
    void applicationDidStartGUI();
    void showInitialView();
    void setSparkleSettings();
    std::optional<AppcastItem> bestValidUpdateInAppcast(const Appcast &appcast,
                                                        const Updater *forUpdater) override;

    // Entry of files
    void folderScanUrlsSelector(const NotificationHub::Notification &notification);
    void btnAddFilesClicked();
    void openFilesDialog();
    void folderScanURLS(const std::vector<FileUrl> &urls);
    void openWindowScanningFiles();
    void closeWindowScanningFiles();
    void scanningSheetHasGone();
    void btnStopScanningClicked();
    void newObjectsForQueue(ScanReport report) override;
    void scanFailed(const ScanFailures &failures) override;
    void addObjectsFromArray(QueueArray::Items objects);
    void addFolderObjectsToQueueFromDict(FolderMap folders);
    /// Adds what is new to the files and bytes to do; the queue stays as it is.
    QueueArray::Items makeUniqueArray(QueueArray::Items objects);

    // Run
    void btnStartClicked();
    void startErasing();
    /// The file in work is finished, the next is not started, and no folder is removed; the end of
    /// the run comes as usual.
    void stopErasing();
    void stopScan();
    /// The last word of the log on a run that is cut off.
    void logBrokenOff();
    void clearArrayController();
    void fileFailedToWipe(const std::shared_ptr<QueueObject> &object) override;
    void finishedWiping() override;
    void noteUnreached();
    void deleteFolders();
    void resetWipeValues();
    void showNotification();
    [[nodiscard]] std::int64_t currentTimestamp() const;

    // Progress
    void startTimers();
    void stopTimers();
    void updateObjectProgressBar();
    void updateBPSValue();
    double calculateBps(double bytesRemaining);
    void updateProgressBar();

    // Settings
    void wipeSelectorClicked();
    void updateWipeMethod();
    void updateWipeDescription(std::int64_t method);
    void updateSkipLinkTargets();
    void appearanceSettingChanged(std::int64_t tag);

    // Views
    [[nodiscard]] QWidget *getCurrentView() const;
    [[nodiscard]] MainView currentView() const;
    void showViewDragDrop();
    void showViewPressStart();
    void showViewErasingFiles();
    void showViewFinished();
    void showViewPreferences();
    void hideViewPreferences();
    void btnPreferencesClicked();
    void toggleViewPreferences();
    void showTitle();
    void showToolbarSeparator();
    void showImgBtnInfo();
    void animationStarted() override;
    void animationFinished() override;
    /// Files hang over the window, -1: none do.
    void dragStateChanged(int items);

    // Error log
    void showErrorLogClicked();
    void menuToggleErrorLogClicked();
    void showErrorLogWindow();
    void hideErrorLogWindow();
    void windowWillClose(const QWidget *window);
    [[nodiscard]] std::vector<ErrorLogRow> getSelectedObjects() const;
    /// Kept on purpose: the name is one letter short.
    void revealInFinderlicked();
    void revealInFinder(const ErrorLogRow *object);

    [[nodiscard]] bool answers(FolderScannerControllerDelegate::Call) const override
    {
        return true;
    }
    [[nodiscard]] bool answers(WipeControllerDelegate::Call) const override { return true; }
    [[nodiscard]] bool answers(ViewAnimatorDelegate::Call) const override { return true; }
    [[nodiscard]] bool answers(UpdaterDelegate::Call) const override { return true; }
    /// Nobody here asks for the run status.
    [[nodiscard]] bool answers(QueueStatsObjectDelegate::Call) const override { return false; }

    [[nodiscard]] const EraseRun &run() const { return *run_; }
    [[nodiscard]] const std::shared_ptr<QueueStatsObject> &queueStatsObject() const;
    [[nodiscard]] const std::shared_ptr<QueueArray> &queueArray() const;
    [[nodiscard]] const FolderMap &folderUrlsToDeleteDict() const;
    [[nodiscard]] const std::shared_ptr<WipeController> &wipeController() const
    {
        return wipeController_;
    }
    [[nodiscard]] ViewAnimator *viewAnimator() const { return viewAnimator_.get(); }
    [[nodiscard]] const WipeDescriptionObject &wipeDescription() const { return wipeDescription_; }
    [[nodiscard]] const QTimer &bpsTimer() const { return bpsTimer_; }
    [[nodiscard]] const QTimer &objectTimer() const { return objectTimer_; }
    [[nodiscard]] QWidget *lastView() const { return lastView_; }
    [[nodiscard]] bool isBusyWiping() const { return isBusyWiping_; }
    [[nodiscard]] bool isScanningFiles() const { return isScanningFiles_; }
    [[nodiscard]] bool scanningFilesWindowIsOpen() const { return scanningFilesWindowIsOpen_; }
    [[nodiscard]] bool errorLogWindowIsHidden() const { return errorLogWindowIsHidden_; }
    [[nodiscard]] bool showBtnErrorWindow() const { return showBtnErrorWindow_; }

  private:
    void setupObservers();
    void noteCancelledScan();
    void settleLog();
    void reviewAgain();
    [[nodiscard]] ContentView *contentView(MainView view) const;
    [[nodiscard]] MainView viewOf(const QWidget *widget) const;
    void show(MainView view);
    void apply(const ContentTransitions::Transition &transition, MainView view);
    void slideIn(MainView view, ContentTransitions::Edge from);
    void setCurrentAside();
    void scheduleBtnInfo();
    void updatePreferencesButton();
    void exitIfWanted();

    MainOutlets outlets_;
    MainSurroundings surroundings_;
    std::vector<NotificationHub::Token> observers_;
    std::unique_ptr<EraseRun> run_;
    std::shared_ptr<FolderScannerController> folderScannerController_;
    std::shared_ptr<WipeController> wipeController_;
    std::unique_ptr<WipeDescriptionController> wipeDescriptionController_;
    WipeDescriptionObject wipeDescription_; ///< of the chosen method; empty outside the catalogue
    std::unique_ptr<ViewAnimator> viewAnimator_;
    std::unique_ptr<Presenters> presenters_;
    ScanFailures scanFailures_; ///< since the last run
    int cancelledScans_ = 0;    ///< that the log is to be told of when it begins
    int dragItems_ = -1;
    QPointer<QWidget> lastView_; ///< what comes back after the preferences
    QTimer bpsTimer_;
    QTimer objectTimer_;
    double bytesPerSecond_ = 0;
    bool isBusyWiping_ = false;
    bool isScanningFiles_ = false;
    bool scanningFilesWindowIsOpen_ = false;
    bool errorLogWindowIsHidden_ = true;
    bool showBtnErrorWindow_ = false;
    std::int64_t unreached_ = 0; ///< files that the run that ended last did not come to
    bool hasFailures_ = false;   ///< of the run that ended last
};
