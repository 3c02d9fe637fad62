#include "ui/FocusRing.h"

#include "ui/DesignColors.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr char radiusProperty[] = "focusRingRadius";
constexpr char placeProperty[] = "focusRingPlace";
constexpr double usualRadius = 4;
constexpr double frameLine = 1;

/// Whether any of it is inside of what holds it. (What its own children cover is seen, too.)
bool isSeen(const QWidget *control)
{
    if (!control->isVisible())
        return false;
    QRect seen = control->rect();
    for (const QWidget *part = control; !part->isWindow(); part = part->parentWidget())
        seen = seen.translated(part->pos()) & part->parentWidget()->rect();
    return !seen.isEmpty();
}

enum Place { Outside, Inside, None };

Place placeOf(const QWidget *control)
{
    return Place(control->property(placeProperty).toInt());
}

double radiusOf(const QWidget *control)
{
    const QVariant radius = control->property(radiusProperty);
    return std::min(radius.isValid() ? radius.toDouble() : usualRadius, control->height() / 2.0);
}

} // namespace

FocusRing *FocusRing::install(QWidget *window)
{
    auto *ring = window->findChild<FocusRing *>(QString(), Qt::FindDirectChildrenOnly);
    return ring ? ring : new FocusRing(window);
}

FocusRing::FocusRing(QWidget *window) : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    hide();
    qApp->installEventFilter(this);
    take(window->focusWidget());
}

void FocusRing::setRadius(QWidget *control, double radius)
{
    control->setProperty(radiusProperty, radius);
}

void FocusRing::setInside(QWidget *control)
{
    control->setProperty(placeProperty, Inside);
}

void FocusRing::setNone(QWidget *control)
{
    control->setProperty(placeProperty, None);
}

void FocusRing::setAround(QWidget *control)
{
    control->setProperty(placeProperty, Outside);
}

bool FocusRing::shows(Qt::FocusReason reason, bool isShown)
{
    switch (reason) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        return true;
    case Qt::MouseFocusReason:
        return false;
    default:
        return isShown;
    }
}

void FocusRing::setAlwaysShown(bool isAlwaysShown)
{
    isAlwaysShown_ = isAlwaysShown;
    follow();
}

void FocusRing::take(QWidget *control)
{
    control_ = control;
    follow();
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        if (auto *control = qobject_cast<QWidget *>(watched);
            control && control->window() == window()) {
            const auto reason = static_cast<QFocusEvent *>(event)->reason();
            isByKeyboard_ = shows(reason, isByKeyboard_);
            take(control);
        }
        break;
    case QEvent::FocusOut:
        if (watched == control_)
            followLater();
        break;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::ParentChange:
    case QEvent::ZOrderChange:
    case QEvent::EnabledChange:
    case QEvent::DynamicPropertyChange:
        if (concerns(watched))
            followLater();
        break;
    default:
        break;
    }
    return false;
}

bool FocusRing::concerns(const QObject *watched) const
{
    const auto *widget = qobject_cast<const QWidget *>(watched);
    return control_ && widget && (widget == control_ || widget->isAncestorOf(control_));
}

void FocusRing::followLater()
{
    if (isFollowingLater_)
        return;
    isFollowingLater_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            isFollowingLater_ = false;
            follow();
        },
        Qt::QueuedConnection);
}

QRect FocusRing::ringRect() const
{
    const QRect rect(control_->mapTo(parentWidget(), QPoint()), control_->size());
    if (placeOf(control_) == Inside)
        return rect.marginsRemoved(QMargins(1, 1, 1, 1));
    constexpr int reach = gap + thickness;
    return rect.marginsAdded(QMargins(reach, reach, reach, reach));
}

void FocusRing::follow()
{
    const bool isWanted = control_ && parentWidget()->isAncestorOf(control_) &&
                          control_->hasFocus() && (isByKeyboard_ || isAlwaysShown_) &&
                          placeOf(control_) != None && isSeen(control_);
    if (!isWanted) {
        hide();
        return;
    }
    setGeometry(ringRect());
    raise();
    show();
    update();
}

void FocusRing::paintEvent(QPaintEvent *)
{
    if (!control_)
        return;
    constexpr double half = thickness / 2.0;
    const double radius = radiusOf(control_);
    const bool isInside = placeOf(control_) == Inside;
    const double shown = isInside ? radius - frameLine - half : radius + gap + half;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(DesignColors::color(ColorRole::Focus), thickness));
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), shown, shown);
}
