#include "ui/ButtonRed.h"

ButtonRed::ButtonRed(const QString &title, QWidget *parent)
    : ThreePartButton({QStringLiteral("btn_red"), 4, 42, 4, TextStyle::Value}, title, parent)
{
}
