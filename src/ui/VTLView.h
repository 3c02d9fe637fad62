#pragma once

#include "platform/NotificationHub.h"
#include "ui/ColorCache.h"

#include <QMetaObject>
#include <QWidget>

/// A panel with the ground, the border lines and the tint that its style name has in the table of
/// colours, for the current theme. What the table has not is not drawn.
///
/// The cache of colours is looked at before each drawing pass, and built anew when the theme is
/// another one than it was built for.
///
/// Thread: main
class VTLView : public QWidget
{
    Q_OBJECT

  public:
    explicit VTLView(const QString &name = {}, QWidget *parent = nullptr);
    ~VTLView() override;

    [[nodiscard]] QString name() const { return name_; }
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

    [[nodiscard]] const ColorCache &colorCache() const { return colorCache_; }
    /// The dark flag that the cache was built for.
    [[nodiscard]] bool lastMode() const { return lastMode_; }
    [[nodiscard]] bool isMainWindow() const { return isMainWindow_; }
    /// The style has a colour for windows that are not the main one.
    [[nodiscard]] bool hasKeyColor() const { return hasKeyColor_; }

    void buildColorCacheForDarkMode(bool isDark);

  protected:
    /// The first thing of each drawing pass.
    virtual void viewWillDraw();
    virtual void drawRect(QPainter &painter, const QRect &dirtyRect);
    virtual void performWindowDrag();

    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

  private:
    void defaultInit();
    void observeValueForKeyPath(const QString &keyPath);
    void windowDidResignMainNotification();
    void windowDidBecomeMainNotification();
    void takeMainWindow(bool isMain);
    void drawBorders(QPainter &painter) const;
    void drawBackground(QPainter &painter) const;

    QString name_;
    bool allowDraggingWindow_ = false;
    int cornerRadius_ = 0;
    bool trackForceDarkSidebarAppearance_ = false;
    bool disableVibrancy_ = false;
    bool viewIsflipped_ = false;
    ColorCache colorCache_;
    bool lastMode_ = false;
    bool isMainWindow_ = true;
    bool hasKeyColor_ = false;
    QMetaObject::Connection sidebarObservation_;
    NotificationHub::Token didResignMain_;
    NotificationHub::Token didBecomeMain_;
};
