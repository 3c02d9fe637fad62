#pragma once

#include "ui/ControlButton.h"

/// A button of the window's header: a symbol without a ground at rest, 28 x 28. With a badge text,
/// which stands beside the symbol in the colour of what went wrong, it is wider. The header does
/// not grow with the font, and neither do its buttons.
///
/// Thread: main
class HeaderButton : public ControlButton
{
    Q_OBJECT

  public:
    HeaderButton(const QString &symbolName, const QString &accessibleName,
                 QWidget *parent = nullptr);

    /// Looks pressed while what it opens is open.
    void setKeptPressed(bool isKeptPressed);
    [[nodiscard]] bool isKeptPressed() const { return isKeptPressed_; }
    void setBadgeText(const QString &text);
    [[nodiscard]] QString badgeText() const { return badgeText_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    [[nodiscard]] QColor symbolColor() const;

    QString symbolName_;
    QString badgeText_;
    bool isKeptPressed_ = false;
};
