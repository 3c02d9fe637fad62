#pragma once

#include "ui/DesignColors.h"
#include "ui/Typography.h"

#include <QLabel>

/// A text of the window in one of the design's styles. One line is elided at its end where it does
/// not fit, and is then its own tool tip; a label that wraps keeps the style's line height. Screen
/// readers get the whole text.
///
/// Thread: main
class TextLabel : public QLabel
{
    Q_OBJECT

  public:
    explicit TextLabel(TextStyle style, ColorRole role = ColorRole::Text,
                       QWidget *parent = nullptr);

    void setStyle(TextStyle style);
    void setRole(ColorRole role);
    /// What does not fit goes on in the next line.
    void setWraps(bool wraps);
    [[nodiscard]] TextStyle style() const { return style_; }
    [[nodiscard]] ColorRole role() const { return role_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

  private:
    [[nodiscard]] QStringList lines(int width) const;
    void paintLine(QPainter &painter, const QString &text, int top) const;

    TextStyle style_;
    ColorRole role_;
    bool wraps_ = false;
};
