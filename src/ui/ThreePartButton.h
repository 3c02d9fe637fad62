#pragma once

#include "ui/ThreePartImage.h"
#include "ui/Typography.h"

#include <QPushButton>

/// What the coloured buttons have in common: three pictures, each drawn in three parts, and a white
/// title. Momentary, without a bezel; the focus ring is not its own.
///
/// Thread: main
class ThreePartButton : public QPushButton
{
    Q_OBJECT

  public:
    /// The pictures of a kind of button: `image`, `image`_hi and `image`_in.
    struct Look
    {
        QString image;
        double leftCapWidth;
        double middleWidth;
        double rightCapWidth;
        TextStyle titleStyle;
    };

    ThreePartButton(Look look, const QString &title, QWidget *parent);

    /// The button's type and its image sets; called once.
    void awakeFromNib();

    [[nodiscard]] const ThreePartImage &imgNormal() const { return imgNormal_; }
    [[nodiscard]] const ThreePartImage &imgHigh() const { return imgHigh_; }
    [[nodiscard]] const ThreePartImage &imgInactive() const { return imgInactive_; }

    /// The image set for this highlight state: 0 at rest, 1 pressed; null for any other. A disabled
    /// button has one picture, whatever its state.
    [[nodiscard]] const ThreePartImage *imageSet(int highlightState) const;
    [[nodiscard]] QColor titleColor() const;

    void drawInterior(QPainter &painter, const QRectF &frame, int highlightState) const;
    /// The place that the title takes.
    QRectF drawTitle(QPainter &painter, const QString &title, const QRectF &frame) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    Look look_;
    ThreePartImage imgNormal_;
    ThreePartImage imgHigh_;
    ThreePartImage imgInactive_;
};
