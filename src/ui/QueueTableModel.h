#pragma once

#include "engine/QueueArray.h"
#include "ui/RowTexts.h"

#include <QAbstractTableModel>
#include <QByteArray>

#include <memory>

/// The erase queue as rows. It keeps nothing of a row: what is asked for is read from the queue, so
/// a million rows cost what one does.
///
/// Thread:       main
/// Holds weakly: the queue; without it there are no rows
/// Invariant:    the rows are those of the last queueChanged(), so between a change of the queue
///               and that call a row may have lost its item and is then empty
class QueueTableModel : public QAbstractTableModel
{
    Q_OBJECT

  public:
    enum Column { Status, Name, Folder, Size, ColumnCount };

    /// The user's home is shown as "~".
    explicit QueueTableModel(QObject *parent = nullptr);
    QueueTableModel(const QByteArray &home, QObject *parent);

    void setQueueArray(std::weak_ptr<QueueArray> queue);
    /// To be called after a change of the queue. Items that came at the end become new rows below
    /// the others; after anything else all rows are new.
    void queueChanged();

    /// Which row is in work, -1 for none, and in which of its passes, from 1 on (0: not known).
    void setRowInWork(int row, int pass, int passes);
    [[nodiscard]] int rowInWork() const { return rowInWork_; }
    /// Status or progress of the row's item is another one.
    void rowChanged(int row);

    /// -1 where it is no row. Constant time, taken over a run, which asks in the order of the rows.
    [[nodiscard]] int rowOf(const QueueObject *item) const;
    /// Null where the row has no item any more.
    [[nodiscard]] QueueArray::Item item(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    [[nodiscard]] bool startsWithTheSameItems(const QueueArray::Items &items) const;
    void noteEnds(const QueueArray::Items &items);
    [[nodiscard]] int findFrom(const QueueArray::Items &items, const QueueObject *item) const;
    [[nodiscard]] bool isRow(int row) const { return row >= 0 && row < rowCount_; }
    [[nodiscard]] QString text(const QueueObject &item, int column) const;
    [[nodiscard]] QString spoken(const QueueObject &item, int row, int column) const;
    [[nodiscard]] RowTexts::RowState state(const QueueObject &item, int row) const;

    QByteArray home_;
    std::weak_ptr<QueueArray> queue_;
    std::weak_ptr<QueueObject> first_;
    std::weak_ptr<QueueObject> last_;
    int rowCount_ = 0;
    int rowInWork_ = -1;
    int pass_ = 0;
    int passes_ = 0;
    mutable int lastFound_ = 0;
};
