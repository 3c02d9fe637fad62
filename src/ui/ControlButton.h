#pragma once

#include <QAbstractButton>

/// What the window's drawn buttons have in common: they follow the pointer, are pressed by Return
/// as well as by Space, and say how the focus ring lies about them.
///
/// Thread: main
class ControlButton : public QAbstractButton
{
    Q_OBJECT

  public:
    explicit ControlButton(QWidget *parent = nullptr);

  protected:
    /// The pointer is over the button, or the button is down.
    [[nodiscard]] bool isHovered() const;
    /// The ground and edge of a plain control as it stands; leaves font and pen ready for its
    /// title.
    void paintControl(QPainter &painter) const;
    void keyPressEvent(QKeyEvent *event) override;
};
