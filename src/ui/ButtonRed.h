#pragma once

#include "ui/ThreePartButton.h"

/// The red button: it starts the erasing.
///
/// Thread: main
class ButtonRed : public ThreePartButton
{
    Q_OBJECT

  public:
    explicit ButtonRed(const QString &title, QWidget *parent = nullptr);
};
