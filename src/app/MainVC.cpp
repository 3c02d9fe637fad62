#include "app/MainVC.h"

#include "app/FolderScanUrls.h"
#include "app/Presenters.h"
#include "app/ViewTexts.h"
#include "app/run/LogPlace.h"
#include "app/run/RunLog.h"
#include "app/update/UpdateSettings.h"
#include "engine/WipeSchedule.h"
#include "platform/PathBytes.h"
#include "platform/SystemCalls.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "support/Logger.h"
#include "support/view/ErrorLogModel.h"
#include "support/view/ErrorLogWindow.h"
#include "support/view/TableViewErrorLog.h"
#include "ui/DropView.h"
#include "ui/ErasingView.h"
#include "ui/FinishedView.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/MainWindow.h"
#include "ui/PreferencesView.h"
#include "ui/ReadyView.h"
#include "ui/ScanningSheet.h"
#include "ui/VTLLine.h"
#include "ui/ViewAnimator.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <utility>

using namespace std::chrono_literals;
using ContentTransitions::Edge;
using ContentTransitions::Transition;

namespace {

constexpr auto untilCallout = 1500ms;
constexpr auto sampleInterval = 1000ms; ///< one sample is the bytes of one second
constexpr auto objectInterval = 500ms;
constexpr int okResponse = 1;

const QString methodKey = QStringLiteral("WipeMethod");
const QString skipLinkTargetsKey = QStringLiteral("skipLinkTargets");
const QString logPathKey = QStringLiteral("logFilePath");
const QString autoExitKey = QStringLiteral("AutoExit");

QString translated(const char *text)
{
    return QCoreApplication::translate("MainVC", text);
}

} // namespace

std::shared_ptr<MainVC> MainVC::create(const MainOutlets &outlets, MainSurroundings surroundings)
{
    return std::make_shared<MainVC>(Private{}, outlets, std::move(surroundings));
}

MainVC::MainVC(Private, const MainOutlets &outlets, MainSurroundings surroundings)
    : outlets_(outlets), surroundings_(std::move(surroundings))
{
    bpsTimer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&bpsTimer_, &QTimer::timeout, &bpsTimer_, [this] { updateBPSValue(); });
    QObject::connect(&objectTimer_, &QTimer::timeout, &objectTimer_,
                     [this] { updateObjectProgressBar(); });
}

MainVC::~MainVC() = default;

// Set-up

void MainVC::awakeFromNib()
{
    setupObservers();
    initControllers();
    updateWipeMethod();
}

void MainVC::setupObservers()
{
    NotificationHub &hub = NotificationHub::shared();
    observers_.push_back(hub.observe(NotificationName::applicationDidStartGUI,
                                     [this](const auto &) { applicationDidStartGUI(); }));
    observers_.push_back(hub.observe(
        NotificationName::folderScanUrls,
        [this](const NotificationHub::Notification &posted) { folderScanUrlsSelector(posted); }));
    QObject::connect(&UserDefaults::standard(), &UserDefaults::valueChanged, &objectTimer_,
                     [this](const QString &key) {
                         if (key == skipLinkTargetsKey)
                             updateSkipLinkTargets();
                     });
    QObject::connect(outlets_.windowScanningFiles, &ScanningSheet::closed, &objectTimer_,
                     [this] { scanningSheetHasGone(); });
}

void MainVC::initControllers()
{
    viewAnimator_ = std::make_unique<ViewAnimator>(outlets_.viewMain);
    if (!run_)
        run_ = std::make_unique<EraseRun>();
    if (!folderScannerController_)
        folderScannerController_ = FolderScannerController::create();
    if (!wipeController_)
        wipeController_ = WipeController::create();
    if (!wipeDescriptionController_)
        wipeDescriptionController_ = std::make_unique<WipeDescriptionController>();
    if (!presenters_)
        presenters_ = std::make_unique<Presenters>(outlets_, *run_);

    viewAnimator_->setDelegate(weak_from_this());
    queueStatsObject()->setDelegate(weak_from_this());
    wipeController_->setDelegate(weak_from_this());
    wipeController_->setQueueArray(queueArray());
    folderScannerController_->setDelegate(weak_from_this());
    folderScannerController_->setQueueStatsObject(queueStatsObject());
    errorLogWindowIsHidden_ = true;
    updateSkipLinkTargets();
    updatePreferencesButton();
}

