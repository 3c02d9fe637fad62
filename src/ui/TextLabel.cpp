#include "ui/TextLabel.h"

#include "ui/ToolTips.h"

#include <QEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>

TextLabel::TextLabel(TextStyle style, ColorRole role, QWidget *parent)
    : QLabel(parent), style_(style), role_(role)
{
    setTextFormat(Qt::PlainText);
}

void TextLabel::setStyle(TextStyle style)
{
    style_ = style;
    updateGeometry();
    update();
}

void TextLabel::setRole(ColorRole role)
{
    role_ = role;
    update();
}

void TextLabel::setWraps(bool wraps)
{
    wraps_ = wraps;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wraps);
    setSizePolicy(policy);
    updateGeometry();
    update();
}

QSize TextLabel::sizeHint() const
{
    const QFontMetrics metrics(Typography::font(style_));
    int width = 0;
    const QStringList given = wraps_ ? text().split(QLatin1Char('\n')) : QStringList(text());
    for (const QString &line : given)
        width = std::max(width, metrics.horizontalAdvance(line));
    return {width + 1, int(given.size()) * Typography::lineHeight(style_)};
}

QSize TextLabel::minimumSizeHint() const
{
    return {0, Typography::lineHeight(style_)};
}

int TextLabel::heightForWidth(int width) const
{
    return wraps_ ? int(lines(width).size()) * Typography::lineHeight(style_) : -1;
}

QStringList TextLabel::lines(int width) const
{
    const QFont font = Typography::font(style_);
    if (wraps_)
        return Typography::wrapped(text(), font, width);
    return {QFontMetrics(font).elidedText(text(), Qt::ElideRight, width)};
}

void TextLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setFont(Typography::font(style_));
    painter.setPen(DesignColors::color(isEnabled() ? role_ : ColorRole::TextDisabled));
    const QStringList shown = lines(width());
    const int lineHeight = Typography::lineHeight(style_);
    const int whole = int(shown.size()) * lineHeight;
    int top = wraps_ ? 0 : (height() - whole) / 2;
    for (const QString &line : shown) {
        paintLine(painter, line, top);
        top += lineHeight;
    }
}

void TextLabel::paintLine(QPainter &painter, const QString &text, int top) const
{
    const Qt::Alignment horizontal = alignment() & Qt::AlignHorizontal_Mask;
    painter.drawText(QRect(0, top, width(), Typography::lineHeight(style_)),
                     int(horizontal | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip,
                     text);
}

bool TextLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || wraps_ || !toolTip().isEmpty())
        return QLabel::event(event);
    const QFontMetrics metrics(Typography::font(style_));
    const QPoint at = static_cast<QHelpEvent *>(event)->globalPos();
    ToolTips::show(at, metrics.horizontalAdvance(text()) > width() ? text() : QString(), this);
    return true;
}
