#include "app/ContactLink.h"

#include "platform/UserDefaults.h"

#include <QDesktopServices>

QUrl ContactLink::url()
{
    return QUrl(UserDefaults::standard().text(QStringLiteral("htmlLinkContactus")));
}

void ContactLink::open()
{
    QDesktopServices::openUrl(url());
}
