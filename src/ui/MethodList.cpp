#include "ui/MethodList.h"

#include "ui/ControlPaint.h"
#include "ui/PassStrip.h"
#include "ui/Pictures.h"
#include "ui/Typography.h"

#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

namespace {

constexpr int cardWidth = 616;
constexpr int rowHeight = 28;
constexpr int nameX = 12;
constexpr int checkX = 224;
constexpr int checkSide = 16;
constexpr int stripX = 256;
constexpr int stripHeight = 14;
constexpr int stripMargin = 8;
constexpr int methodRole = Qt::UserRole + 1;

class RowPainter : public QStyledItemDelegate
{
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {0, Typography::scaled(rowHeight)};
    }
};

void paintName(QPainter &painter, const QRect &row, const QString &name, bool isChosen)
{
    const QRect place(row.left() + Typography::scaled(nameX), row.top(),
                      Typography::scaled(checkX - nameX), row.height());
    painter.setFont(Typography::font(isChosen ? TextStyle::BodyStrong : TextStyle::Body));
    painter.setPen(DesignColors::color(ColorRole::Text));
    painter.drawText(place, int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(name, Qt::ElideRight, place.width()));
}

void paintCheck(QPainter &painter, const QRect &row)
{
    const int side = Typography::scaled(checkSide);
    Pictures::paint(painter, QStringLiteral("symbol_check"),
                    QRectF(row.left() + Typography::scaled(checkX),
                           row.top() + (row.height() - side) / 2, side, side),
                    DesignColors::color(ColorRole::Text));
}

void RowPainter::paint(QPainter *painter, const QStyleOptionViewItem &option,
                       const QModelIndex &index) const
{
    const QRect row = option.rect;
    const auto *view = qobject_cast<const QListView *>(option.widget);
    if (view && view->currentIndex() == index)
        ControlPaint::fill(*painter, row, DesignColors::color(ColorRole::GhostHover));
    const bool isChosen = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    paintName(*painter, row, index.data().toString(), isChosen);
    if (isChosen)
        paintCheck(*painter, row);
    const int left = row.left() + Typography::scaled(stripX);
    const int height = Typography::scaled(stripHeight);
    PassStrip::paintCells(*painter,
                          QRectF(left, row.top() + (row.height() - height) / 2,
                                 row.right() + 1 - left - stripMargin, height),
                          index.data(methodRole).toLongLong());
}

} // namespace

MethodList::MethodList(QWidget *opener)
    : PopupCard(opener), model_(new QStandardItemModel(this)), view_(new QListView(this))
{
    view_->setModel(model_);
    view_->setItemDelegate(new RowPainter(view_));
    prepareList(view_);
    view_->setAccessibleName(tr("Wipe method"));
    connect(view_, &QListView::clicked, this, &MethodList::choose);
}

void MethodList::setMethods(const std::vector<WipeDescriptionObject> &methods)
{
    model_->clear();
    for (std::size_t method = 1; method < methods.size(); ++method) {
        auto *item = new QStandardItem(methods[method].name);
        item->setData(qlonglong(method), methodRole);
        item->setData(methods[method].info, Qt::AccessibleDescriptionRole);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        model_->appendRow(item);
    }
    setCurrentMethod(current_);
}

void MethodList::setCurrentMethod(std::int64_t method)
{
    current_ = method;
    for (int row = 0; row < model_->rowCount(); ++row)
        model_->item(row)->setCheckState(row + 1 == method ? Qt::Checked : Qt::Unchecked);
}

QRect MethodList::wantedRect(const QRect &opener, int rows, int chosenRow, double scale)
{
    const auto scaled = [scale](int length) { return qRound(length * scale); };
    const int row = scaled(rowHeight);
    const int top = opener.top() + (opener.height() - row) / 2 - chosenRow * row - cardPadding;
    return {opener.left() - cardPadding, top, scaled(cardWidth - 2 * cardPadding) + 2 * cardPadding,
            rows * row + 2 * cardPadding};
}

void MethodList::open()
{
    if (!opener() || model_->rowCount() == 0)
        return;
    const QRect from(opener()->mapTo(opener()->window(), QPoint()), opener()->size());
    const bool isListed = current_ >= 1 && current_ <= model_->rowCount();
    const int row = isListed ? int(current_) - 1 : 0;
    view_->setCurrentIndex(model_->index(row, 0));
    openAt(wantedRect(from, model_->rowCount(), row, Typography::factor()), view_);
}

void MethodList::cardPlaced(const QRect &card)
{
    view_->setGeometry(card.adjusted(cardPadding, cardPadding, -cardPadding, -cardPadding));
}

void MethodList::choose(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    const std::int64_t method = index.data(methodRole).toLongLong();
    close();
    Q_EMIT methodChosen(method);
}

bool MethodList::handleKey(int key)
{
    switch (key) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        choose(view_->currentIndex());
        return true;
    default:
        return false;
    }
}

bool MethodList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == view_ && event->type() == QEvent::KeyPress &&
        handleKey(static_cast<QKeyEvent *>(event)->key()))
        return true;
    return PopupCard::eventFilter(watched, event);
}
