#pragma once

#include <QWidget>

class TextLabel;

/// The callout under the header's add button, with an arrow that points to it. Like the header, it
/// keeps its height at every font size.
///
/// Thread: main
class AddCallout : public QWidget
{
    Q_OBJECT

  public:
    /// It comes out by as much.
    static constexpr int slideHeight = 30;

    explicit AddCallout(QWidget *parent);

    [[nodiscard]] QWidget *arrowHead() const { return arrowHead_; }

  Q_SIGNALS:
    void clicked();

  protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

  private:
    void layOut();

    QWidget *arrowHead_;
    TextLabel *text_;
};
