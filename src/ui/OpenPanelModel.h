#pragma once

#include "platform/FolderListing.h"

#include <QAbstractTableModel>

#include <vector>

/// The rows of the open panel: what stands in one folder, with or without what is hidden.
///
/// Thread: main
class OpenPanelModel : public QAbstractTableModel
{
    Q_OBJECT

  public:
    enum Column { Name, Size, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    void setEntries(std::vector<FolderListing::Entry> entries);
    void setShowsHidden(bool shows);

    [[nodiscard]] const FolderListing::Entry &entry(int row) const;
    /// -1 where no row has that name.
    [[nodiscard]] int rowOf(const QByteArray &name) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    void chooseRows();
    [[nodiscard]] QString text(const FolderListing::Entry &entry, int column) const;

    std::vector<FolderListing::Entry> entries_;
    std::vector<std::size_t> rows_;
    bool showsHidden_ = false;
};
