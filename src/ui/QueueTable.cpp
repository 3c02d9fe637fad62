#include "ui/QueueTable.h"

#include "ui/DesignColors.h"
#include "ui/FocusRing.h"
#include "ui/IconStore.h"
#include "ui/RowTexts.h"
#include "ui/TableCard.h"
#include "ui/TableHead.h"
#include "ui/ToolTips.h"
#include "ui/Typography.h"

#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <chrono>

namespace {

constexpr double designRowHeight = 28;
constexpr int emptyLineGap = 2;
constexpr int edgeThickness = 1;
constexpr qint64 userScrollHolds = 5000;

qint64 steadyMilliseconds()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

QueueTable::QueueTable(Kind kind, QWidget *parent)
    : QTableView(parent), kind_(kind), painter_(kind, IconStore::shared()),
      head_(new TableHead(kind, this)), shownBar_(new QScrollBar(Qt::Vertical, this)),
      clock_(steadyMilliseconds)
{
    setFrameStyle(QFrame::NoFrame);
    setHorizontalHeader(head_);
    verticalHeader()->hide();
    setShowGrid(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    // The bar that is seen lies over the rows.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    viewport()->setMouseTracking(true);
    FocusRing::setInside(this);
    FocusRing::setRadius(this, TableCard::radius);
    setAccessibleName(kind == Kind::ErrorLog ? tr("Errors") : tr("Files to erase"));
    takeScale();
    linkScrollBar();
}

QueueTable::~QueueTable() = default;

void QueueTable::setImageSource(const ImageSource &images)
{
    painter_.setImageSource(images);
    viewport()->update();
}

void QueueTable::setModel(QAbstractItemModel *model)
{
    QTableView::setModel(model);
    layOutColumns();
    describe();
}

void QueueTable::setEmptyText(const QString &title, const QString &sentence)
{
    emptyTitle_ = title;
    emptySentence_ = sentence;
    describe();
    viewport()->update();
}

/// Who does not see the empty table hears what it says.
void QueueTable::describe()
{
    const bool isEmpty = rowCount() == 0 && !emptyTitle_.isEmpty();
    setAccessibleDescription(isEmpty ? emptyTitle_ + QLatin1Char(' ') + emptySentence_ : QString());
}

void QueueTable::takeScale()
{
    // Rows of one fixed height: a million of them are laid out without a look at each.
    QHeaderView *rows = verticalHeader();
    rows->setMinimumSectionSize(1);
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(Typography::scaled(designRowHeight));
    layOutColumns();
}

void QueueTable::layOutColumns()
{
    head_->layOut(width());
}

void QueueTable::linkScrollBar()
{
    QScrollBar *own = verticalScrollBar();
    shownBar_->setFocusPolicy(Qt::NoFocus);
    connect(own, &QScrollBar::valueChanged, shownBar_, &QScrollBar::setValue);
    connect(own, &QScrollBar::rangeChanged, this, &QueueTable::placeScrollBar);
    connect(shownBar_, &QScrollBar::valueChanged, own, &QScrollBar::setValue);
    connect(own, &QScrollBar::actionTriggered, this, &QueueTable::noteUserScroll);
    connect(shownBar_, &QScrollBar::actionTriggered, this, &QueueTable::noteUserScroll);
}

void QueueTable::placeScrollBar()
{
    const QScrollBar *own = verticalScrollBar();
    const int thickness = shownBar_->sizeHint().width();
    const int top = head_->height();
    shownBar_->setRange(own->minimum(), own->maximum());
    shownBar_->setPageStep(own->pageStep());
    shownBar_->setSingleStep(own->singleStep());
    shownBar_->setValue(own->value());
    shownBar_->setGeometry(width() - edgeThickness - thickness, top, thickness,
                           height() - top - edgeThickness);
    shownBar_->setVisible(own->maximum() > own->minimum());
    shownBar_->raise();
}

void QueueTable::updateGeometries()
{
    QTableView::updateGeometries();
    placeScrollBar();
}

void QueueTable::noteUserScroll()
{
    userScrolledAt_ = clock_();
}

bool QueueTable::isUserScrolling() const
{
    return shownBar_->isSliderDown() ||
           (userScrolledAt_ && clock_() - *userScrolledAt_ < userScrollHolds);
}

void QueueTable::keepRowInView(int row)
{
    if (row < 0 || isUserScrolling())
        return;
    QScrollBar *bar = verticalScrollBar();
    bar->setValue(TableLayout::scrollValueForRow(row, verticalHeader()->defaultSectionSize(),
                                                 bar->maximum()));
}

QString QueueTable::rowIdentifier() const
{
    switch (kind_) {
    case Kind::Ready:
        return QStringLiteral("RowViewWithMouseHover+Border");
    case Kind::Erasing:
        return QStringLiteral("RowViewWithBorder");
    case Kind::ErrorLog:
        return QStringLiteral("RowViewWithMouseHover");
    }
    return {};
}

RowViewStore::View QueueTable::rowViewForRow(int)
{
    RowViewStore::View view = rowViews_.reuse(rowIdentifier());
    if (!view) {
        view = std::make_unique<DefaultTableRowView>();
        view->setIdentifier(rowIdentifier());
    }
    return view;
}

DefaultTableRowView &QueueTable::rowView(int row)
{
    DefaultTableRowView *shown = rowViews_.shown(row);
    if (!shown) {
        shown = &rowViews_.show(row, rowViewForRow(row));
        // Clear, so that the card and the progress below it are seen.
        shown->updateBackgroundColorWithColor(QColor(Qt::transparent));
        shown->setRedisplay([this, row] { viewport()->update(rowRect(row)); });
    }
    shown->setFrame(rowRect(row));
    shown->setSelected(selectionOf(row) != RowPainter::Selection::None);
    shown->setEmphasized(isEmphasized());
    return *shown;
}

QRect QueueTable::rowRect(int row) const
{
    return {0, rowViewportPosition(row), viewport()->width(), rowHeight(row)};
}

int QueueTable::rowAt(int y) const
{
    return QTableView::rowAt(y);
}

QueueTable::Rows QueueTable::rowsIn(const QRect &rect) const
{
    const QRect seen = rect & viewport()->rect();
    const int first = rowAt(seen.top());
    if (seen.isEmpty() || first < 0)
        return {};
    const int last = rowAt(seen.bottom());
    return {first, last < 0 ? rowCount() - 1 : last};
}

bool QueueTable::isEmphasized() const
{
    return hasFocus(); // which no widget has outside of the active window
}

RowPainter::Selection QueueTable::selectionOf(int row) const
{
    if (!selectionModel() || !selectionModel()->isRowSelected(row))
        return RowPainter::Selection::None;
    return isEmphasized() ? RowPainter::Selection::Active : RowPainter::Selection::Inactive;
}

void QueueTable::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QPointF card(-viewport()->pos());
    painter.translate(card);
    TableCard::clip(painter, size());
    painter.translate(-card);
    painter.fillRect(event->rect(), DesignColors::color(ColorRole::Surface));

    const Rows shown = rowsIn(viewport()->rect());
    rowViews_.keepShown(shown.first, shown.last);
    const Rows dirty = rowsIn(event->rect());
    for (int row = dirty.first; row >= 0 && row <= dirty.last; ++row)
        paintRow(painter, row);
    if (rowCount() == 0)
        paintEmptyText(painter);

    painter.setClipping(false);
    painter.translate(card);
    TableCard::paintEdge(painter, size());
}

void QueueTable::paintRow(QPainter &painter, int row)
{
    const QModelIndex index = rowIndex(row);
    const QRect rect = rowRect(row);
    const RowPainter::Selection selection = selectionOf(row);
    painter_.paintGround(painter, index, rect);
    rowView(row).paint(painter);
    if (selection != RowPainter::Selection::None)
        painter_.paintProgress(painter, index, rect); // the selection has covered it
    painter_.paintContents(painter, index, rect, selection);
}

void QueueTable::paintEmptyText(QPainter &painter) const
{
    const int line = Typography::lineHeight(TextStyle::Body);
    const int pitch = line + emptyLineGap;
    const int top = viewport()->height() / 2 - pitch;
    const auto paintLine = [&](const QString &text, int y, ColorRole role) {
        painter.setPen(DesignColors::color(role));
        painter.drawText(QRect(0, y, viewport()->width(), line),
                         int(Qt::AlignCenter) | Qt::TextSingleLine, text);
    };
    painter.setFont(Typography::font(TextStyle::Body));
    paintLine(emptyTitle_, top, ColorRole::Text);
    paintLine(emptySentence_, top + pitch, ColorRole::TextSecondary);
}

void QueueTable::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                             const QList<int> &)
{
    // Qt's own would repaint everything for a row of several cells.
    const Rows shown = rowsIn(viewport()->rect());
    const int first = std::max(topLeft.row(), shown.first);
    const int last = std::min(bottomRight.row(), shown.last);
    for (int row = first; row >= 0 && row <= last; ++row)
        viewport()->update(rowRect(row));
}

