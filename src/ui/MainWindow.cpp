#include "ui/MainWindow.h"

#include "platform/DarkAppearance.h"
#include "platform/SessionBus.h"
#include "platform/UserDefaults.h"
#include "ui/Appearance.h"
#include "ui/ColorThemeClass.h"
#include "ui/DragVeil.h"
#include "ui/FileDrop.h"
#include "ui/FocusOrder.h"
#include "ui/FocusRing.h"
#include "ui/HeaderBar.h"
#include "ui/HeaderButton.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/MainMenu.h"
#include "ui/PlainButton.h"
#include "ui/ScanningSheet.h"
#include "ui/ThemeKeys.h"
#include "ui/Typography.h"
#include "ui/VTLView.h"
#include "ui/VantorelStyle.h"
#include "ui/ViewRuler.h"
#include "ui/WindowGeometry.h"
#include "ui/WindowRegister.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

namespace {

constexpr int leastHeight = 240;
constexpr int frameDelay = 500; ///< milliseconds

std::vector<QRect> screens()
{
    std::vector<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.push_back(screen->availableGeometry());
    return areas;
}

/// What minimises, closes, shows or ends still counts under a sheet.
bool countsUnderSheet(const QKeyEvent *event)
{
    static const QList<int> keys{Qt::Key_M, Qt::Key_W, Qt::Key_Q, Qt::Key_1};
    return event->modifiers() == Qt::ControlModifier && keys.contains(event->key());
}

} // namespace

AppearanceView::AppearanceView(const QString &appearance, QWidget *parent)
    : QWidget(parent), appearance_(appearance)
{
    hide();
}

MainWindow::MainWindow(QWidget *parent)
    : FramelessWindow(parent), header_(new HeaderBar(ground())), veil_(new DragVeil(ground())),
      sheet_(new ScanningSheet(ground())),
      appearanceViewSystem_(new AppearanceView(QString(), this)),
      appearanceViewDark_(new AppearanceView(QString::fromUtf16(Appearance::dark), this)),
      appearanceViewLight_(new AppearanceView(QString::fromUtf16(Appearance::light), this)),
      canBeReopened_(SessionBus::isThere)
{
    setWindowTitle(tr("Vantorel"));
    updateMinimumSize();
    setWindowHeader(header_);
    // Each step of a move or resize would go to the disk.
    frameTimer_.setSingleShot(true);
    frameTimer_.setInterval(frameDelay);
    connect(&frameTimer_, &QTimer::timeout, this, &MainWindow::saveFrame);
    FocusRing::install(this);
    menu_ = new MainMenu(this);
    connectHeader();
    connectSheet();
    connectMenu();
    connect(this, &FramelessWindow::becameKey, this, &MainWindow::windowDidBecomeMain);
    connect(this, &FramelessWindow::resignedKey, this, &MainWindow::windowDidResignMain);
    connect(this, &FramelessWindow::cornerRadiusChanged, veil_, &DragVeil::setCornerRadius);
    connect(&dragState_, &DragState::changed, this, &MainWindow::dragStateChanged);
}

MainWindow::~MainWindow() = default;

void MainWindow::updateMinimumSize()
{
    setMinimumSize(
        std::min(Typography::scaled(ViewRuler::smallestWidth), screen()->availableSize().width()),
        WindowGeometry::headerHeight + leastHeight);
}

void MainWindow::connectHeader()
{
    connect(header_->btnMinimise(), &QAbstractButton::clicked, this,
            &MainWindow::performMiniaturize);
    connect(header_->btnClose(), &QAbstractButton::clicked, this, &MainWindow::performClose);
    connect(header_->btnMenu(), &QAbstractButton::clicked, this,
            [this] { menu_->openUnder(header_->btnMenu()); });
}

void MainWindow::connectSheet()
{
    connect(sheet_, &ScanningSheet::opened, header_, [this] { header_->setUnderSheet(true); });
    connect(sheet_, &ScanningSheet::closed, header_, [this] { header_->setUnderSheet(false); });
}

void MainWindow::connectMenu()
{
    // A choice must not change the mark: it says that the window is key.
    connect(menu_->mainWindow(), &QAction::triggered, this,
            [this] { menu_->mainWindow()->setChecked(isActiveWindow()); });
    connect(menu_, &QMenu::aboutToShow, header_,
            [this] { header_->btnMenu()->setKeptPressed(true); });
    connect(menu_, &QMenu::aboutToHide, header_,
            [this] { header_->btnMenu()->setKeptPressed(false); });
    const auto opens = [this](Qt::Key key, Qt::KeyboardModifier modifier, MainMenu::Group group) {
        auto *shortcut = new QShortcut(QKeySequence(QKeyCombination(modifier, key)), this);
        connect(shortcut, &QShortcut::activated, menu_,
                [this, group] { menu_->openUnder(header_->btnMenu(), group); });
    };
    opens(Qt::Key_F10, Qt::NoModifier, MainMenu::Group::File);
    opens(Qt::Key_F, Qt::AltModifier, MainMenu::Group::File);
    opens(Qt::Key_E, Qt::AltModifier, MainMenu::Group::Edit);
    opens(Qt::Key_W, Qt::AltModifier, MainMenu::Group::Window);
    opens(Qt::Key_H, Qt::AltModifier, MainMenu::Group::Help);
}

