#include "ui/OpenPanelModel.h"

#include "support/BytesFormatter.h"
#include "ui/IconStore.h"
#include "ui/RowTexts.h"

#include <QIcon>

namespace {

QIcon folderIcon()
{
    return QIcon::fromTheme(
        QStringLiteral("folder"),
        IconStore::shared().imageNamed(QStringLiteral("folder")).value<QIcon>());
}

QVariant iconOf(const FolderListing::Entry &entry)
{
    if (entry.isFolder)
        return folderIcon();
    const auto dot = entry.name.lastIndexOf('.');
    const QByteArray extension = dot > 0 ? entry.name.mid(dot + 1).toLower() : QByteArray();
    return IconStore::shared().iconForExtension(QString::fromUtf8(extension));
}

} // namespace

void OpenPanelModel::setEntries(std::vector<FolderListing::Entry> entries)
{
    beginResetModel();
    entries_ = std::move(entries);
    chooseRows();
    endResetModel();
}

void OpenPanelModel::setShowsHidden(bool shows)
{
    beginResetModel();
    showsHidden_ = shows;
    chooseRows();
    endResetModel();
}

void OpenPanelModel::chooseRows()
{
    rows_.clear();
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (showsHidden_ || !entries_[i].isHidden())
            rows_.push_back(i);
    }
}

const FolderListing::Entry &OpenPanelModel::entry(int row) const
{
    return entries_[rows_[std::size_t(row)]];
}

int OpenPanelModel::rowOf(const QByteArray &name) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (entry(row).name == name)
            return row;
    }
    return -1;
}

int OpenPanelModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(rows_.size());
}

int OpenPanelModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString OpenPanelModel::text(const FolderListing::Entry &entry, int column) const
{
    if (column == Name)
        return RowTexts::name(entry.name);
    return entry.kind == FileKind::Regular ? BytesFormatter::formatBytes(double(entry.size))
                                           : QString();
}

QVariant OpenPanelModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const FolderListing::Entry &shown = entry(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return RowTexts::isolated(text(shown, index.column()));
    case Qt::DecorationRole:
        return index.column() == Name ? iconOf(shown) : QVariant();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (index.column() == Size ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::AccessibleTextRole:
        return shown.isFolder && index.column() == Name ? tr("%1, folder").arg(text(shown, Name))
                                                        : text(shown, index.column());
    default:
        return {};
    }
}

QVariant OpenPanelModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return section == Name ? tr("Name") : tr("Size");
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (section == Size ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}