void MainVC::applicationDidStartGUI()
{
    showInitialView();
    setSparkleSettings();
}

void MainVC::setSparkleSettings()
{
    surroundings_.setUpUpdater(weak_from_this());
}

std::optional<AppcastItem> MainVC::bestValidUpdateInAppcast(const Appcast &appcast,
                                                            const Updater *forUpdater)
{
    return UpdateSettings::bestValidUpdateInAppcast(appcast, forUpdater);
}

void MainVC::showInitialView()
{
    if (!getCurrentView())
        showViewDragDrop();
}

// Entry of files

void MainVC::folderScanUrlsSelector(const NotificationHub::Notification &notification)
{
    folderScanURLS(notification.userInfo.value<FolderScanUrls>().urls);
}

void MainVC::btnAddFilesClicked()
{
    openFilesDialog();
}

void MainVC::openFilesDialog()
{
    surroundings_.openPanel(
        outlets_.windowMain, translated("Choose files and/or folders to secure delete"),
        translated("OK"),
        [weak = weak_from_this()](int response, const std::vector<QByteArray> &paths) {
            const std::shared_ptr<MainVC> self = weak.lock();
            if (self && response == okResponse)
                self->folderScanURLS({paths.begin(), paths.end()});
        });
}

void MainVC::folderScanURLS(const std::vector<FileUrl> &urls)
{
    isScanningFiles_ = true;
    outlets_.btnStopScanning->setEnabled(true);
    openWindowScanningFiles();
    folderScannerController_->scanAndMakeObjects({urls.begin(), urls.end()});
}

void MainVC::openWindowScanningFiles()
{
    scanningFilesWindowIsOpen_ = true;
    presenters_->scanning().open();
}

/// It gives the focus back to where it was, which must not be Start.
void MainVC::scanningSheetHasGone()
{
    scanningFilesWindowIsOpen_ = false;
    if (currentView() == MainView::Ready)
        reviewAgain();
}

void MainVC::closeWindowScanningFiles()
{
    presenters_->scanning().close();
}

void MainVC::btnStopScanningClicked()
{
    outlets_.btnStopScanning->setEnabled(false);
    folderScannerController_->cancelScan();
    closeWindowScanningFiles();
}

void MainVC::newObjectsForQueue(ScanReport report)
{
    addObjectsFromArray(std::move(report.files));
    addFolderObjectsToQueueFromDict(std::move(report.folders));
    if (folderScannerController_->shouldCancel())
        noteCancelledScan();
    if (isBusyWiping())
        settleLog();
    presenters_->queueHasGrown();
    isScanningFiles_ = false;
    closeWindowScanningFiles();
    if (currentView() == MainView::Ready)
        reviewAgain();
    if (isBusyWiping_)
        showViewErasingFiles();
    else
        showViewPressStart();
    queueStatsObject()->setScanFoundFiles(0);
    queueStatsObject()->setScanFoundBytes(0);
}

/// The list that the user was about to start is another one now: as if the view had just come.
void MainVC::reviewAgain()
{
    ReadyView *view = outlets_.viewPressStart;
    view->viewDidAppear();
    view->firstFocus()->setFocus(Qt::OtherFocusReason);
}

/// What the scan could not look into stays on the disk, so it stands with the files that do.
void MainVC::scanFailed(const ScanFailures &failures)
{
    scanFailures_.insert(scanFailures_.end(), failures.begin(), failures.end());
    for (const ScanFailure &failure : failures)
        presenters_->errorLog().add(failure);
    presenters_->header().showErrorCount();
}

