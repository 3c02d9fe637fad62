#pragma once

#include "ui/TableLayout.h"

#include <QModelIndex>
#include <QRect>

class ImageSource;
class QPainter;

/// Draws what stands in a row of a table: icons and texts, and the ground of the row in work. The
/// row's own ground is DefaultTableRowView's.
///
/// Thread:       main
/// Holds weakly: the image source
class RowPainter
{
  public:
    enum class Selection { None, Active, Inactive };

    RowPainter(TableKind kind, const ImageSource &images) : kind_(kind), images_(&images) {}

    void setImageSource(const ImageSource &images) { images_ = &images; }

    /// Below the row view: tint and progress of the row in work.
    void paintGround(QPainter &painter, const QModelIndex &row, const QRect &rect) const;
    void paintProgress(QPainter &painter, const QModelIndex &row, const QRect &rect) const;
    /// Above it.
    void paintContents(QPainter &painter, const QModelIndex &row, const QRect &rect,
                       Selection selection) const;

    /// The cell's whole text where it does not fit in a row of this width; else nothing.
    [[nodiscard]] QString elidedText(const QModelIndex &row, int x, int width) const;

    [[nodiscard]] static bool isInWork(const QModelIndex &row);

  private:
    enum Cell { Name, Folder, Last };

    [[nodiscard]] QString text(const QModelIndex &row, Cell cell) const;
    [[nodiscard]] TableLayout::Span span(Cell cell, int width) const;
    void paintIcons(QPainter &painter, const QModelIndex &row, const QRect &rect) const;
    void paintStatus(QPainter &painter, const QModelIndex &row, const QRect &rect) const;
    void paintText(QPainter &painter, const QModelIndex &row, Cell cell, const QRect &rect,
                   Selection selection) const;

    TableKind kind_;
    const ImageSource *images_;
};
