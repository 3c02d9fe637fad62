#include "engine/QueueArray.h"

#include <iterator>
#include <utility>

void QueueArray::append(Item item)
{
    items_.push_back(std::move(item));
}

void QueueArray::append(Items items)
{
    if (items_.empty())
        items_ = std::move(items);
    else
        items_.insert(items_.end(), std::make_move_iterator(items.begin()),
                      std::make_move_iterator(items.end()));
}

void QueueArray::insert(std::size_t at, Item item)
{
    items_.insert(items_.begin() + std::ptrdiff_t(at), std::move(item));
    forgetFinished();
}

void QueueArray::remove(std::size_t at)
{
    items_.erase(items_.begin() + std::ptrdiff_t(at));
    forgetFinished();
}

QueueArray::Items QueueArray::takeAll()
{
    forgetFinished();
    return std::exchange(items_, {});
}

QueueArray::Item QueueArray::firstUnfinished()
{
    if (reopenedCount_ != QueueObject::reopenedCount()) {
        reopenedCount_ = QueueObject::reopenedCount();
        forgetFinished();
    }
    while (finishedCount_ < items_.size() && items_[finishedCount_]->finished())
        ++finishedCount_;
    return finishedCount_ < items_.size() ? items_[finishedCount_] : nullptr;
}