void MainWindow::awakeFromNib()
{
    // The window needs no delegate beside itself, and has neither title nor title bar to hide.
    setFrameAutosaveName(QStringLiteral("MainWindowFrame"));
    NotificationHub &hub = NotificationHub::shared();
    reopen_ = hub.observe(NotificationName::reopenMainWindow,
                          [this](const auto &) { reOpenMainWindow(); });
    appearanceChanged_ = hub.observe(NotificationName::appearanceChanged,
                                     [this](const auto &) { colorThemeChangedNotification(); });
    setupColorAppearance();
    colorThemeChangedNotification();
    registerForDraggedFiles();
}

void MainWindow::setupColorAppearance()
{
    UserDefaults &defaults = UserDefaults::standard();
    defaults.setValue(ThemeKeys::isThemeEnabled, DarkAppearance::isSupported());
    defaults.setValue(ThemeKeys::appearanceDark,
                      Appearance::archived(appearanceViewDark_->appearance()));
    defaults.setValue(ThemeKeys::appearanceLight,
                      Appearance::archived(appearanceViewLight_->appearance()));
    if (defaults.integer(ThemeKeys::theme) == ColorThemeClass::ColorThemeSystem)
        defaults.setValue(ThemeKeys::theme, qlonglong(ColorThemeClass::ColorThemeDark));
}

void MainWindow::colorThemeChangedNotification()
{
    setAppearance(InterfaceColorStyle::appearance());
    UserDefaults::standard().setValue(ThemeKeys::darkMode, InterfaceColorStyle::isDarkMode());
    NotificationHub::shared().post(NotificationName::colorThemeChanged);
}

void MainWindow::setAppearance(const QString &appearance)
{
    appearance_ = appearance;
    VantorelStyle::applyTheme();
    updateTree();
}

void MainWindow::windowDidBecomeMain()
{
    WindowRegister::shared().setMainWindow(this);
    NotificationHub::shared().post(NotificationName::windowDidBecomeMain, this);
}

void MainWindow::windowDidResignMain()
{
}

void MainWindow::reOpenMainWindow()
{
    makeKeyAndOrderFront();
}

bool MainWindow::applicationShouldHandleReopen(bool)
{
    makeKeyAndOrderFront();
    return true;
}

Qt::DropAction MainWindow::draggingEntered(const QMimeData *) const
{
    return Qt::CopyAction;
}

Qt::DropAction MainWindow::draggingUpdated(const QMimeData *) const
{
    return Qt::CopyAction;
}

bool MainWindow::performDragOperation(const QMimeData *dragged)
{
    return FileDrop::perform(dragged);
}

void MainWindow::setBody(QWidget *holder)
{
    viewMain_ = holder;
    holder->setParent(body());
    holder->setGeometry(body()->rect());
    holder->show();
}

void MainWindow::addContentView(QWidget *view)
{
    contentViews_.append(view);
    view->resize(body()->size());
}

void MainWindow::addDropTarget(QWidget *target)
{
    target->installEventFilter(this);
}

QSize MainWindow::firstSize() const
{
    const QSize natural(Typography::scaled(ViewRuler::naturalWidth),
                        WindowGeometry::headerHeight +
                            Typography::scaled(ViewRuler::naturalHeight));
    return WindowGeometry::firstContentSize(natural, screen()->availableSize());
}

void MainWindow::setFrameAutosaveName(const QString &name)
{
    frameAutosaveName_ = name;
    const auto saved = WindowGeometry::frameFromText(UserDefaults::standard().text(name));
    if (saved)
        setGeometry(WindowGeometry::restoredFrame(*saved, screens(), minimumSize()));
    else
        resize(firstSize());
    // Views are measured before the window is shown.
    layOut();
}

void MainWindow::saveFrame()
{
    const bool isOwn =
        !(windowState() & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen));
    if (!frameAutosaveName_.isEmpty() && isVisible() && isOwn)
        UserDefaults::standard().setValue(frameAutosaveName_,
                                          WindowGeometry::textFromFrame(geometry()));
}

void MainWindow::registerForDraggedFiles()
{
    setAcceptDrops(true);
}

