#include "support/view/ErrorLogModel.h"

#include "ui/RowTexts.h"
#include "ui/TableRole.h"

#include <QDir>
#include <QFile>

ErrorLogModel::ErrorLogModel(QObject *parent)
    : ErrorLogModel(QFile::encodeName(QDir::homePath()), parent)
{
}

ErrorLogModel::ErrorLogModel(QByteArray home, QObject *parent)
    : QAbstractTableModel(parent), home_(std::move(home))
{
}

void ErrorLogModel::add(ErrorLogRow row)
{
    beginInsertRows({}, count(), count());
    others_ += row.isFile ? 0 : 1;
    rows_.push_back(std::move(row));
    endInsertRows();
}

void ErrorLogModel::removeAll()
{
    beginResetModel();
    rows_.clear();
    others_ = 0;
    endResetModel();
}

int ErrorLogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

int ErrorLogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString ErrorLogModel::text(const ErrorLogRow &row, int column) const
{
    switch (column) {
    case File:
        return RowTexts::name(row.filename);
    case Folder:
        return RowTexts::folder(row.filepath, home_);
    case Error:
        return row.error;
    default:
        return {};
    }
}

QVariant ErrorLogModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ErrorLogRow &asked = row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return text(asked, index.column());
    case Qt::AccessibleTextRole:
        if (index.column() == File)
            return RowTexts::spokenFailure(text(asked, File), text(asked, Folder), asked.error);
        return text(asked, index.column());
    case TableRole::FileName:
        return RowTexts::name(asked.filename);
    default:
        return {};
    }
}

QVariant ErrorLogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case File:
        return tr("File");
    case Folder:
        return tr("Folder");
    case Error:
        return tr("Error");
    default:
        return {};
    }
}