void MainVC::addObjectsFromArray(QueueArray::Items objects)
{
    // Where nothing was listed, what is left out came twice at once.
    const bool wasListed = !queueArray()->isEmpty();
    const std::size_t found = objects.size();
    QueueArray::Items added = makeUniqueArray(std::move(objects));
    if (wasListed && added.size() < found)
        presenters_->sayAlreadyInTheList(std::int64_t(found - added.size()));
    queueArray()->append(std::move(added));
}

void MainVC::addFolderObjectsToQueueFromDict(FolderMap folders)
{
    run_->addFolderObjectsToQueueFromDict(std::move(folders));
}

QueueArray::Items MainVC::makeUniqueArray(QueueArray::Items objects)
{
    return run_->makeUniqueArray(std::move(objects));
}

// Run

/// What a scan is still to bring would join the run without having been seen.
void MainVC::btnStartClicked()
{
    if (!isScanningFiles_ && currentView() == MainView::Ready)
        startErasing();
}

void MainVC::startErasing()
{
    clearArrayController();
    presenters_->beginRun(wipeController_->wipeMethode(), wipeDescription_.name);
    showViewErasingFiles();
    run_->begin(currentTimestamp());
    if (WipeSchedule::passes(wipeController_->wipeMethode()).empty())
        run_->keepFolders();
    settleLog();
    RunLog::runStarted(wipeController_->wipeMethode(), *run_);
    wipeController_->startWiping();
    startTimers();
    NotificationHub::shared().post(NotificationName::runDidStart, this);
}

/// An old log is emptied by the first line, which must not be this one: what is to be erased is not
/// known before the run, and the scan that would have found the log may be the one that was
/// stopped.
void MainVC::noteCancelledScan()
{
    const QByteArray log = QFile::encodeName(UserDefaults::standard().text(logPathKey));
    if (Logger::shared().isSetUp() || LogPlace::isFree(log, *run_))
        RunLog::scanCancelled();
    else
        ++cancelledScans_;
}

/// A log that is to be erased is left to the eraser, and from now on this start has none.
void MainVC::settleLog()
{
    Logger &logger = Logger::shared();
    const QByteArray log = logger.isSetUp()
                               ? logger.logFilePath()
                               : QFile::encodeName(UserDefaults::standard().text(logPathKey));
    const auto linkTargets = UserDefaults::standard().boolean(skipLinkTargetsKey)
                                 ? SystemCalls::LastLink::Stop
                                 : SystemCalls::LastLink::Follow;
    if (!log.isEmpty() && (!logger.isSetUp() || logger.isLogFileOpen()) &&
        (LogPlace::isQueued(log, *run_, linkTargets) || LogPlace::isInFolder(log, *run_)))
        logger.abandonLogFile();
    for (; cancelledScans_ > 0; --cancelledScans_)
        RunLog::scanCancelled();
}

void MainVC::logBrokenOff()
{
    RunLog::runEnded(wipeController_->wipeMethode(), *run_);
}

void MainVC::stopErasing()
{
    stopScan();
    wipeController_->stopWiping();
}

void MainVC::stopScan()
{
    folderScannerController_->cancelScan();
}

/// What the scan could not look into is still there.
void MainVC::clearArrayController()
{
    run_->forgetFailures();
    presenters_->errorLog().show(scanFailures_, {});
}

void MainVC::fileFailedToWipe(const std::shared_ptr<QueueObject> &object)
{
    run_->addFailure(object);
    presenters_->errorLog().add(run_->failedFiles().back());
    RunLog::fileFailed(run_->failedFiles().back());
}

void MainVC::finishedWiping()
{
    run_->makeResultStrings(currentTimestamp());
    showBtnErrorWindow_ = queueStatsObject()->filesFailed() >= 1;
    noteUnreached();
    deleteFolders();
    RunLog::runEnded(wipeController_->wipeMethode(), *run_);
    presenters_->showSummary(wipeDescription_.name, showBtnErrorWindow_,
                             {std::int64_t(run_->failedFiles().size() + scanFailures_.size()),
                              unreached_, Logger::shared().logFileProblem()});
    showViewFinished();
    resetWipeValues();
    showNotification();
    NotificationHub::shared().post(NotificationName::runDidEnd, this);
}

