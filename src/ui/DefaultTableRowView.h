#pragma once

#include "ui/ColorCache.h"

#include <QColor>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>

class QPainter;

/// The ground of one visible row of a table: its colour, the shade under the mouse, the line at its
/// lower edge, the selection. Not a widget and not the row's contents; the table owns one for each
/// row that it shows, moves it to another row when that one is gone, and hands it the mouse.
///
/// It draws into a transparent layer of its own, which is then laid over what the table has
/// painted. So a clear background lets the table's ground through, and darkening by a light colour
/// still shows on a dark one.
///
/// Thread:  main
/// Units:   logical pixels; the bounds start at 0,0
/// Failure: a missing selection colour fills nothing; a missing border colour fills with the colour
///          of the ground, which was the last one used
class DefaultTableRowView
{
  public:
    enum class SelectionHighlightStyle { Regular = 0, None = 1 };

    /// Where the mouse is reported to the row. Its options are sums of the three below.
    struct TrackingArea
    {
        static constexpr unsigned mouseEnteredAndExited = 1;
        static constexpr unsigned activeAlways = 128;
        static constexpr unsigned inVisibleRect = 512; ///< the bounds as they come to be

        QRectF rect;
        unsigned options = 0;

        bool operator==(const TrackingArea &) const = default;
    };

    explicit DefaultTableRowView(const QRectF &frame = {});
    DefaultTableRowView(const DefaultTableRowView &) = delete;
    DefaultTableRowView &operator=(const DefaultTableRowView &) = delete;

    /// What switches hover and border on: "RowViewWithMouseHover", "RowViewWithBorder" or
    /// "RowViewWithMouseHover+Border".
    void setIdentifier(const QString &identifier) { identifier_ = identifier; }
    [[nodiscard]] const QString &identifier() const { return identifier_; }

    /// In the table's coordinates.
    void setFrame(const QRectF &frame) { frame_ = frame; }
    [[nodiscard]] const QRectF &frame() const { return frame_; }
    [[nodiscard]] QRectF bounds() const { return {QPointF(0, 0), frame_.size()}; }

    void setSelected(bool isSelected) { isSelected_ = isSelected; }
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    /// The table has the focus, in the active window.
    void setEmphasized(bool isEmphasized) { isEmphasized_ = isEmphasized; }
    [[nodiscard]] bool isEmphasized() const { return isEmphasized_; }
    void setSelectionHighlightStyle(SelectionHighlightStyle style) { highlightStyle_ = style; }
    [[nodiscard]] SelectionHighlightStyle selectionHighlightStyle() const
    {
        return highlightStyle_;
    }

    [[nodiscard]] const QString &colorStyleName() const { return colorStyleName_; }
    [[nodiscard]] bool mouseHoverEnabled() const { return mouseHoverEnabled_; }
    [[nodiscard]] bool mouseInside() const { return mouseInside_; }
    [[nodiscard]] bool useBorder() const { return useBorder_; }
    [[nodiscard]] bool isDarkMode() const { return isDarkMode_; }
    [[nodiscard]] bool lastMode() const { return lastMode_; }
    [[nodiscard]] const ColorCache &colorCache() const { return colorCache_; }
    [[nodiscard]] const std::optional<QColor> &bgColor() const { return bgColor_; }
    [[nodiscard]] const std::optional<QColor> &tempSelectionColor() const
    {
        return tempSelectionColor_;
    }
    [[nodiscard]] const std::optional<TrackingArea> &trackingArea() const { return trackingArea_; }
    /// Whether the mouse is reported: the stored area stands in the row.
    [[nodiscard]] bool isTracking() const { return isTracking_; }

    /// Flags from the identifier, each time; colours when the theme is another one.
    void buildColorCache();
    /// Kept on purpose: the colours follow at the next change of theme only.
    void updateColorStyleName(const QString &name);
    /// Nothing stands for the platform's background colour.
    void updateBackgroundColorWithColor(const std::optional<QColor> &color);
    /// Lasts while the row is selected.
    void overWriteSelectionColorWithColor(const std::optional<QColor> &color);

    /// Takes hover from the preference "useMouseHoverRowColor". (The identifier takes it back at
    /// the next drawing.)
    void enableMSRowHoverChangeNotification();
    void msRowHoverDarknessChangeNotification();

    void startTrackingArea();
    /// Takes the area out of the row; the property keeps it.
    void removeTrackingArea();
    void mouseEntered();
    void mouseExited();
    /// After the row has moved below the mouse: forgets the mouse. Kept on purpose: the area stays
    /// as it is.
    void updateTrackingAreas();

    /// One drawing pass: viewWillDraw(), background, selection.
    void paint(QPainter &painter);

    /// Called whenever the row wants to be drawn again.
    void setRedisplay(std::function<void()> redisplay) { redisplay_ = std::move(redisplay); }

  private:
    void viewWillDraw();
    void drawBackgroundInRect(QPainter &painter);
    void drawSelectionInRect(QPainter &painter) const;
    void drawBorder(QPainter &painter, const QColor &groundColor) const;
    void takeFlagsFromIdentifier();
    [[nodiscard]] std::optional<QColor> selectionColor() const;
    void redisplay() const;

    QRectF frame_;
    QString identifier_;
    QString colorStyleName_;
    ColorCache colorCache_;
    std::optional<QColor> bgColor_;
    std::optional<QColor> tempSelectionColor_;
    std::optional<TrackingArea> trackingArea_;
    std::function<void()> redisplay_;
    SelectionHighlightStyle highlightStyle_ = SelectionHighlightStyle::Regular;
    bool isSelected_ = false;
    bool isEmphasized_ = false;
    bool mouseHoverEnabled_ = false;
    bool mouseInside_ = false;
    bool useBorder_ = false;
    bool isDarkMode_ = false;
    bool lastMode_ = false;
    bool isTracking_ = false;
};