void MainWindow::setCanBeReopened(std::function<bool()> predicate)
{
    canBeReopened_ = std::move(predicate);
}

void MainWindow::performMiniaturize()
{
    showMinimized();
}

void MainWindow::performClose()
{
    if (canBeReopened_()) {
        close();
        return;
    }
    saveFrame();
    showMinimized();
}

/// Never refused, since a refusal would keep the application from quitting.
void MainWindow::closeEvent(QCloseEvent *event)
{
    saveFrame();
    event->accept();
    if (!canBeReopened_())
        QTimer::singleShot(0, this, &QWidget::showMinimized);
}

void MainWindow::layOut()
{
    FramelessWindow::layOut();
    veil_->setGeometry(body()->geometry());
    sheet_->setGeometry(body()->geometry());
    if (viewMain_)
        viewMain_->resize(body()->size());
    for (const QPointer<QWidget> &view : std::as_const(contentViews_)) {
        if (view)
            view->resize(body()->size());
    }
}

void MainWindow::moveEvent(QMoveEvent *event)
{
    FramelessWindow::moveEvent(event);
    frameTimer_.start();
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    FramelessWindow::resizeEvent(event);
    frameTimer_.start();
}

bool MainWindow::event(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        updateMinimumSize();
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        isAltAlone_ = isAltAlone_ && key->key() == Qt::Key_Alt;
        if (sheet_->isOpen() && !countsUnderSheet(key)) {
            event->accept();
            return true;
        }
    }
    return FramelessWindow::event(event);
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == windowHandle())
        followAltKey(event);
    else
        followDrag(watched, event);
    return FramelessWindow::eventFilter(watched, event);
}

/// Alt opens the menu when it is released and nothing else came between.
void MainWindow::followAltKey(QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    const bool isAlt = isKey && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Alt;
    if (event->type() == QEvent::KeyRelease && isAlt && isAltAlone_ && !sheet_->isOpen())
        menu_->openUnder(header_->btnMenu(), MainMenu::Group::File);
    if (isKey || event->type() == QEvent::MouseButtonPress || event->type() == QEvent::Wheel ||
        event->type() == QEvent::FocusOut)
        isAltAlone_ = event->type() == QEvent::KeyPress && isAlt &&
                      (static_cast<QKeyEvent *>(event)->modifiers() & ~Qt::AltModifier) == 0;
}

void MainWindow::followDrag(QObject *target, QEvent *event)
{
    if (event->type() == QEvent::DragEnter) {
        const auto *enter = static_cast<QDragEnterEvent *>(event);
        const bool canCopy = enter->possibleActions() & Qt::CopyAction;
        const int items = canCopy ? FileDrop::count(enter->mimeData()) : 0;
        if (items > 0)
            dragState_.entered(target, items);
    } else if (event->type() == QEvent::DragLeave || event->type() == QEvent::Drop) {
        dragState_.left(target);
    }
}

QList<QWidget *> MainWindow::tabStops()
{
    if (sheet_->isOpen())
        return {sheet_->btnStopScanning(), header_->btnMinimise(), header_->btnClose()};
    return FocusOrder::stops(this, header_->tabStops());
}

bool MainWindow::focusNextPrevChild(bool next)
{
    QWidget *stop = FocusOrder::next(tabStops(), focusWidget(), next);
    if (!stop)
        return false;
    stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && sheet_->isOpen())
        sheet_->btnStopScanning()->click();
    else if (!offerToView(event))
        FramelessWindow::keyPressEvent(event);
}

/// A key that nobody took in the header is the view's, as if the focus were in it.
bool MainWindow::offerToView(QKeyEvent *event)
{
    QWidget *view =
        viewMain_ ? viewMain_->findChild<QWidget *>({}, Qt::FindDirectChildrenOnly) : nullptr;
    if (!view || isOffering_ || sheet_->isOpen() || view->isAncestorOf(focusWidget()))
        return false;
    // What the view does not take comes back here, as to any parent.
    isOffering_ = true;
    event->ignore();
    QCoreApplication::sendEvent(view, event);
    isOffering_ = false;
    return event->isAccepted();
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    const int items = FileDrop::count(event->mimeData());
    if (items == 0)
        return;
    FileDrop::accept(event, draggingEntered(event->mimeData()));
    if (event->isAccepted())
        dragState_.entered(this, items);
}

void MainWindow::dragMoveEvent(QDragMoveEvent *event)
{
    FileDrop::accept(event, draggingUpdated(event->mimeData()));
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent *event)
{
    followDrag(this, event);
}

void MainWindow::dropEvent(QDropEvent *event)
{
    followDrag(this, event);
    FileDrop::accept(event, draggingUpdated(event->mimeData()));
    if (event->isAccepted())
        performDragOperation(event->mimeData());
}