/// A run that was stopped leaves files behind, and says of each that it does.
void MainVC::noteUnreached()
{
    unreached_ = run_->noteUnreached();
    if (unreached_ > 0)
        presenters_->errorLog().show(scanFailures_, run_->failedFiles());
}

/// What went with its folder, without having been overwritten, says so in its row; and so does a
/// folder that is empty and stays.
void MainVC::deleteFolders()
{
    const FolderSweep sweep = run_->deleteFolders();
    RunLog::foldersRemoved(*run_);
    const bool someHaveGone = EraseRun::forgetRemoved(scanFailures_, sweep);
    const std::size_t before = scanFailures_.size();
    std::copy_if(sweep.kept.begin(), sweep.kept.end(), std::back_inserter(scanFailures_),
                 [](const ScanFailure &folder) {
                     return folder.errornr != ENOTEMPTY && folder.errornr != ENOENT;
                 });
    if (run_->hasFilesRemovedWithFolder() || someHaveGone || scanFailures_.size() != before)
        presenters_->errorLog().show(scanFailures_, run_->failedFiles());
}

void MainVC::resetWipeValues()
{
    run_->resetWipeValues();
    stopTimers();
    bytesPerSecond_ = 0;
    presenters_->queueIsEmpty();
}

void MainVC::showNotification()
{
    hasFailures_ = !run_->failedFiles().empty() || !scanFailures_.empty();
    scanFailures_.clear();
    const QString text =
        unreached_ > 0 ? ViewTexts::stopped(unreached_) : translated("Wiping done.");
    surroundings_.showMessage(translated("Vantorel Finished"), text, [weak = weak_from_this()] {
        if (const std::shared_ptr<MainVC> self = weak.lock())
            self->exitIfWanted();
    });
}

std::int64_t MainVC::currentTimestamp() const
{
    return surroundings_.currentTimestamp();
}

// Progress

void MainVC::startTimers()
{
    bpsTimer_.start(sampleInterval);
    objectTimer_.start(objectInterval);
    updateBPSValue();
    updateObjectProgressBar();
}

void MainVC::stopTimers()
{
    bpsTimer_.stop();
    objectTimer_.stop();
}

void MainVC::updateObjectProgressBar()
{
    const std::shared_ptr<QueueObject> &current = wipeController_->currentObject();
    if (current)
        current->setDoubleValue(current->bytesWritten());
    presenters_->showRun(current.get(), bytesPerSecond_, currentTimestamp());
}

void MainVC::updateBPSValue()
{
    bytesPerSecond_ = run_->updateBPSValue();
}

double MainVC::calculateBps(double bytesRemaining)
{
    return run_->calculateBps(bytesRemaining);
}

void MainVC::updateProgressBar()
{
    run_->updateProgressBar();
}

// Settings

void MainVC::wipeSelectorClicked()
{
    updateWipeMethod();
}

void MainVC::updateWipeMethod()
{
    const std::int64_t method = UserDefaults::standard().integer(methodKey);
    updateWipeDescription(method);
    wipeController_->setWipeMethod(method);
    presenters_->showMethod(method, wipeDescription_);
}

void MainVC::updateWipeDescription(std::int64_t method)
{
    const auto &descriptions = wipeDescriptionController_->wipeDescriptions();
    const bool isKnown = std::uint64_t(method) < descriptions.size();
    wipeDescription_ = isKnown ? descriptions[std::size_t(method)] : WipeDescriptionObject();
}

void MainVC::updateSkipLinkTargets()
{
    const bool skip = UserDefaults::standard().boolean(skipLinkTargetsKey);
    folderScannerController_->setSkipLinkTargets(skip);
    wipeController_->setSkipLinkTargets(skip);
    presenters_->showSkipLinkTargets(skip);
    if (!isBusyWiping_) {
        run_->setSkipLinkTargets(skip);
        presenters_->queueHasGrown();
    }
}

