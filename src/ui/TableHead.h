#pragma once

#include "ui/TableLayout.h"

#include <QHeaderView>

/// The head of a table: its columns' titles over the rows. It is the upper part of the table's
/// card.
///
/// Thread: main
class TableHead : public QHeaderView
{
    Q_OBJECT

  public:
    TableHead(TableKind kind, QWidget *table);

    /// Gives the model's columns their widths in a table of this width.
    void layOut(int width);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    [[nodiscard]] QString title(int section) const;
    void paintTitles(QPainter &painter) const;

    TableKind kind_;
};
