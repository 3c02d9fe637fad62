#pragma once

#include <QPalette>
#include <QProxyStyle>

class QLabel;
class QStyleOptionSlider;

/// Draws Qt's own widgets in the design's colours and shapes, so that nothing of them keeps the
/// desktop's: scroll bars, menus, tool tips, text fields, buttons, selectors, views and their
/// heads. What is not drawn here follows the palette.
///
/// Thread: main
class VantorelStyle : public QProxyStyle
{
    Q_OBJECT

  public:
    VantorelStyle();

    static QPalette palette(bool isDark);
    /// Gives the application the palette of the current theme; every widget is drawn anew.
    static void applyTheme();

    /// Whether windows may have rounded, transparent corners, from the next drawing on; menus and
    /// tool tips are square until told so.
    static void setTransparentWindows(bool has);

    /// Whether edges are to be as strong as text; all that is shown is drawn anew.
    static void setHighContrast(bool isHigh);

    void polish(QWidget *widget) override;
    void polish(QPalette &palette) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &size, const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *answer) const override;

    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    static void wrapToolTip(QLabel &label);
    static QRect scrollBarPart(const QStyleOptionSlider &option, SubControl part);
};
