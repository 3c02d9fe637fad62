#pragma once

#include <QObject>

#include <vector>

/// Whether files are dragged over the window, put together from what its drop targets hear: going
/// from one of them to another is no end of the drag.
///
/// Thread: main
class DragState : public QObject
{
    Q_OBJECT

  public:
    static constexpr int noDrag = -1;

    void entered(const QObject *target, int items);
    void left(const QObject *target);
    [[nodiscard]] int items() const { return told_; }

  Q_SIGNALS:
    /// Later, from the event loop, and only for a change. noDrag at the end.
    void changed(int items);

  private:
    void tellLater();
    void tell();

    std::vector<const QObject *> over_;
    int items_ = noDrag;
    int told_ = noDrag;
    bool isTellingLater_ = false;
};
