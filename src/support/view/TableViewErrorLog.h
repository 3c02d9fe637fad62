#pragma once

#include "platform/NotificationHub.h"
#include "ui/QueueTable.h"

/// The table of the error log's window. Every row gets the row view that shades under the mouse.
///
/// Thread: main
class TableViewErrorLog : public QueueTable
{
    Q_OBJECT

  public:
    explicit TableViewErrorLog(QWidget *parent = nullptr);

    /// Draws every row that is seen anew; without rows there is nothing to do.
    void colorThemeChangedNotification();

  Q_SIGNALS:
    /// Double click, Return or the menu of a row: the file is to be shown in its folder.
    void showInFolder(int row);
    /// The rows are drawn anew.
    void reloaded();

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

  private:
    void showSelected();
    [[nodiscard]] QPoint menuPlace(const QContextMenuEvent &event) const;

    NotificationHub::Token themeChanged_;
};
