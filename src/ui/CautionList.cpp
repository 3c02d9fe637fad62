#include "ui/CautionList.h"

#include "ui/ControlPaint.h"
#include "ui/Pictures.h"
#include "ui/Typography.h"

#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QStringListModel>
#include <QStyledItemDelegate>

namespace {

constexpr int rowHeight = 28;
constexpr int iconX = 6;
constexpr int iconSide = 16;
constexpr int textX = 34;

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

void RowPainter::paint(QPainter *painter, const QStyleOptionViewItem &option,
                       const QModelIndex &index) const
{
    const QRect row = option.rect;
    const auto *view = qobject_cast<const QListView *>(option.widget);
    if (view && view->currentIndex() == index)
        ControlPaint::fill(*painter, row, DesignColors::color(ColorRole::GhostHover));
    const int side = Typography::scaled(iconSide);
    Pictures::paint(*painter, QStringLiteral("symbol_caution"),
                    QRectF(row.left() + iconX, row.top() + (row.height() - side) / 2, side, side),
                    DesignColors::color(ColorRole::WarnIcon));
    const QRect place = row.adjusted(iconX + Typography::scaled(textX - iconX), 0, -iconX, 0);
    painter->setFont(Typography::font(TextStyle::Body));
    painter->setPen(DesignColors::color(ColorRole::Text));
    painter->drawText(
        place, int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
        painter->fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, place.width()));
}

} // namespace

CautionList::CautionList(QWidget *opener)
    : PopupCard(opener), model_(new QStringListModel(this)), view_(new QListView(this))
{
    view_->setModel(model_);
    view_->setItemDelegate(new RowPainter(view_));
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
    const int row = qRound(rowHeight * scale);
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
