#pragma once

#include "platform/NotificationHub.h"
#include "ui/DragState.h"
#include "ui/FramelessWindow.h"

#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>

class DragVeil;
class HeaderBar;
class MainMenu;
class QMimeData;
class ScanningSheet;

/// A template that carries an appearance; never shown.
///
/// Thread: main
class AppearanceView : public QWidget
{
    Q_OBJECT

  public:
    AppearanceView(const QString &appearance, QWidget *parent);
    /// Null for the desktop's own.
    [[nodiscard]] QString appearance() const { return appearance_; }

  private:
    QString appearance_;
};

/// The application's main window: header, body, menu, scanning sheet and drag veil. It turns a
/// change of the theme's choice into its appearance and a broadcast, remembers its frame, and hands
/// files that are dropped on it to the application.
///
/// Closing hides it. Without a session bus nothing could bring it back, so it is minimised instead.
///
/// Thread:       main
/// Holds weakly: the current view's controller, the content views
/// Units:        logical pixels
class MainWindow : public FramelessWindow
{
    Q_OBJECT

  public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Once, when the layout has been made.
    void awakeFromNib();
    /// Stores what the platform offers and both appearances; follow-the-system becomes dark.
    void setupColorAppearance();
    /// Applies the current theme to the window and broadcasts it.
    void colorThemeChangedNotification();
    void windowDidBecomeMain();
    /// Kept on purpose: does nothing; "WindowDidResignMain" is posted by nobody.
    void windowDidResignMain();
    void reOpenMainWindow();
    bool applicationShouldHandleReopen(bool hasVisibleWindows);

    /// Copy, whatever is dragged.
    [[nodiscard]] Qt::DropAction draggingEntered(const QMimeData *dragged) const;
    [[nodiscard]] Qt::DropAction draggingUpdated(const QMimeData *dragged) const;
    /// True in every case, also for an empty list.
    bool performDragOperation(const QMimeData *dragged);

    [[nodiscard]] std::int64_t currentViewTag() const { return currentViewTag_; }
    void setCurrentViewTag(std::int64_t tag) { currentViewTag_ = tag; }
    [[nodiscard]] std::shared_ptr<void> currentViewController() const
    {
        return currentViewController_.lock();
    }
    void setCurrentViewController(std::weak_ptr<void> controller)
    {
        currentViewController_ = std::move(controller);
    }
    [[nodiscard]] AppearanceView *appearanceViewSystem() const { return appearanceViewSystem_; }
    [[nodiscard]] AppearanceView *appearanceViewDark() const { return appearanceViewDark_; }
    [[nodiscard]] AppearanceView *appearanceViewLight() const { return appearanceViewLight_; }
    /// The identifier of the appearance that was applied last; null for the desktop's own.
    [[nodiscard]] QString appearance() const { return appearance_; }

    [[nodiscard]] HeaderBar *header() const { return header_; }
    [[nodiscard]] ScanningSheet *windowScanningFiles() const { return sheet_; }
    [[nodiscard]] DragVeil *dragVeil() const { return veil_; }
    [[nodiscard]] MainMenu *mainMenu() const { return menu_; }

    /// The holder of the content views: becomes a child of body() and fills it.
    void setBody(QWidget *holder);
    [[nodiscard]] QWidget *viewMain() const { return viewMain_; }
    /// A view that goes with the window's size whether it is shown or not.
    void addContentView(QWidget *view);
    /// Another widget that takes drops, such as the drop image: over it the drag goes on.
    void addDropTarget(QWidget *target);

    /// The size that the window is first shown with where no frame is remembered.
    [[nodiscard]] QSize firstSize() const;

    /// As by the header's button: hides, or minimises where nothing could bring the window back.
    void performClose();
    void performMiniaturize();
    /// Whether something can bring a hidden window back; a session bus, unless replaced.
    void setCanBeReopened(std::function<bool()> predicate);

  Q_SIGNALS:
    /// -1 when no files are dragged over the window.
    void dragStateChanged(int items);

  protected:
    void layOut() override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

  private:
    void updateMinimumSize();
    void connectHeader();
    void connectSheet();
    void connectMenu();
    void setFrameAutosaveName(const QString &name);
    void saveFrame();
    void registerForDraggedFiles();
    void setAppearance(const QString &appearance);
    void followDrag(QObject *target, QEvent *event);
    void followAltKey(QEvent *event);
    bool offerToView(QKeyEvent *event);
    [[nodiscard]] QList<QWidget *> tabStops();

    HeaderBar *header_;
    DragVeil *veil_;
    ScanningSheet *sheet_;
    MainMenu *menu_ = nullptr;
    AppearanceView *appearanceViewSystem_;
    AppearanceView *appearanceViewDark_;
    AppearanceView *appearanceViewLight_;
    QPointer<QWidget> viewMain_;
    QList<QPointer<QWidget>> contentViews_;
    DragState dragState_;
    std::function<bool()> canBeReopened_;
    std::int64_t currentViewTag_ = 0;
    std::weak_ptr<void> currentViewController_;
    QString appearance_;
    QString frameAutosaveName_;
    QTimer frameTimer_;
    bool isAltAlone_ = false;
    bool isOffering_ = false;
    NotificationHub::Token reopen_;
    NotificationHub::Token appearanceChanged_;
};
