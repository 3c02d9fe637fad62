#include "app/AppDelegate.h"

#include "app/DefaultsTable.h"
#include "app/FolderScanUrls.h"
#include "engine/FileUtils.h"
#include "platform/ApplicationService.h"
#include "platform/DarkAppearance.h"
#include "platform/NotificationHub.h"
#include "platform/PathBytes.h"
#include "platform/UserDefaults.h"
#include "ui/DialogBoxes.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("AppDelegate", text);
}

QStringList searchPath(QStandardPaths::StandardLocation kind, AppDelegate::SearchPathDomain domain)
{
    const QString own = QStandardPaths::writableLocation(kind);
    QStringList folders = QStandardPaths::standardLocations(kind);
    folders.removeAll(own);
    if (domain == AppDelegate::SearchPathDomain::System)
        return folders;
    return own.isEmpty() ? QStringList() : QStringList(own);
}

} // namespace

AppDelegate::AppDelegate(Private, Desktop desktop)
    : desktop_(std::move(desktop)), outside_([this](const auto &paths) { openFiles(paths); })
{
}

std::shared_ptr<AppDelegate> AppDelegate::create(Desktop desktop)
{
    return std::make_shared<AppDelegate>(Private{}, std::move(desktop));
}

bool AppDelegate::initialize()
{
    QByteArray supportPath;
    if (!findOrCreateDirectory(QStandardPaths::GenericDataLocation, SearchPathDomain::User,
                               "Vantorel", &supportPath)) {
        DialogBoxes::alertBoxDefault(tr("Unable to access AppSupportPath"),
                                     tr("No access to:\n%1\n\nVantorel will close now.")
                                         .arg(PathBytes::printable(supportPath)));
        return false;
    }
    UserDefaults::standard().registerDefaults(
        DefaultsTable::defaults({QStringLiteral(VANTOREL_VERSION), QStringLiteral(VANTOREL_BUILD),
                                 QFile::decodeName(supportPath), DarkAppearance::isSupported()}));
    return true;
}

bool AppDelegate::findOrCreateDirectory(QStandardPaths::StandardLocation kind,
                                        SearchPathDomain inDomain,
                                        const QByteArray &appendPathComponent, QByteArray *path)
{
    const QStringList folders = searchPath(kind, inDomain);
    *path = folders.isEmpty() ? QByteArray() : QFile::encodeName(folders.first());
    if (folders.isEmpty())
        return false;
    if (!appendPathComponent.isEmpty())
        *path = PathBytes::join(*path, appendPathComponent);
    if (FileUtils::doesFileExists(FileUrl(*path)) || FileUtils::doesFolderExists(FileUrl(*path)))
        return true;
    return !FileUtils::createFolder(FileUrl(*path), false).isNull();
}

void AppDelegate::applicationDidFinishLaunching()
{
    if (!DarkAppearance::isSupported()) {
        const QVariantMap forced = DefaultsTable::withoutDarkAppearance();
        for (auto entry = forced.constBegin(); entry != forced.constEnd(); ++entry)
            UserDefaults::standard().setValue(entry.key(), entry.value());
    }
    const std::weak_ptr<AppDelegate> self = weak_from_this();
    const auto whileHere = [self](void (AppDelegate::*operation)()) {
        return [self, operation] {
            if (const auto delegate = self.lock())
                (delegate.get()->*operation)();
        };
    };
    QObject::connect(window_, &MainWindow::becameKey, whileHere(&AppDelegate::windowDidBecomeKey));
    QObject::connect(window_, &MainWindow::resignedKey,
                     whileHere(&AppDelegate::windowDidResignKey));
    DropReceiver::setShared(shared_from_this());
    setUpService();
    startGUI();
    disableAppNap();
}

void AppDelegate::setUpService()
{
    if (!desktop_.service)
        return;
    const auto show = [self = weak_from_this()](const PlatformData &platformData) {
        if (const auto delegate = self.lock()) {
            platformData.putIntoEnvironment();
            delegate->applicationShouldHandleReopen(delegate->window_->isVisible());
        }
    };
    ApplicationService::Receiver receiver;
    receiver.activate = show;
    receiver.action = [show](const QString &, const PlatformData &data) { show(data); };
    receiver.open = [self = weak_from_this(), show](const std::vector<QByteArray> &paths,
                                                    const PlatformData &data) {
        show(data);
        if (const auto delegate = self.lock())
            delegate->outside_.take(paths);
    };
    desktop_.service->deliverTo(std::move(receiver));
}

void AppDelegate::openFiles(const std::vector<QByteArray> &paths)
{
    std::vector<FileUrl> urls;
    for (const QByteArray &path : paths) {
        if (!path.isEmpty())
            urls.emplace_back(path);
    }
    addUrlArrayToQueue(urls);
}

void AppDelegate::addUrlArrayToQueue(const std::vector<FileUrl> &urls)
{
    NotificationHub::shared().post(NotificationName::folderScanUrls, this,
                                   QVariant::fromValue(FolderScanUrls{urls}));
}

void AppDelegate::startGUI()
{
    showMainWindow();
    QTimer::singleShot(500ms, window_, [self = weak_from_this()] {
        if (const auto delegate = self.lock())
            delegate->notifyAppThatGUIIsStarted();
    });
}

void AppDelegate::notifyAppThatGUIIsStarted()
{
    NotificationHub::shared().post(NotificationName::applicationDidStartGUI, this);
}

void AppDelegate::showMainWindow()
{
    window_->makeKeyAndOrderFront();
}

bool AppDelegate::applicationShouldHandleReopen(bool)
{
    showMainWindow();
    return true;
}

void AppDelegate::windowDidBecomeKey()
{
    menuItemMainWindow_->setChecked(true);
}

void AppDelegate::windowDidResignKey()
{
    menuItemMainWindow_->setChecked(false);
}

void AppDelegate::disableAppNap()
{
    if (desktop_.beginActivity)
        activity_ = desktop_.beginActivity();
}
