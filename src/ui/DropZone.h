#pragma once

#include <QWidget>

/// The frame of the drop view: dashed at rest, solid and tinted while files hang over the window.
/// It takes no drop itself; window and image do.
///
/// Thread: main
class DropZone : public QWidget
{
    Q_OBJECT

  public:
    explicit DropZone(QWidget *parent = nullptr);

    /// From 0, at rest, to 1, under a drag.
    void setDrag(double drag);
    [[nodiscard]] double drag() const { return drag_; }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    double drag_ = 0;
};
