#pragma once

#include <QProgressBar>

/// A flat progress bar: its fill alone, without track or border, the same in both themes. The
/// ground behind it is ProgressTrack.
///
/// Thread: main
class HorizonProgressIndicator : public QProgressBar
{
    Q_OBJECT

  public:
    explicit HorizonProgressIndicator(QWidget *parent = nullptr);

    [[nodiscard]] double maxValue() const { return maxValue_; }
    void setMaxValue(double maxValue);
    [[nodiscard]] double doubleValue() const { return doubleValue_; }
    void setDoubleValue(double doubleValue);

    /// The fill's width in bounds of this width; 0 where it is not a finite one above 0.
    static double fillWidth(double boundsWidth, double maxValue, double doubleValue);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    void tellScreenReaders();

    double maxValue_ = 100;
    double doubleValue_ = 0;
};
