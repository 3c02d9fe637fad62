#include "ui/MethodList.h"

#include "ui/CardRow.h"
#include "ui/DesignColors.h"
#include "ui/PassStrip.h"
#include "ui/Typography.h"

#include <QKeyEvent>
#include <QListView>
#include <QStandardItemModel>

namespace {

constexpr int cardWidth = 616;
constexpr int nameX = 12;
constexpr int checkX = 224;
constexpr int stripX = 256;
constexpr int stripHeight = 14;
constexpr int stripMargin = 8;
constexpr int methodRole = Qt::UserRole + 1;

class MethodRow : public CardRow
{
  public:
    using CardRow::CardRow;

  protected:
    void paintContents(QPainter &painter, const QRect &row,
                       const QModelIndex &index) const override;
};

void MethodRow::paintContents(QPainter &painter, const QRect &row, const QModelIndex &index) const
{
    const auto at = [&row](int x) { return row.left() + Typography::scaled(x); };
    const bool isChosen = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    paintText(painter,
              QRect(at(nameX), row.top(), Typography::scaled(checkX - nameX), row.height()),
              index.data().toString(), isChosen);
    if (isChosen)
        paintSymbol(painter, QStringLiteral("symbol_check"), row, at(checkX),
                    DesignColors::color(ColorRole::Text));
    const int height = Typography::scaled(stripHeight);
    PassStrip::paintCells(painter,
                          QRectF(at(stripX), row.top() + (row.height() - height) / 2,
                                 row.right() + 1 - at(stripX) - stripMargin, height),
                          index.data(methodRole).toLongLong());
}

} // namespace

MethodList::MethodList(QWidget *opener)
    : PopupCard(opener), model_(new QStandardItemModel(this)), view_(new QListView(this))
{
    view_->setModel(model_);
    view_->setItemDelegate(new MethodRow(view_));
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
    const int row = scaled(CardRow::rowHeight);
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
