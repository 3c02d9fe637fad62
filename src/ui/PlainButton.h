#pragma once

#include "ui/ControlButton.h"

/// A button of the second rank: control ground, title in the middle.
///
/// Thread: main
class PlainButton : public ControlButton
{
    Q_OBJECT

  public:
    explicit PlainButton(const QString &title, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
};
