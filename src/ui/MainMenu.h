#pragma once

#include <QMenu>

/// The application's menu, which opens under the header's button. Its actions' shortcuts count in
/// the whole window, some in all of the application's windows; who has the work to do connects them
/// and says when they are enabled.
///
/// Thread:       main
/// Owns:         its actions
/// Holds weakly: the window
class MainMenu : public QMenu
{
    Q_OBJECT

  public:
    enum class Group { File, Edit, Window, Help };

    explicit MainMenu(QWidget *window);

    [[nodiscard]] QAction *addFilesAndFolders() const { return addFilesAndFolders_; }
    [[nodiscard]] QAction *startErasing() const { return startErasing_; }
    /// Copy and Select All go to the control that has the focus, by themselves.
    [[nodiscard]] QAction *copy() const { return copy_; }
    [[nodiscard]] QAction *selectAll() const { return selectAll_; }
    [[nodiscard]] QAction *preferences() const { return preferences_; }
    /// Named as the application; checked while the main window is key.
    [[nodiscard]] QAction *mainWindow() const { return mainWindow_; }
    [[nodiscard]] QAction *errorLog() const { return errorLog_; }
    [[nodiscard]] QAction *minimise() const { return minimise_; }
    [[nodiscard]] QAction *closeWindow() const { return closeWindow_; }
    [[nodiscard]] QAction *contactTheMakers() const { return contactTheMakers_; }
    [[nodiscard]] QAction *checkForUpdates() const { return checkForUpdates_; }
    [[nodiscard]] QAction *aboutVantorel() const { return aboutVantorel_; }
    [[nodiscard]] QAction *quit() const { return quit_; }

    /// Under this widget, at its right edge; none of the entries is chosen yet.
    void openUnder(const QWidget *button);
    /// The same, at the first entry of this group that can be chosen.
    void openUnder(const QWidget *button, Group group);
    [[nodiscard]] QAction *firstOf(Group group) const;

  private:
    QAction *add(const QString &text, const QList<QKeySequence> &shortcuts = {},
                 Qt::ShortcutContext context = Qt::WindowShortcut);
    void addFileGroup();
    void addEditGroup();
    void addWindowGroup();
    void addHelpGroup();
    void lookAtFocus();
    void callOnFocus(const char *operation);

    QWidget *window_;
    QAction *addFilesAndFolders_ = nullptr;
    QAction *startErasing_ = nullptr;
    QAction *copy_ = nullptr;
    QAction *selectAll_ = nullptr;
    QAction *preferences_ = nullptr;
    QAction *mainWindow_ = nullptr;
    QAction *errorLog_ = nullptr;
    QAction *minimise_ = nullptr;
    QAction *closeWindow_ = nullptr;
    QAction *contactTheMakers_ = nullptr;
    QAction *checkForUpdates_ = nullptr;
    QAction *aboutVantorel_ = nullptr;
    QAction *quit_ = nullptr;
};
