#pragma once

#include "ui/ControlButton.h"
#include "ui/DesignColors.h"
#include "ui/Typography.h"

/// A button that looks like a link: a coloured text, underlined under the pointer and with the
/// keyboard's focus.
///
/// Thread: main
class LinkButton : public ControlButton
{
    Q_OBJECT

  public:
    explicit LinkButton(const QString &title, QWidget *parent = nullptr);

    void setLook(TextStyle style, ColorRole role);
    void setAlwaysUnderlined(bool isAlwaysUnderlined);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    TextStyle style_ = TextStyle::SmallMedium;
    ColorRole role_ = ColorRole::Accent;
    bool isAlwaysUnderlined_ = false;
};
