#pragma once

#include <QRectF>
#include <QWidget>

class QVariantAnimation;

/// A bar that runs while nobody knows how long the work will last. Stands still and full where the
/// desktop asks for reduced motion.
///
/// Thread: main
class RunningBar : public QWidget
{
    Q_OBJECT

  public:
    explicit RunningBar(QWidget *parent = nullptr);

    /// The block's place at `turn`, from 0 to 1: it comes in at the left and leaves at the right.
    static QRectF block(double turn, const QSizeF &size, double blockWidth);

    void setStill(bool isStill);
    [[nodiscard]] bool isStill() const { return isStill_; }
    [[nodiscard]] bool isRunning() const;

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

  private:
    void runOrRest();

    QVariantAnimation *animation_;
    bool isStill_ = false;
};
