#include "app/CalloutPresenter.h"

#include "platform/DesktopSettings.h"
#include "ui/DropView.h"

#include <QPropertyAnimation>

namespace {

constexpr QPoint way(0, 30);
constexpr int milliseconds = 200;

} // namespace

void CalloutPresenter::slideOut()
{
    QWidget *callout = view_->viewBtnInfo();
    if (!callout->isHidden())
        return;
    callout->show();
    const QPoint place = callout->pos() + way;
    if (DesktopSettings::shared().prefersReducedMotion()) {
        callout->move(place);
        return;
    }
    slide_ = new QPropertyAnimation(callout, "pos", callout);
    slide_->setDuration(milliseconds);
    slide_->setEndValue(place);
    slide_->start(QAbstractAnimation::DeleteWhenStopped);
}

void CalloutPresenter::putBack()
{
    if (slide_)
        slide_->stop();
    view_->resetBtnInfo();
}
