#pragma once

#include "platform/NotificationHub.h"
#include "support/view/ErrorLogModel.h"
#include "ui/FramelessWindow.h"

class PlainButton;
class TableViewErrorLog;
class TextLabel;

/// The window that lists what could not be erased, and shows one in its folder. Closing
/// hides it.
///
/// Thread: main
/// Owns:   the list and its table
class ErrorLogWindow : public FramelessWindow
{
    Q_OBJECT

  public:
    explicit ErrorLogWindow(QWidget *parent = nullptr);
    ~ErrorLogWindow() override;

    /// Once, when the layout has been made.
    void awakeFromNib();
    void colorThemeChangedNotification();
    void windowDidBecomeMain();
    /// Kept on purpose: does nothing; "WindowDidResignMain" is posted by nobody.
    void windowDidResignMain();
    bool applicationShouldHandleReopen(bool hasVisibleWindows);

    [[nodiscard]] ErrorLogModel *model() { return &model_; }
    [[nodiscard]] TableViewErrorLog *table() const { return table_; }
    [[nodiscard]] TextLabel *countText() const { return countText_; }
    [[nodiscard]] PlainButton *showButton() const { return showButton_; }
    /// The identifier of the appearance that was applied last; null for the desktop's own.
    [[nodiscard]] QString appearance() const { return appearance_; }

  Q_SIGNALS:
    /// Whoever closes it.
    void willClose();
    void showInFolder(int row);

  protected:
    void layOut() override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    void connectParts();
    void addShortcuts();
    void showCount();
    void updateButton();
    void showSelected();

    ErrorLogModel model_;
    TableViewErrorLog *table_;
    TextLabel *countText_;
    PlainButton *showButton_;
    QString appearance_;
    NotificationHub::Token themeChanged_;
};
