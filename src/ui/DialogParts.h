#pragma once

#include "ui/VTLView.h"

#include <QIcon>
#include <QWidget>

/// The ground of dialogs, "DefaultAlertView". Where no table of colours is known yet, the one that
/// the application begins with counts. A press on it moves the dialog.
///
/// Thread: main
class DialogGround : public VTLView
{
    Q_OBJECT

  public:
    explicit DialogGround(QWidget *parent);

  protected:
    void drawRect(QPainter &painter, const QRect &dirtyRect) override;
};

/// The strip behind the buttons: a shade, and a line above it.
///
/// Thread: main
class DialogStrip : public QWidget
{
    Q_OBJECT

  public:
    explicit DialogStrip(QWidget *parent);

    static constexpr int designHeight = 46; ///< to be scaled

  protected:
    void paintEvent(QPaintEvent *event) override;
};

/// The application's motif, large and almost transparent, turned and reaching beyond the dialog's
/// upper edge. As large as the dialog.
///
/// Thread: main
class DialogMotif : public QWidget
{
    Q_OBJECT

  public:
    explicit DialogMotif(QWidget *parent);

    [[nodiscard]] double opacity() const { return opacity_; }
    void setOpacity(double opacity);

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    double opacity_ = 0;
};

/// The dialog's icon.
///
/// Thread: main
class DialogImage : public QWidget
{
    Q_OBJECT

  public:
    explicit DialogImage(QWidget *parent);

    [[nodiscard]] QIcon image() const { return image_; }
    void setImage(const QIcon &image);

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    QIcon image_;
};
