#include "ui/WindowRegister.h"

WindowRegister &WindowRegister::shared()
{
    static WindowRegister shared;
    return shared;
}

void WindowRegister::add(QWidget *window)
{
    std::erase_if(windows_, [](const QPointer<QWidget> &known) { return known.isNull(); });
    windows_.emplace_back(window);
}

std::vector<QWidget *> WindowRegister::windows() const
{
    std::vector<QWidget *> windows;
    for (const QPointer<QWidget> &window : windows_) {
        if (window)
            windows.push_back(window);
    }
    return windows;
}
