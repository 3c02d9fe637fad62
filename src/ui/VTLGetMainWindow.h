#pragma once

#include <vector>

class QWidget;

/// Finds the program's main window from anywhere.
///
/// Thread: main
class VTLGetMainWindow
{
  public:
    /// Among the application's windows; may be null.
    static QWidget *mainWindow();
    /// The first of `windows` that is a MainWindow, else `current`. Pure.
    static QWidget *mainWindow(const std::vector<QWidget *> &windows, QWidget *current);
};
