#pragma once

#include <QWidget>

/// Says things to screen readers that stand nowhere in the window, or have changed there without
/// the focus. A widget without any size, since what is said has to come from one.
///
/// Thread: main
class Announcer : public QWidget
{
    Q_OBJECT

  public:
    explicit Announcer(QWidget *window);

    /// An empty text is not said.
    void announce(const QString &text);

  Q_SIGNALS:
    void announced(const QString &text);
};
