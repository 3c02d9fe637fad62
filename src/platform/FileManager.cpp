#include "platform/FileManager.h"

#include "platform/DesktopConnection.h"
#include "platform/PathBytes.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QProcess>

namespace {

QDBusMessage showItemsCall(const std::vector<FileUrl> &urls)
{
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage call = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/FileManager1"), name, QStringLiteral("ShowItems"));
    QStringList uris;
    for (const FileUrl &url : urls)
        uris.append(QString::fromLatin1(url.toUri()));
    const QString noStartupId;
    call << uris << noStartupId;
    return call;
}

bool openFolderOf(const FileUrl &url, const QString &opener)
{
    const FileUrl folder(PathBytes::withoutLastComponent(url.path()));
    return QProcess::startDetached(opener, {QString::fromLatin1(folder.toUri())});
}

} // namespace

void FileManager::showItems(const std::vector<FileUrl> &urls,
                            std::function<void(const QString &)> failed, const Service &service)
{
    if (urls.empty())
        return;
    const QDBusConnection bus = DesktopConnection::named(service.connection);
    if (!bus.isConnected()) {
        if (!openFolderOf(urls.front(), service.opener))
            failed(bus.lastError().message());
        return;
    }
    auto *watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(showItemsCall(urls), service.milliseconds));
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher,
        [watcher, url = urls.front(), opener = service.opener, failed = std::move(failed)] {
            watcher->deleteLater();
            if (watcher->isError() && !openFolderOf(url, opener))
                failed(watcher->error().message());
        });
}
