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

void openFolderOf(const FileUrl &url, const QString &opener, const FileManager::Failed &failed,
                  const QDBusError &cause)
{
    const FileUrl folder(PathBytes::withoutLastComponent(url.path()));
    if (!QProcess::startDetached(opener, {QString::fromLatin1(folder.toUri())}) && failed)
        failed(cause.message());
}

} // namespace

void FileManager::showItems(const std::vector<FileUrl> &urls, Failed failed, const Service &service)
{
    if (urls.empty())
        return;
    const QDBusConnection bus = DesktopConnection::named(service.connection);
    if (!bus.isConnected()) {
        openFolderOf(urls.front(), service.opener, failed, bus.lastError());
        return;
    }
    auto *watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(showItemsCall(urls), service.milliseconds));
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, watcher,
        [watcher, url = urls.front(), opener = service.opener, failed = std::move(failed)] {
            watcher->deleteLater();
            if (watcher->isError())
                openFolderOf(url, opener, failed, watcher->error());
        });
}
