#pragma once

#include "app/MainOutlets.h"
#include "support/view/ErrorLogWindow.h"
#include "ui/MainWindow.h"

/// The windows with their views, and where everything in them is. Layout only: nothing is connected
/// yet.
///
/// Thread: main
/// Owns:   the windows and all that is in them
class MainLayout
{
  public:
    MainLayout();
    MainLayout(const MainLayout &) = delete;
    MainLayout &operator=(const MainLayout &) = delete;

    MainWindow window;
    ErrorLogWindow errorLog;
    MainOutlets outlets;

  private:
    void makeViews();
    void findOutlets();
};
