#include "ui/CautionList.h"

#include "ui/CardRow.h"
#include "ui/DesignColors.h"
#include "ui/Typography.h"

#include <QKeyEvent>
#include <QListView>
#include <QStringListModel>

namespace {

constexpr int iconX = 6;
constexpr int textX = 34;

class CautionRow : public CardRow
{
  public:
    using CardRow::CardRow;

  protected:
    void paintContents(QPainter &painter, const QRect &row, const QModelIndex &index) const override
    {
        paintSymbol(painter, QStringLiteral("symbol_caution"), row, row.left() + iconX,
                    DesignColors::color(ColorRole::WarnIcon));
        paintText(painter, row.adjusted(iconX + Typography::scaled(textX - iconX), 0, -iconX, 0),
                  index.data().toString(), false);
    }
};

} // namespace

CautionList::CautionList(QWidget *opener)
    : PopupCard(opener), model_(new QStringListModel(this)), view_(new QListView(this))
{
    view_->setModel(model_);
    view_->setItemDelegate(new CautionRow(view_));
    prepareList(view_);
    view_->setAccessibleName(tr("Cautions"));
    connect(view_, &QListView::clicked, this, &CautionList::close);
}

void CautionList::setCautions(const QStringList &cautions)
{
    model_->setStringList(cautions);
}

QRect CautionList::wantedRect(const QRect &band, int rows, double scale)
{
    const int row = qRound(CardRow::rowHeight * scale);
    const int top = band.top() + (band.height() - row) / 2 - cardPadding;
    return {band.left(), top, band.width(), rows * row + 2 * cardPadding};
}

void CautionList::open()
{
    if (!opener() || model_->rowCount() == 0)
        return;
    const QWidget *band = opener()->parentWidget();
    const QRect from(band->mapTo(opener()->window(), QPoint()), band->size());
    view_->setCurrentIndex(model_->index(0, 0));
    openAt(wantedRect(from, model_->rowCount(), Typography::factor()), view_);
}

void CautionList::cardPlaced(const QRect &card)
{
    view_->setGeometry(card.adjusted(cardPadding, cardPadding, -cardPadding, -cardPadding));
}

bool CautionList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != view_ || event->type() != QEvent::KeyPress)
        return PopupCard::eventFilter(watched, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        close();
        return true;
    default:
        return false;
    }
}
