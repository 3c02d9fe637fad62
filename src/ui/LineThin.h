#pragma once

#include <QWidget>

/// A thin line of one grey in both themes.
///
/// Thread: main
class LineThin : public QWidget
{
    Q_OBJECT

  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent *event) override;
};
