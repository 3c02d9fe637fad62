#include "ui/CautionBand.h"

#include "ui/CautionList.h"
#include "ui/ControlPaint.h"
#include "ui/LinkButton.h"
#include "ui/Pictures.h"
#include "ui/ToolTips.h"
#include "ui/Typography.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr int iconSide = 16;
constexpr int textFromIcon = 28;

} // namespace

CautionBand::CautionBand(QWidget *parent)
    : QWidget(parent), moreLink_(new LinkButton(QString(), this))
{
    moreLink_->setLook(TextStyle::BodyStrong, ColorRole::Warn);
    moreLink_->setAlwaysUnderlined(true);
    moreLink_->hide();
    connect(moreLink_, &QAbstractButton::clicked, this, &CautionBand::openList);
}

void CautionBand::setCautions(const CautionTexts &cautions)
{
    if (cautions == cautions_)
        return;
    const CautionTexts before = std::exchange(cautions_, cautions);
    const qsizetype more = qsizetype(cautions_.size()) - 1;
    moreLink_->setText(more > 0 ? tr("%1 more").arg(more) : QString());
    moreLink_->setVisible(more > 0);
    setAccessibleName(gravest());
    setAccessibleDescription(this->cautions().mid(1).join(QLatin1Char('\n')));
    if (list_) {
        list_->close();
        list_->setCautions(this->cautions());
    }
    placeLink();
    update();
    tell(before);
}

QStringList CautionBand::cautions() const
{
    QStringList texts;
    for (const Caution &caution : cautions_)
        texts.append(caution.text);
    return texts;
}

QString CautionBand::gravest() const
{
    return cautions_.empty() ? QString() : cautions_.front().text;
}

/// One alert for all that are new: name and description of the band say them.
void CautionBand::tell(const CautionTexts &before)
{
    QStringList told;
    for (const Caution &caution : cautions_) {
        const auto isSameKind = [&caution](const Caution &other) {
            return other.kind == caution.kind;
        };
        if (std::none_of(before.begin(), before.end(), isSameKind))
            told.append(caution.text);
    }
    if (told.isEmpty())
        return;
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
    for (const QString &text : told)
        Q_EMIT cautionAppeared(text);
}

void CautionBand::setMargin(int margin)
{
    margin_ = margin;
    placeLink();
    update();
}

void CautionBand::setReservedWidth(int width)
{
    reservedWidth_ = width;
    placeLink();
    update();
}

QSize CautionBand::sizeHint() const
{
    return {Typography::scaled(656), Typography::scaled(32)};
}

void CautionBand::placeLink()
{
    const QSize size = moreLink_->sizeHint();
    moreLink_->setGeometry(width() - reservedWidth_ - margin_ - size.width() + 1,
                           (height() - size.height()) / 2, size.width(), size.height());
}

void CautionBand::resizeEvent(QResizeEvent *)
{
    placeLink();
}

QRect CautionBand::textRect() const
{
    const int left = margin_ + Typography::scaled(textFromIcon);
    const int right =
        moreLink_->isHidden() ? width() - reservedWidth_ - margin_ : moreLink_->x() - margin_;
    return {left, 0, right - left, height()};
}

QString CautionBand::shownText() const
{
    const QFontMetrics metrics(Typography::font(TextStyle::Body));
    return metrics.elidedText(gravest(), Qt::ElideRight, textRect().width());
}

void CautionBand::paintEvent(QPaintEvent *)
{
    if (cautions_.empty())
        return;
    QPainter painter(this);
    ControlPaint::box(painter, rect(), DesignColors::color(ColorRole::WarnBackground),
                      DesignColors::color(ColorRole::WarnEdge));
    const int side = Typography::scaled(iconSide);
    Pictures::paint(painter, QStringLiteral("symbol_caution"),
                    QRectF(margin_, (height() - side) / 2, side, side),
                    DesignColors::color(ColorRole::WarnIcon));
    painter.setFont(Typography::font(TextStyle::Body));
    painter.setPen(DesignColors::color(ColorRole::Warn));
    painter.drawText(textRect(), int(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                     shownText());
}

bool CautionBand::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const bool isElided = shownText() != gravest();
    ToolTips::show(static_cast<QHelpEvent *>(event)->globalPos(), isElided ? gravest() : QString(),
                   this);
    return true;
}

void CautionBand::openList()
{
    if (!list_) {
        list_ = new CautionList(moreLink_);
        connect(list_, &QObject::destroyed, this, [this] { list_ = nullptr; });
    }
    list_->setCautions(cautions());
    list_->open();
}
