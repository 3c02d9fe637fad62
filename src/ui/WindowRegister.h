#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

/// The application's windows in the order in which they were made, which Qt does not keep, and
/// which of them is the main one.
///
/// Thread:       main
/// Holds weakly: the windows; one that goes is forgotten
class WindowRegister
{
  public:
    static WindowRegister &shared();

    void add(QWidget *window);
    [[nodiscard]] std::vector<QWidget *> windows() const;

    /// The main window is the one of MainWindow and ErrorLogWindow that became active last; never a
    /// dialog, a sheet or a menu.
    void setMainWindow(QWidget *window) { mainWindow_ = window; }
    [[nodiscard]] QWidget *mainWindow() const { return mainWindow_; }

  private:
    std::vector<QPointer<QWidget>> windows_;
    QPointer<QWidget> mainWindow_;
};
