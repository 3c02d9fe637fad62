#pragma once

#include "ui/ThreePartButton.h"

/// The blue button: what carries a view on.
///
/// Thread: main
class ButtonBlue : public ThreePartButton
{
    Q_OBJECT

  public:
    explicit ButtonBlue(const QString &title, QWidget *parent = nullptr);
};
