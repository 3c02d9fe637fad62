#include "ui/DragState.h"

#include <algorithm>

void DragState::entered(const QObject *target, int items)
{
    if (std::find(over_.begin(), over_.end(), target) == over_.end())
        over_.push_back(target);
    items_ = items;
    tellLater();
}

void DragState::left(const QObject *target)
{
    std::erase(over_, target);
    if (over_.empty())
        items_ = noDrag;
    tellLater();
}

void DragState::tellLater()
{
    if (isTellingLater_)
        return;
    isTellingLater_ = true;
    QMetaObject::invokeMethod(this, &DragState::tell, Qt::QueuedConnection);
}

void DragState::tell()
{
    isTellingLater_ = false;
    if (told_ == items_)
        return;
    told_ = items_;
    Q_EMIT changed(told_);
}