void MainVC::appearanceSettingChanged(std::int64_t tag)
{
    InterfaceColorStyle::userChangedAppearanceTo(tag);
}

// Views

ContentView *MainVC::contentView(MainView view) const
{
    switch (view) {
    case MainView::Drop:
        return outlets_.viewDragDrop;
    case MainView::Ready:
        return outlets_.viewPressStart;
    case MainView::Erasing:
        return outlets_.viewErasingFiles;
    case MainView::Finished:
        return outlets_.viewFinished;
    case MainView::Preferences:
        return outlets_.viewPreferences;
    case MainView::None:
        return nullptr;
    }
    return nullptr;
}

QWidget *MainVC::getCurrentView() const
{
    return viewAnimator_->getCurrentView();
}

MainView MainVC::currentView() const
{
    return viewOf(getCurrentView());
}

MainView MainVC::viewOf(const QWidget *widget) const
{
    for (const MainView view : {MainView::Drop, MainView::Ready, MainView::Erasing,
                                MainView::Finished, MainView::Preferences}) {
        if (widget && contentView(view) == widget)
            return view;
    }
    return MainView::None;
}

void MainVC::showViewDragDrop()
{
    show(MainView::Drop);
}

void MainVC::showViewPressStart()
{
    show(MainView::Ready);
}

void MainVC::showViewErasingFiles()
{
    show(MainView::Erasing);
}

void MainVC::showViewFinished()
{
    show(MainView::Finished);
}

void MainVC::showViewPreferences()
{
    show(MainView::Preferences);
}

void MainVC::hideViewPreferences()
{
    // Without a view to go back to, the first one comes.
    if (!lastView_)
        lastView_ = outlets_.viewDragDrop;
    apply(ContentTransitions::toHidePreferences(), viewOf(lastView_));
}

void MainVC::btnPreferencesClicked()
{
    toggleViewPreferences();
}

void MainVC::toggleViewPreferences()
{
    if (currentView() == MainView::Preferences)
        hideViewPreferences();
    else
        showViewPreferences();
}

void MainVC::show(MainView view)
{
    if (const auto transition = ContentTransitions::toShow(view, currentView(), isBusyWiping_))
        apply(*transition, view);
}

void MainVC::apply(const Transition &transition, MainView view)
{
    if (transition.setsCurrentAside)
        setCurrentAside();
    if (transition.schedulesCallout)
        scheduleBtnInfo();
    if (transition.isBusyWiping)
        isBusyWiping_ = *transition.isBusyWiping;
    if (transition.isAddFilesEnabled)
        outlets_.btnAddFiles->setEnabled(*transition.isAddFilesEnabled);
    if (transition.from)
        slideIn(view, *transition.from);
    updatePreferencesButton();
}

void MainVC::slideIn(MainView view, Edge from)
{
    if (view == MainView::Drop)
        presenters_->callout().putBack();
    ContentView *widget = contentView(view);
    switch (from) {
    case Edge::Top:
        viewAnimator_->animateFromTopForView(widget);
        break;
    case Edge::Left:
        viewAnimator_->animateFromLeftForView(widget);
        break;
    case Edge::Right:
        viewAnimator_->animateFromRightForView(widget);
        break;
    case Edge::Bottom:
        viewAnimator_->animateFromBottomForView(widget);
        break;
    }
    outlets_.windowMain->setCurrentViewTag(std::int64_t(view));
    outlets_.windowMain->setCurrentViewController(weak_from_this());
    presenters_->showDrag(dragItems_, view);
}

void MainVC::setCurrentAside()
{
    lastView_ = getCurrentView();
    outlets_.toolBarSeparator->hide();
    outlets_.viewBtnInfo->hide();
}

