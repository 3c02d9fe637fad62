#pragma once

#include <QRect>
#include <QSize>

/// Where a place of the design lies in a view that is larger or smaller than the design's 720 ×
/// 520, at any factor of the system font. Margins stay as they are; what lies between them is
/// scaled.
///
/// Thread: pure
/// Units:  logical pixels
class ViewRuler
{
  public:
    static constexpr int margin = 32;
    static constexpr int naturalWidth = 720;
    static constexpr int naturalHeight = 520;
    static constexpr int smallestWidth = 640;
    static constexpr int smallestHeight = 464;

    ViewRuler(QSize size, double factor);

    [[nodiscard]] QSize size() const { return size_; }
    [[nodiscard]] int length(double length) const;
    /// Keeps its distance from the left edge.
    [[nodiscard]] int left(double x) const;
    /// Keeps its distance from the right edge.
    [[nodiscard]] int right(double x) const;
    /// Keeps its distance from the upper edge.
    [[nodiscard]] int top(double y) const;
    /// Keeps its distance from the lower edge.
    [[nodiscard]] int bottom(double y) const;
    /// Belongs to a block that stays in the middle of the view, across and down.
    [[nodiscard]] int across(double x) const;
    [[nodiscard]] int down(double y) const;
    /// A rectangle of such a block.
    [[nodiscard]] QRect centred(double x, double y, double width, double height) const;
    /// A line of text from margin to margin.
    [[nodiscard]] QRect line(int y, double height) const;

  private:
    QSize size_;
    double factor_;
};
