#include "ui/ButtonBlue.h"

ButtonBlue::ButtonBlue(const QString &title, QWidget *parent)
    : ThreePartButton({QStringLiteral("btn_blue"), 4, 57, 4, TextStyle::BodyStrong}, title, parent)
{
}