void MainVC::updatePreferencesButton()
{
    const MainView current = currentView();
    presenters_->header().showPreferencesButton(current != MainView::None && !isBusyWiping_,
                                                current == MainView::Preferences);
}

void MainVC::showTitle()
{
    const QString title = ContentTransitions::title(currentView());
    outlets_.titleTextField->setText(title);
    presenters_->announcer().announce(title);
}

void MainVC::showToolbarSeparator()
{
    if (currentView() != MainView::Preferences)
        outlets_.toolBarSeparator->show();
}

void MainVC::scheduleBtnInfo()
{
    surroundings_.schedule(untilCallout, [weak = weak_from_this()] {
        if (const std::shared_ptr<MainVC> self = weak.lock())
            self->showImgBtnInfo();
    });
}

void MainVC::showImgBtnInfo()
{
    if (currentView() == MainView::Drop)
        presenters_->callout().slideOut();
}

void MainVC::animationStarted()
{
    outlets_.titleTextField->setText(QString());
}

void MainVC::animationFinished()
{
    showTitle();
    showToolbarSeparator();
    ContentView *view = contentView(currentView());
    view->viewDidAppear();
    // The sheet has the focus as long as it is there.
    if (!scanningFilesWindowIsOpen_)
        view->firstFocus()->setFocus(Qt::OtherFocusReason);
}

void MainVC::dragStateChanged(int items)
{
    dragItems_ = items;
    presenters_->showDrag(items, currentView());
}

// Error log

void MainVC::showErrorLogClicked()
{
    showErrorLogWindow();
}

void MainVC::menuToggleErrorLogClicked()
{
    if (errorLogWindowIsHidden_)
        showErrorLogWindow();
    else
        hideErrorLogWindow();
}

void MainVC::showErrorLogWindow()
{
    outlets_.windowErrorLog->makeKeyAndOrderFront();
    errorLogWindowIsHidden_ = false;
}

void MainVC::hideErrorLogWindow()
{
    outlets_.windowErrorLog->close();
    errorLogWindowIsHidden_ = true;
}

void MainVC::windowWillClose(const QWidget *window)
{
    if (window == outlets_.windowErrorLog)
        errorLogWindowIsHidden_ = true;
}

std::vector<ErrorLogRow> MainVC::getSelectedObjects() const
{
    std::vector<ErrorLogRow> objects;
    for (const int row : outlets_.tableViewErrorLog->selectedOrClickedRows())
        objects.push_back(outlets_.errorLogArrayController->row(row));
    return objects;
}

void MainVC::revealInFinderlicked()
{
    const std::vector<ErrorLogRow> objects = getSelectedObjects();
    revealInFinder(objects.empty() ? nullptr : &objects.front());
}

void MainVC::revealInFinder(const ErrorLogRow *object)
{
    if (!object)
        return;
    const FileUrl url(PathBytes::join(object->filepath, object->filename));
    surroundings_.activateFileViewer({url}, [](const QString &problem) {
        SystemLog::write("-[MainVC revealInFinder:]:", problem);
    });
}

// After the end

void MainVC::exitIfWanted()
{
    AutoExit::Situation now;
    now.isWanted = UserDefaults::standard().boolean(autoExitKey);
    now.hasFailures = hasFailures_;
    now.isBusyWiping = isBusyWiping_;
    now.isScanningFiles = isScanningFiles_;
    now.isDialogOpen = surroundings_.isDialogOpen();
    now.isDragOver = dragItems_ >= 0;
    now.isQueueEmpty = queueArray()->isEmpty() && folderUrlsToDeleteDict().empty();
    if (AutoExit::shouldQuit(now))
        surroundings_.terminate();
}

// What others ask

const std::shared_ptr<QueueStatsObject> &MainVC::queueStatsObject() const
{
    return run_->queueStatsObject();
}

const std::shared_ptr<QueueArray> &MainVC::queueArray() const
{
    return run_->queueArray();
}

const FolderMap &MainVC::folderUrlsToDeleteDict() const
{
    return run_->folderUrlsToDeleteDict();
}
