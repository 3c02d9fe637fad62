#include "ui/PathField.h"

#include "ui/ControlPaint.h"
#include "ui/FocusRing.h"
#include "ui/Typography.h"

#include <QPainter>

namespace {

/// A line edit keeps two more by itself.
constexpr int textMargin = 8;
/// Lifts the text to the height of the buttons' beside it.
constexpr int textLift = 2;

} // namespace

PathField::PathField(QWidget *parent) : QLineEdit(parent)
{
    setFrame(false);
    // Files that are let go over it are the window's, not a text.
    setAcceptDrops(false);
    setTextMargins(textMargin, 0, textMargin, textLift);
    setFont(Typography::font(TextStyle::Body));
    QPalette clear;
    clear.setBrush(QPalette::Base, Qt::transparent);
    setPalette(clear);
    FocusRing::setRadius(this, ControlPaint::radius);
}

QSize PathField::sizeHint() const
{
    return {Typography::scaled(368), Typography::scaled(28)};
}

/// A larger font makes the field higher; it is told of nothing else, having a font of its own.
void PathField::resizeEvent(QResizeEvent *event)
{
    setFont(Typography::font(TextStyle::Body));
    QLineEdit::resizeEvent(event);
}

void PathField::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        const QColor ground = isEnabled() ? DesignColors::color(ColorRole::Surface) : QColor();
        ControlPaint::box(painter, rect(), ground, DesignColors::color(ColorRole::EdgeField));
    }
    QLineEdit::paintEvent(event);
}
