#include "ui/DialogButton.h"

#include "ui/ControlPaint.h"
#include "ui/Typography.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int insetAtSides = 3;
constexpr int insetAboveAndBelow = 2;
constexpr int titleInset = 12;
constexpr int frameHeight = 32;

ThreePartImage blue(const QString &image)
{
    return ThreePartImage::makeThreepartImage(image, 4, 57, 4);
}

} // namespace

DialogButton::DialogButton(const QString &title, int tag, QWidget *parent)
    : PlainButton(title, parent), tag_(tag), image_(blue(QStringLiteral("btn_blue"))),
      pressedImage_(blue(QStringLiteral("btn_blue_hi")))
{
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(title);
    // An ampersand in a title is no key.
    setShortcut({});
}

void DialogButton::setFrame(const QRect &frame)
{
    frame_ = frame;
    const int sides = Typography::scaled(insetAtSides);
    const int ends = Typography::scaled(insetAboveAndBelow);
    const QRect body = frame.adjusted(sides, ends, -sides, -ends);
    setGeometry(QRect(body.topLeft(), body.size().expandedTo({0, 0})));
}

QSize DialogButton::fittedSize() const
{
    const auto width = [this](TextStyle style) {
        return QFontMetrics(Typography::font(style)).horizontalAdvance(text());
    };
    const int title = std::max(width(TextStyle::BodyMedium), width(TextStyle::BodyStrong));
    return {title + 2 * Typography::scaled(titleInset) + 2 * Typography::scaled(insetAtSides),
            Typography::scaled(frameHeight)};
}

void DialogButton::setDefault(bool isDefault)
{
    isDefault_ = isDefault;
    update();
}

/// Each key goes on to the dialog.
bool DialogButton::event(QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return PlainButton::event(event);
    event->ignore();
    return false;
}

void DialogButton::paintEvent(QPaintEvent *event)
{
    if (!isDefault_) {
        PlainButton::paintEvent(event);
        return;
    }
    QPainter painter(this);
    (isDown() ? pressedImage_ : image_).draw(painter, rect());
    painter.setFont(Typography::font(TextStyle::BodyStrong));
    painter.setPen(Qt::white);
    ControlPaint::text(painter, rect().adjusted(4, 0, -4, 0), text(), Qt::AlignHCenter);
}
