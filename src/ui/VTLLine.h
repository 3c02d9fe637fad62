#pragma once

#include "platform/NotificationHub.h"
#include "ui/ColorCache.h"

#include <QWidget>

/// A separator line in the colour that its style name has in the table of colours, for the current
/// theme; never darker than the theme, whatever "ForceDarkSidebarAppearance" says.
///
/// Thread: main
class VTLLine : public QWidget
{
    Q_OBJECT

  public:
    explicit VTLLine(const QString &name = {}, QWidget *parent = nullptr);
    ~VTLLine() override;

    [[nodiscard]] QString name() const { return name_; }
    [[nodiscard]] const ColorCache &colorCache() const { return colorCache_; }
    /// The dark flag that the cache was built for.
    [[nodiscard]] bool lastMode() const { return lastMode_; }
    [[nodiscard]] bool isMainWindow() const { return isMainWindow_; }
    /// The style has a colour for windows that are not the main one. Kept on purpose: the line
    /// keeps that colour as its tint and never draws it.
    [[nodiscard]] bool hasKeyColor() const { return hasKeyColor_; }

    void buildColorCacheForDarkMode(bool isDark);

  protected:
    /// The first thing of each drawing pass.
    virtual void viewWillDraw();
    virtual void drawRect(QPainter &painter, const QRect &dirtyRect);

    void paintEvent(QPaintEvent *event) override;

  private:
    void windowDidResignMainNotification();
    void windowDidBecomeMainNotification();
    void takeMainWindow(bool isMain);

    QString name_;
    ColorCache colorCache_;
    bool lastMode_ = false;
    bool isMainWindow_ = true;
    bool hasKeyColor_ = false;
    NotificationHub::Token didResignMain_;
    NotificationHub::Token didBecomeMain_;
};