void QueueTable::rowsInserted(const QModelIndex &parent, int start, int end)
{
    QTableView::rowsInserted(parent, start, end);
    describe();
    viewport()->update();
}

void QueueTable::reset()
{
    rowViews_.hideAll();
    hoveredRow_ = -1;
    clickedRow_ = -1;
    QTableView::reset();
    describe();
}

void QueueTable::hover(int row)
{
    if (row == hoveredRow_)
        return;
    DefaultTableRowView *left = rowViews_.shown(hoveredRow_);
    DefaultTableRowView *entered = rowViews_.shown(row);
    hoveredRow_ = row;
    if (left && left->isTracking())
        left->mouseExited();
    if (entered && entered->isTracking())
        entered->mouseEntered();
}

void QueueTable::forgetHover()
{
    rowViews_.forEachShown([](DefaultTableRowView &view) { view.updateTrackingAreas(); });
    hoveredRow_ = -1;
}

void QueueTable::mouseMoveEvent(QMouseEvent *event)
{
    hover(rowAt(event->position().toPoint().y()));
    QTableView::mouseMoveEvent(event);
}

void QueueTable::mousePressEvent(QMouseEvent *event)
{
    clickedRow_ = rowAt(event->position().toPoint().y());
    QTableView::mousePressEvent(event);
}

