#pragma once

#include <QWidget>

/// What darkens a window under a dialog. As large as the window, and goes with it.
///
/// Thread: main
class DialogScrim : public QWidget
{
    Q_OBJECT

  public:
    explicit DialogScrim(QWidget *window);

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
