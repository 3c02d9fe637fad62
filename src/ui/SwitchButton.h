#pragma once

#include <QAbstractButton>

/// A setting that is on or off. Off is a frame with a small knob, on is filled with a large one, so
/// that shape says it as well as colour.
///
/// Thread: main
class SwitchButton : public QAbstractButton
{
    Q_OBJECT

  public:
    explicit SwitchButton(QWidget *parent = nullptr);
    explicit SwitchButton(const QString &accessibleName, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent *event) override;
};
