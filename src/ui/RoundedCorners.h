#pragma once

#include <QGraphicsEffect>

/// Clips a widget and all its children to rounded corners and lays a line of translucent black, 1
/// wide, along the inner edge over them.
///
/// Thread: main
class RoundedCorners : public QGraphicsEffect
{
  public:
    RoundedCorners(int radius, QObject *parent);

    [[nodiscard]] int radius() const { return radius_; }

  protected:
    void draw(QPainter *painter) override;

  private:
    int radius_;
};
