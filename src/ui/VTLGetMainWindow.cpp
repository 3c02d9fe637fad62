#include "ui/VTLGetMainWindow.h"

#include "ui/MainWindow.h"
#include "ui/WindowRegister.h"

#include <algorithm>

QWidget *VTLGetMainWindow::mainWindow()
{
    const WindowRegister &known = WindowRegister::shared();
    return mainWindow(known.windows(), known.mainWindow());
}

QWidget *VTLGetMainWindow::mainWindow(const std::vector<QWidget *> &windows, QWidget *current)
{
    const auto isMain = [](QWidget *window) { return qobject_cast<MainWindow *>(window); };
    const auto found = std::find_if(windows.begin(), windows.end(), isMain);
    return found == windows.end() ? current : *found;
}
