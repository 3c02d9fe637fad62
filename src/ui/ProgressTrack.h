#pragma once

#include <QWidget>

class HorizonProgressIndicator;

/// A plain ground with square ends, and on it, filling it, a progress bar.
///
/// Thread: main
/// Owns:   the bar
class ProgressTrack : public QWidget
{
    Q_OBJECT

  public:
    explicit ProgressTrack(QWidget *parent = nullptr);

    [[nodiscard]] HorizonProgressIndicator *indicator() const { return indicator_; }

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    HorizonProgressIndicator *indicator_;
};
