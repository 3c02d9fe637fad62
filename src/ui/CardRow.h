#pragma once

#include <QStyledItemDelegate>

/// Draws the rows of a list on a card: the ground of the current one, and then what the list has in
/// its rows.
///
/// Thread: main
/// Units:  logical pixels
class CardRow : public QStyledItemDelegate
{
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// To be scaled.
    static constexpr int rowHeight = 28;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const override;

  protected:
    virtual void paintContents(QPainter &painter, const QRect &row,
                               const QModelIndex &index) const = 0;
    /// A named picture of 16 pixels, in the middle of the row's height.
    static void paintSymbol(QPainter &painter, const QString &name, const QRect &row, int left,
                            const QColor &color);
    /// One line of text, elided at its end.
    static void paintText(QPainter &painter, const QRect &place, const QString &text,
                          bool isStrong);
};
