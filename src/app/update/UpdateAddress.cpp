#include "app/update/UpdateAddress.h"

#include <QHostAddress>

namespace {

bool isPlainOnThisMachine(const QUrl &url)
{
    return url.scheme() == QLatin1String("http") && UpdateAddress::isOnThisMachine(url);
}

} // namespace

bool UpdateAddress::isOnThisMachine(const QUrl &url)
{
    return url.host() == QLatin1String("localhost") || QHostAddress(url.host()).isLoopback();
}

bool UpdateAddress::isFeedAllowed(const QUrl &feed)
{
    return isAllowed(feed, feed);
}

bool UpdateAddress::isAllowed(const QUrl &url, const QUrl &feed)
{
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty())
        return false;
    return url.scheme() == QLatin1String("https") ||
           (isPlainOnThisMachine(url) && isPlainOnThisMachine(feed));
}
