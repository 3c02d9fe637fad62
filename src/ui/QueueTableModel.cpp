#include "ui/QueueTableModel.h"

#include "ui/TableRole.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <limits>

namespace {

double progress(const QueueObject &item)
{
    const double part = item.doubleValue() / item.maxValue();
    return part > 0 ? std::min(part, 1.0) : 0; // an empty file's is not a number
}

/// More rows than a table can count are not shown.
int countOf(const QueueArray::Items &items)
{
    return int(std::min<std::size_t>(items.size(), std::numeric_limits<int>::max()));
}

} // namespace

QueueTableModel::QueueTableModel(QObject *parent)
    : QueueTableModel(QFile::encodeName(QDir::homePath()), parent)
{
}

QueueTableModel::QueueTableModel(const QByteArray &home, QObject *parent)
    : QAbstractTableModel(parent), home_(home)
{
}

void QueueTableModel::setQueueArray(std::weak_ptr<QueueArray> queue)
{
    beginResetModel();
    queue_ = std::move(queue);
    const std::shared_ptr<QueueArray> held = queue_.lock();
    noteEnds(held ? held->items() : QueueArray::Items());
    rowInWork_ = -1;
    endResetModel();
}

bool QueueTableModel::startsWithTheSameItems(const QueueArray::Items &items) const
{
    const int count = countOf(items);
    if (count < rowCount_)
        return false;
    return rowCount_ == 0 ||
           (items.front() == first_.lock() && items.at(std::size_t(rowCount_) - 1) == last_.lock());
}

void QueueTableModel::noteEnds(const QueueArray::Items &items)
{
    rowCount_ = countOf(items);
    lastFound_ = 0;
    first_.reset();
    last_.reset();
    if (rowCount_ > 0) {
        first_ = items.front();
        last_ = items.at(std::size_t(rowCount_) - 1);
    }
}

void QueueTableModel::queueChanged()
{
    const std::shared_ptr<QueueArray> queue = queue_.lock();
    const QueueArray::Items none;
    const QueueArray::Items &items = queue ? queue->items() : none;
    if (!startsWithTheSameItems(items)) {
        beginResetModel();
        noteEnds(items);
        rowInWork_ = -1;
        endResetModel();
    } else if (countOf(items) > rowCount_) {
        beginInsertRows({}, rowCount_, countOf(items) - 1);
        noteEnds(items);
        endInsertRows();
    }
}

void QueueTableModel::setRowInWork(int row, int pass, int passes)
{
    if (row == rowInWork_ && pass == pass_ && passes == passes_)
        return;
    const int before = rowInWork_;
    rowInWork_ = row;
    pass_ = pass;
    passes_ = passes;
    if (before != row)
        rowChanged(before);
    rowChanged(row);
}

void QueueTableModel::rowChanged(int row)
{
    if (isRow(row))
        Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int QueueTableModel::findFrom(const QueueArray::Items &items, const QueueObject *item) const
{
    const auto isIt = [item](const QueueArray::Item &other) { return other.get() == item; };
    const auto end = items.begin() + countOf(items);
    const auto start = items.begin() + std::min(lastFound_, countOf(items));
    const auto found = std::find_if(start, end, isIt);
    if (found != end)
        return int(found - items.begin());
    const auto earlier = std::find_if(items.begin(), start, isIt);
    return earlier == start ? -1 : int(earlier - items.begin());
}

int QueueTableModel::rowOf(const QueueObject *item) const
{
    const std::shared_ptr<QueueArray> queue = queue_.lock();
    if (!queue || !item)
        return -1;
    const int row = findFrom(queue->items(), item);
    if (row >= 0)
        lastFound_ = row;
    return isRow(row) ? row : -1;
}

QueueArray::Item QueueTableModel::item(int row) const
{
    const std::shared_ptr<QueueArray> queue = queue_.lock();
    if (!queue || !isRow(row) || std::size_t(row) >= queue->count())
        return nullptr;
    return queue->items()[std::size_t(row)];
}

int QueueTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rowCount_;
}

int QueueTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString QueueTableModel::text(const QueueObject &item, int column) const
{
    switch (column) {
    case Name:
        return RowTexts::name(item.filename());
    case Folder:
        return RowTexts::folder(item.filepath(), home_);
    case Size:
        return RowTexts::size(item.filesize());
    default:
        return {};
    }
}

RowTexts::RowState QueueTableModel::state(const QueueObject &item, int row) const
{
    RowTexts::RowState state{item.status(), row == rowInWork_, pass_, passes_, {}};
    // The wiper thread writes the text until the item is finished.
    if (item.finished())
        state.error = item.errormsg();
    return state;
}

QString QueueTableModel::spoken(const QueueObject &item, int row, int column) const
{
    if (column == Status)
        return RowTexts::state(state(item, row));
    if (column != Name)
        return text(item, column);
    return RowTexts::spoken(text(item, Name), text(item, Folder), text(item, Size),
                            state(item, row));
}

QVariant QueueTableModel::data(const QModelIndex &index, int role) const
{
    const QueueArray::Item item =
        checkIndex(index, CheckIndexOption::IndexIsValid) ? this->item(index.row()) : nullptr;
    if (!item)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return text(*item, index.column());
    case Qt::AccessibleTextRole:
        return spoken(*item, index.row(), index.column());
    case TableRole::Status:
        return qlonglong(item->status());
    case TableRole::IsInWork:
        return index.row() == rowInWork_;
    case TableRole::Progress:
        return progress(*item);
    case TableRole::FileName:
        return RowTexts::name(item->filename());
    default:
        return {};
    }
}

QVariant QueueTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (section == Status && role == Qt::AccessibleTextRole)
        return tr("Status");
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Name:
        return tr("Name");
    case Folder:
        return tr("Folder");
    case Size:
        return tr("Size");
    default:
        return {};
    }
}
