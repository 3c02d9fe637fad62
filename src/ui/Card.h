#pragma once

#include <QWidget>

/// The ground of a group: surface with an edge, round corners.
///
/// Thread: main
class Card : public QWidget
{
    Q_OBJECT

  public:
    static constexpr double cornerRadius = 6;

    explicit Card(QWidget *parent = nullptr) : QWidget(parent) {}

  protected:
    void paintEvent(QPaintEvent *event) override;
};
