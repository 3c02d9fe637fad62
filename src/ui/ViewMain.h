#pragma once

#include <QWidget>

/// A ground of one light gradient in both themes, lighter at the top.
///
/// Thread: main
class ViewMain : public QWidget
{
    Q_OBJECT

  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent *event) override;
};
