#include "ui/ContentView.h"

#include "ui/ReturnKey.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int largestRevealed = 80;

} // namespace

ContentView::ContentView(QWidget *parent)
    : QWidget(parent), canvas_(new QWidget(this)), scrollBar_(new QScrollBar(Qt::Vertical, this))
{
    scrollBar_->setFocusPolicy(Qt::NoFocus);
    scrollBar_->hide();
    connect(scrollBar_, &QScrollBar::valueChanged, this, &ContentView::placeCanvas);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *, QWidget *focused) {
        if (focused != nullptr && canvas_->isAncestorOf(focused))
            reveal(focused);
    });
}

QSize ContentView::naturalSize()
{
    return {Typography::scaled(ViewRuler::naturalWidth),
            Typography::scaled(ViewRuler::naturalHeight)};
}

QSize ContentView::smallestSize()
{
    return {Typography::scaled(ViewRuler::smallestWidth),
            Typography::scaled(ViewRuler::smallestHeight)};
}

TextLabel *ContentView::addText(TextStyle style, ColorRole role, Qt::Alignment alignment)
{
    auto *label = new TextLabel(style, role, canvas_);
    label->setAlignment(alignment);
    return label;
}

void ContentView::layOutAgain()
{
    const QSize all(width(), std::max(height(), smallestSize().height()));
    const int hidden = all.height() - height();
    canvas_->resize(all);
    const int thickness = scrollBar_->sizeHint().width();
    scrollBar_->setGeometry(width() - thickness, 0, thickness, height());
    scrollBar_->setRange(0, hidden);
    scrollBar_->setPageStep(height());
    scrollBar_->setSingleStep(Typography::lineHeight(TextStyle::Body));
    scrollBar_->setVisible(hidden > 0);
    scrollBar_->raise();
    placeCanvas();
    layOut(ViewRuler(all, Typography::factor()));
}

void ContentView::placeCanvas()
{
    canvas_->move(0, -scrollBar_->value());
}

void ContentView::reveal(const QWidget *widget)
{
    const int top = widget->mapTo(canvas_, QPoint(0, 0)).y();
    const int margin = Typography::scaled(8);
    const int lowest = std::max(0, top - margin);
    // Of a table its beginning is enough: it must not push the figures above it out of the view.
    const int needed = std::min(widget->height(), Typography::scaled(largestRevealed));
    const int highest = top + needed + margin - height();
    scrollBar_->setValue(std::min(std::max(scrollBar_->value(), highest), lowest));
}

void ContentView::chainTabStops() const
{
    const std::vector<QWidget *> stops = tabStops();
    for (std::size_t index = 1; index < stops.size(); ++index)
        setTabOrder(stops[index - 1], stops[index]);
}

bool ContentView::pressDefault()
{
    QAbstractButton *button = defaultButton();
    if (button == nullptr || !button->isEnabled())
        return false;
    button->click();
    return true;
}

bool ContentView::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        layOutAgain();
    return isHandled;
}

void ContentView::resizeEvent(QResizeEvent *)
{
    layOutAgain();
}

void ContentView::keyPressEvent(QKeyEvent *event)
{
    if (!ReturnKey::isAlone(*event) || event->isAutoRepeat() || !pressDefault())
        event->ignore();
}

void ContentView::wheelEvent(QWheelEvent *event)
{
    if (!scrollBar_->isVisible()) {
        event->ignore();
        return;
    }
    const int line = QApplication::wheelScrollLines() * scrollBar_->singleStep();
    const int turned = event->angleDelta().y() * line / QWheelEvent::DefaultDeltasPerStep;
    const int distance = event->hasPixelDelta() ? event->pixelDelta().y() : turned;
    scrollBar_->setValue(scrollBar_->value() - distance);
}
