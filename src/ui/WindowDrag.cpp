#include "ui/WindowDrag.h"

#include <QWidget>
#include <QWindow>

void WindowDrag::begin(const QWidget &widget)
{
    if (QWindow *handle = widget.window()->windowHandle())
        handle->startSystemMove();
}
