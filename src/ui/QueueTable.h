#pragma once

#include "ui/RowPainter.h"
#include "ui/RowViewStore.h"
#include "ui/TableLayout.h"

#include <QTableView>

#include <functional>
#include <optional>

class ImageSource;
class QScrollBar;
class TableHead;

/// A table of the window on a card of its own: the queue before and during a run, and the failed
/// files. Qt's view gives selection, keys and accessibility; all that is seen is drawn here, for
/// the visible rows only, each on the ground of a DefaultTableRowView.
///
/// The model tells the row's icons and state by TableRole, and the row's words by the accessible
/// text of its name.
///
/// Thread:       main
/// Owns:         the row views of what is visible
/// Holds weakly: model and image source
class QueueTable : public QTableView
{
    Q_OBJECT

  public:
    using Kind = TableKind;
    /// Milliseconds from any beginning, never backwards.
    using Clock = std::function<qint64()>;

    explicit QueueTable(Kind kind, QWidget *parent = nullptr);
    ~QueueTable() override;

    [[nodiscard]] Kind kind() const { return kind_; }
    void setImageSource(const ImageSource &images);
    void setModel(QAbstractItemModel *model) override;

    /// Shown in the middle while there is no row.
    void setEmptyText(const QString &title, const QString &sentence);

    /// Scrolls so that the row is the fifth visible one, unless the user has scrolled within the
    /// last five seconds.
    void keepRowInView(int row);
    void setClock(Clock clock) { clock_ = std::move(clock); }

    /// The view for a row that has none: one used before, if one waits under the kind's identifier,
    /// else a new one with an empty frame.
    virtual RowViewStore::View rowViewForRow(int row);
    [[nodiscard]] QString rowIdentifier() const;
    [[nodiscard]] const RowViewStore &rowViews() const { return rowViews_; }

    /// Where the row is in the viewport.
    [[nodiscard]] QRect rowRect(int row) const;
    /// The visible rows that reach into this part of the viewport; -1 where there is none.
    struct Rows
    {
        int first = -1;
        int last = -1;
    };
    [[nodiscard]] Rows rowsIn(const QRect &rect) const;
    /// The rows that are selected, ascending; where none is, the one that was clicked last.
    [[nodiscard]] QList<int> selectedOrClickedRows() const;
    /// The texts of the selected rows, one a line, with tabs between the columns.
    [[nodiscard]] QString selectedText() const;

    /// The row's name cell, which speaks for the row; so does what is clicked in it.
    [[nodiscard]] QModelIndex rowIndex(int row) const;
    [[nodiscard]] QModelIndex indexAt(const QPoint &point) const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

    void keyboardSearch(const QString &search) override;

  public Q_SLOTS:
    void reset() override;
    /// selectedText() to the clipboard.
    void copy() const;

  protected:
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

  protected Q_SLOTS:
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles = {}) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void updateGeometries() override;

  private:
    void takeScale();
    void layOutColumns();
    void linkScrollBar();
    void placeScrollBar();
    void noteUserScroll();
    [[nodiscard]] bool isUserScrolling() const;
    void describe();

    [[nodiscard]] int rowCount() const { return model() ? model()->rowCount() : 0; }
    [[nodiscard]] int nameColumn() const { return kind_ == Kind::ErrorLog ? 0 : 1; }
    [[nodiscard]] int rowAt(int y) const;
    [[nodiscard]] RowPainter::Selection selectionOf(int row) const;
    [[nodiscard]] bool isEmphasized() const;

    DefaultTableRowView &rowView(int row);
    void paintRow(QPainter &painter, int row);
    void paintEmptyText(QPainter &painter) const;
    void hover(int row);
    void forgetHover();
    bool showToolTip(const QPoint &at, const QPoint &globalAt);

    Kind kind_;
    RowPainter painter_;
    RowViewStore rowViews_;
    TableHead *head_;
    QScrollBar *shownBar_;
    QString emptyTitle_;
    QString emptySentence_;
    Clock clock_;
    std::optional<qint64> userScrolledAt_;
    int hoveredRow_ = -1;
    int clickedRow_ = -1;
};
