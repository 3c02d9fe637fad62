#pragma once

#include <QAbstractTableModel>
#include <QByteArray>
#include <QString>

#include <vector>

/// What could not be erased, as the error log tells it.
struct ErrorLogRow
{
    QByteArray filename;
    QByteArray filepath; ///< of its folder
    QString error;
    /// A file of the run; not a folder, nor what was refused or came to light only at the end.
    bool isFile = true;
};

/// What could not be erased, as the rows of the error log: the list behind its table.
///
/// Thread: main
/// Owns:   the rows
class ErrorLogModel : public QAbstractTableModel
{
    Q_OBJECT

  public:
    enum Column { File, Folder, Error, ColumnCount };

    /// The user's home is shown as "~".
    explicit ErrorLogModel(QObject *parent = nullptr);
    ErrorLogModel(QByteArray home, QObject *parent);

    void add(ErrorLogRow row);
    void removeAll();
    [[nodiscard]] int count() const { return int(rows_.size()); }
    /// No row tells of anything else.
    [[nodiscard]] bool hasOnlyFiles() const { return others_ == 0; }
    [[nodiscard]] const ErrorLogRow &row(int row) const { return rows_[std::size_t(row)]; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

  private:
    [[nodiscard]] QString text(const ErrorLogRow &row, int column) const;

    QByteArray home_;
    std::vector<ErrorLogRow> rows_;
    int others_ = 0; ///< rows that are no files
};
