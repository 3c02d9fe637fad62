#pragma once

#include "ui/PlainButton.h"
#include "ui/ThreePartImage.h"

/// A dialog's push button. While it is the default one, which Return presses, it looks like the
/// blue button, else like a plain one. It reads no keys and takes no focus: the dialog does, and
/// lays the focus on its default button.
///
/// Its frame is what the row of buttons is made of; its painted body, which is the widget, lies
/// inside of that.
///
/// Thread: main
/// Units:  logical pixels
class DialogButton : public PlainButton
{
    Q_OBJECT

  public:
    DialogButton(const QString &title, int tag, QWidget *parent);

    /// Its place in the order in which the buttons were added, from 1.
    [[nodiscard]] int tag() const { return tag_; }

    [[nodiscard]] QRect frame() const { return frame_; }
    void setFrame(const QRect &frame);
    /// The frame that fits the title, as the default button and as another one.
    [[nodiscard]] QSize fittedSize() const;

    [[nodiscard]] bool isDefault() const { return isDefault_; }
    void setDefault(bool isDefault);

  protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    int tag_;
    QRect frame_;
    bool isDefault_ = false;
    ThreePartImage image_;
    ThreePartImage pressedImage_;
};
