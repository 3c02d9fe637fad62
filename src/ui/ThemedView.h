#pragma once

#include "platform/NotificationHub.h"
#include "ui/ColorCache.h"

#include <QWidget>

#include <initializer_list>

/// What panels and lines have in common: a style name, its colours, and when these are looked up
/// again. The cache of colours is looked at before each drawing pass, and built anew when the theme
/// is another one than it was built for, or when the style has a colour for windows that are not
/// the main one and the window has become or ceased to be that.
///
/// Thread: main
class ThemedView : public QWidget
{
    Q_OBJECT

  public:
    [[nodiscard]] QString name() const { return name_; }
    [[nodiscard]] const ColorCache &colorCache() const { return colorCache_; }
    /// The dark flag that the cache was built for.
    [[nodiscard]] bool lastMode() const { return lastMode_; }
    [[nodiscard]] bool isMainWindow() const { return isMainWindow_; }
    /// The style has a colour for windows that are not the main one.
    [[nodiscard]] bool hasKeyColor() const { return hasKeyColor_; }

    void buildColorCacheForDarkMode(bool isDark);

  protected:
    explicit ThemedView(const QString &name, QWidget *parent);

    /// Calls buildColors() with what the class draws.
    virtual void buildColorsForDarkMode(bool isDark) = 0;
    void buildColors(bool isDark, std::initializer_list<ColorCache::Entry> entries);
    void setName(const QString &name);

    /// The first thing of each drawing pass.
    virtual void viewWillDraw();
    virtual void drawRect(QPainter &painter, const QRect &dirtyRect) = 0;

    void paintEvent(QPaintEvent *event) override;

    static constexpr QLatin1String background{"bgcolor"};
    static constexpr QLatin1String tint{"tint"};

  private:
    /// Hears of the main window from here on, and takes its own for that one.
    void defaultInit();
    void windowDidResignMainNotification();
    void windowDidBecomeMainNotification();
    void takeMainWindow(bool isMain);

    QString name_;
    ColorCache colorCache_;
    bool lastMode_ = false;
    bool isMainWindow_ = false;
    bool hasKeyColor_ = false;
    NotificationHub::Token didResignMain_;
    NotificationHub::Token didBecomeMain_;
};