bool QueueTable::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::Leave)
        hover(-1);
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        return showToolTip(help->pos(), help->globalPos());
    }
    return QTableView::viewportEvent(event);
}

bool QueueTable::showToolTip(const QPoint &at, const QPoint &globalAt)
{
    const QModelIndex row = indexAt(at);
    const QString text =
        row.isValid() ? painter_.elidedText(row, at.x(), viewport()->width()) : QString();
    ToolTips::show(globalAt, text.isEmpty() ? text : RowTexts::isolated(text), viewport());
    return true;
}

void QueueTable::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    layOutColumns();
    placeScrollBar();
    forgetHover();
    head_->viewport()->update();
    viewport()->update();
}

void QueueTable::scrollContentsBy(int, int)
{
    // The horizontal place never changes, and rows are not moved as pixels: their card stays.
    forgetHover();
    verticalHeader()->setOffset(verticalScrollBar()->value());
    viewport()->update();
}

void QueueTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        takeScale();
    viewport()->update();
}

void QueueTable::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    viewport()->update();
}

void QueueTable::focusOutEvent(QFocusEvent *event)
{
    QTableView::focusOutEvent(event);
    viewport()->update();
}

void QueueTable::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return;
    }
    const int before = verticalScrollBar()->value();
    QTableView::keyPressEvent(event);
    if (verticalScrollBar()->value() != before)
        noteUserScroll();
}

QModelIndex QueueTable::rowIndex(int row) const
{
    return model() ? model()->index(row, nameColumn()) : QModelIndex();
}

QModelIndex QueueTable::indexAt(const QPoint &point) const
{
    const int row = rowAt(point.y());
    return row < 0 ? QModelIndex() : rowIndex(row);
}

QModelIndex QueueTable::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    if (rowCount() == 0)
        return {};
    const int row = currentIndex().row();
    const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize());
    const auto target = [&] {
        switch (action) {
        case MoveUp:
        case MovePrevious:
            return row - 1;
        case MoveDown:
        case MoveNext:
            return row + 1;
        case MovePageUp:
            return row - page;
        case MovePageDown:
            return row + page;
        case MoveHome:
            return 0;
        case MoveEnd:
            return rowCount() - 1;
        default:
            return row;
        }
    };
    return rowIndex(std::clamp(target(), 0, rowCount() - 1));
}

void QueueTable::keyboardSearch(const QString &)
{
    // A million names are not gone through while the window waits.
}

QList<int> QueueTable::selectedOrClickedRows() const
{
    QList<int> rows;
    if (selectionModel()) {
        for (const QModelIndex &index : selectionModel()->selectedRows())
            rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    if (rows.isEmpty() && clickedRow_ >= 0 && clickedRow_ < rowCount())
        rows.append(clickedRow_);
    return rows;
}

QString QueueTable::selectedText() const
{
    QStringList lines;
    if (!selectionModel() || !selectionModel()->hasSelection())
        return {};
    for (const int row : selectedOrClickedRows()) {
        QStringList cells;
        for (int column = nameColumn(); column < model()->columnCount(); ++column)
            cells.append(model()->index(row, column).data().toString());
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}

void QueueTable::copy() const
{
    const QString text = selectedText();
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}
