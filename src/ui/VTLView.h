#pragma once

#include "ui/ThemedView.h"

#include <QMetaObject>

/// A panel with the ground, the border lines and the tint that its style name has in the table of
/// colours, for the current theme. What the table has not is not drawn.
///
/// Thread: main
class VTLView : public ThemedView
{
    Q_OBJECT

  public:
    explicit VTLView(const QString &name = {}, QWidget *parent = nullptr);
    ~VTLView() override;

    /// Another style; the colours are looked up at the next drawing.
    void changeToName(const QString &name);

    /// A press of the left button moves the window.
    void setAllowDraggingWindow(bool allows) { allowDraggingWindow_ = allows; }
    [[nodiscard]] bool allowDraggingWindow() const { return allowDraggingWindow_; }

    /// From 1 on: the view and its children are clipped to rounded corners, with a line of
    /// translucent black above both. Kept on purpose: below 1 nothing changes, a radius once given
    /// stays, and the line's colour knows no theme.
    void setCornerRadius(int radius);
    [[nodiscard]] int cornerRadius() const { return cornerRadius_; }

    /// Draws dark in both themes while the preference "ForceDarkSidebarAppearance" is on. Kept on
    /// purpose: once it has begun to, the view follows that preference to its end.
    void setTrackForceDarkSidebarAppearance(bool tracks);
    [[nodiscard]] bool trackForceDarkSidebarAppearance() const
    {
        return trackForceDarkSidebarAppearance_;
    }

    void setDisableVibrancy(bool disables) { disableVibrancy_ = disables; }
    [[nodiscard]] bool disableVibrancy() const { return disableVibrancy_; }
    /// Kept on purpose: the opposite of what the property's name says.
    [[nodiscard]] bool allowsVibrancy() const { return disableVibrancy_; }

    /// A flipped view's own y grows downwards: its "top" border and the gradient's start are below.
    void setViewIsflipped(bool isFlipped);
    [[nodiscard]] bool viewIsflipped() const { return viewIsflipped_; }
    [[nodiscard]] bool isFlipped() const { return viewIsflipped_; }

  protected:
    void buildColorsForDarkMode(bool isDark) override;
    void drawRect(QPainter &painter, const QRect &dirtyRect) override;
    virtual void performWindowDrag();

    void mousePressEvent(QMouseEvent *event) override;

  private:
    void observeValueForKeyPath(const QString &keyPath);
    void drawBorders(QPainter &painter) const;
    void drawBackground(QPainter &painter) const;

    bool allowDraggingWindow_ = false;
    int cornerRadius_ = 0;
    bool trackForceDarkSidebarAppearance_ = false;
    bool disableVibrancy_ = false;
    bool viewIsflipped_ = false;
    QMetaObject::Connection sidebarObservation_;
};
