#include "ui/ViewAnimator.h"

#include "platform/OptionalDelegate.h"
#include "ui/WindowGeometry.h"

#include <algorithm>

namespace {

constexpr double duration = 0.2;

} // namespace

ViewAnimator::ViewAnimator(QWidget *viewHolder) : viewHolder_(viewHolder)
{
    connect(&transition_, &PushTransition::didStart, this, &ViewAnimator::animationDidStart);
    connect(&transition_, &PushTransition::didStop, this, &ViewAnimator::animationDidStop);
    transition_.setType(PushTransition::Type::Push);
    transition_.setSubtype(PushTransition::Subtype::FromRight);
    transition_.setDuration(duration);
    windowAnimation_.setDuration(int(duration * 1000));
    connect(&windowAnimation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &rect) {
                if (window_)
                    window_->setGeometry(rect.toRect());
            });
}

void ViewAnimator::setDelegate(std::weak_ptr<ViewAnimatorDelegate> delegate)
{
    delegate_ = std::move(delegate);
}

void ViewAnimator::animateFromTopForView(QWidget *view)
{
    animateFrom(PushTransition::Subtype::FromTop, view);
}

void ViewAnimator::animateFromBottomForView(QWidget *view)
{
    animateFrom(PushTransition::Subtype::FromBottom, view);
}

void ViewAnimator::animateFromRightForView(QWidget *view)
{
    animateFrom(PushTransition::Subtype::FromRight, view);
}

void ViewAnimator::animateFromLeftForView(QWidget *view)
{
    animateFrom(PushTransition::Subtype::FromLeft, view);
}

void ViewAnimator::animateFrom(PushTransition::Subtype side, QWidget *view)
{
    transition_.setSubtype(side);
    animate(view);
}

void ViewAnimator::animate(QWidget *view)
{
    const QRect bounds = viewHolder_ ? viewHolder_->rect() : QRect();
    QWidget *old = getCurrentView();
    const QPixmap leaving = old ? pictureOfHolder() : QPixmap();
    view->setGeometry(QRect(bounds.topLeft(), view->size()));
    if (!viewHolder_)
        return;
    viewHolder_->setGeometry(view->geometry());
    resizeWindowToFitView(view);
    addToHolder(view, leaving);
    if (old)
        removeFromHolder(old);
}

QWidget *ViewAnimator::getCurrentView() const
{
    const QObjectList children = viewHolder_ ? viewHolder_->children() : QObjectList();
    const auto isView = [this](const QObject *child) {
        return child->isWidgetType() && child != transition_.leavingPicture();
    };
    const auto first = std::find_if(children.begin(), children.end(), isView);
    return first == children.end() ? nullptr : static_cast<QWidget *>(*first);
}

/// What the holder shows now, be it in the middle of a swap, on a clear ground.
QPixmap ViewAnimator::pictureOfHolder() const
{
    const double ratio = viewHolder_->devicePixelRatioF();
    QPixmap picture(viewHolder_->size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    if (!picture.isNull())
        viewHolder_->render(&picture, QPoint(), QRegion(), QWidget::DrawChildren);
    return picture;
}

void ViewAnimator::addToHolder(QWidget *view, const QPixmap &leaving)
{
    const QPoint place = view->pos();
    view->setParent(viewHolder_);
    view->move(place);
    transition_.run(viewHolder_, leaving, view);
    view->show();
}

void ViewAnimator::removeFromHolder(QWidget *view)
{
    // Else the focus would wander to some other control while the view is hidden.
    QWidget *focused = view->window()->focusWidget();
    if (focused && (focused == view || view->isAncestorOf(focused)))
        focused->clearFocus();
    view->hide();
    view->setParent(viewHolder_->parentWidget());
}

void ViewAnimator::resizeWindowToFitView(const QWidget *view)
{
    if (!viewHolder_ || viewHolder_->isWindow())
        return;
    QWidget *window = viewHolder_->window();
    moveWindow(window, WindowGeometry::contentRect(window->geometry(), view->size()));
}

void ViewAnimator::moveWindow(QWidget *window, const QRect &content)
{
    windowAnimation_.stop();
    window_ = window;
    if (content == window->geometry())
        return;
    if (transition_.prefersReducedMotion()) {
        window->setGeometry(content);
        return;
    }
    windowAnimation_.setStartValue(window->geometry());
    windowAnimation_.setEndValue(content);
    windowAnimation_.start();
}

void ViewAnimator::animationDidStart()
{
    animationStartedDelegate();
}

void ViewAnimator::animationDidStop(bool finished)
{
    if (finished)
        animationFinishedDelegate();
}

void ViewAnimator::animationStartedDelegate()
{
    OptionalDelegate::call(delegate_, ViewAnimatorDelegate::Call::animationStarted,
                           &ViewAnimatorDelegate::animationStarted);
}

void ViewAnimator::animationFinishedDelegate()
{
    OptionalDelegate::call(delegate_, ViewAnimatorDelegate::Call::animationFinished,
                           &ViewAnimatorDelegate::animationFinished);
}
