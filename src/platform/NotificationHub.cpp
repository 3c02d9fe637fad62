#include "platform/NotificationHub.h"

#include <algorithm>

struct NotificationHub::Token::Observer
{
    QLatin1String name;
    Handler handler;
    bool isStopped = false;
};

NotificationHub::Token::Token(std::shared_ptr<Observer> observer) : observer_(std::move(observer))
{
}

NotificationHub::Token &NotificationHub::Token::operator=(Token &&other) noexcept
{
    if (this != &other) {
        stop();
        observer_ = std::move(other.observer_);
    }
    return *this;
}

void NotificationHub::Token::stop()
{
    if (observer_)
        observer_->isStopped = true;
    observer_.reset();
}

NotificationHub &NotificationHub::shared()
{
    static NotificationHub hub;
    return hub;
}

NotificationHub::Token NotificationHub::observe(QLatin1String name, Handler handler)
{
    auto observer = std::make_shared<Token::Observer>();
    observer->name = name;
    observer->handler = std::move(handler);
    std::erase_if(observers_, [](const auto &weak) { return weak.expired(); });
    observers_.push_back(observer);
    return Token(std::move(observer));
}

void NotificationHub::post(QLatin1String name, const void *object, const QVariant &userInfo)
{
    const Notification notification{name, object, userInfo};
    // A copy: handlers may observe and stop observing.
    const auto observers = observers_;
    for (const auto &weak : observers) {
        const std::shared_ptr<Token::Observer> observer = weak.lock();
        if (observer && !observer->isStopped && observer->name == name)
            observer->handler(notification);
    }
}
