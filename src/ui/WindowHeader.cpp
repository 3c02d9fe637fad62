#include "ui/WindowHeader.h"

#include "ui/DesignColors.h"
#include "ui/HeaderButton.h"
#include "ui/Typography.h"
#include "ui/VTLLine.h"
#include "ui/WindowDrag.h"
#include "ui/WindowGeometry.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int largestTitle = 16;
constexpr int buttonTop = 4;
constexpr int buttonHeight = 28;
constexpr int buttonWidth = 28;

} // namespace

HeaderTitle::HeaderTitle(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void HeaderTitle::paintEvent(QPaintEvent *)
{
    QFont font = Typography::font(TextStyle::BodyStrong);
    font.setPixelSize(std::min(font.pixelSize(), largestTitle));
    QPainter painter(this);
    painter.setFont(font);
    painter.setPen(
        DesignColors::color(isActiveWindow() ? ColorRole::Text : ColorRole::TextSecondary));
    painter.drawText(rect(), int(Qt::AlignCenter) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text(), Qt::ElideRight, width()));
}

WindowHeader::WindowHeader(QWidget *parent)
    : QWidget(parent), title_(new HeaderTitle(this)),
      minimise_(new HeaderButton(QStringLiteral("symbol_minimise"), tr("Minimise"), this)),
      close_(new HeaderButton(QStringLiteral("symbol_close"), tr("Close window"), this)),
      separator_(new VTLLine(QStringLiteral("DefaultLine"), this))
{
    minimise_->setToolTip(tr("Minimise (Ctrl+M)"));
    close_->setToolTip(tr("Close window (Ctrl+W)"));
    setFixedHeight(WindowGeometry::headerHeight);
}

void WindowHeader::performWindowDrag()
{
    WindowDrag::begin(*this);
}

void WindowHeader::placeButton(QWidget *button, int x, int width) const
{
    button->setGeometry(x < 0 ? this->width() + x : x, buttonTop, width, buttonHeight);
}

void WindowHeader::layOut()
{
    placeButton(minimise_, -72, buttonWidth);
    placeButton(close_, -36, buttonWidth);
    const int margin = titleMargin();
    title_->setGeometry(margin, 0, std::max(width() - 2 * margin, 0), height() - 1);
    separator_->setGeometry(0, height() - 1, width(), 1);
}

void WindowHeader::resizeEvent(QResizeEvent *)
{
    layOut();
}

void WindowHeader::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        pressedAt_ = event->position().toPoint();
}

void WindowHeader::mouseMoveEvent(QMouseEvent *event)
{
    const auto moved = [&] { return event->position().toPoint() - *pressedAt_; };
    if (!pressedAt_ || moved().manhattanLength() < QApplication::startDragDistance())
        return;
    pressedAt_.reset();
    performWindowDrag();
}

void WindowHeader::mouseReleaseEvent(QMouseEvent *)
{
    pressedAt_.reset();
}

void WindowHeader::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange)
        title_->update();
    QWidget::changeEvent(event);
}
