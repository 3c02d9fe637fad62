#include "app/AppDelegate.h"
#include "app/Heartbeat.h"
#include "app/MainInterface.h"
#include "app/WindowOptions.h"
#include "platform/ApplicationId.h"
#include "platform/ApplicationService.h"
#include "platform/BackgroundQueue.h"
#include "platform/DesktopSettings.h"
#include "platform/EndLimit.h"
#include "platform/IdleInhibitor.h"
#include "platform/PathBytes.h"
#include "platform/PlatformData.h"
#include "platform/ProcessEnd.h"
#include "platform/SingleInstance.h"
#include "platform/StandardStreams.h"
#include "platform/UserDefaults.h"
#include "platform/WorkingFolder.h"
#include "ui/ApplicationIcon.h"
#include "ui/VantorelStyle.h"

#include <QApplication>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace {

/// How long a scan that was cancelled may take to notice, and how long all that comes behind it.
constexpr std::chrono::seconds patience{2};

enum ExitCode : int { Ended = 0, NoSupportFolder = 1, WrongUsage = 2 };

const char usage[] =
    "Usage: vantorel [OPTION]... [--] [PATH]...\n"
    "\n"
    "Opens the window and lists the files and folders given. Nothing is erased until\n"
    "Start is pressed there.\n"
    "\n"
    "  -h, --help              this text\n"
    "      --version           the version\n"
    "      --heartbeat FILE    at the end, write to FILE how late the event loop was\n";

void say(StandardStreams::Stream stream, const QString &text)
{
    StandardStreams::write(stream, text.toLocal8Bit());
}

/// What ends the program before there is a window; nothing if it is to go on.
std::optional<int> answerWithoutWindow(const WindowOptions &options)
{
    if (!options.error.isEmpty()) {
        say(StandardStreams::Error,
            QStringLiteral("vantorel: %1\nTry \"vantorel --help\".\n").arg(options.error));
        return WrongUsage;
    }
    if (options.wantsHelp || options.wantsVersion) {
        StandardStreams::write(StandardStreams::Output,
                               options.wantsHelp ? usage : "vantorel " VANTOREL_VERSION "\n");
        return Ended;
    }
    return std::nullopt;
}

std::vector<QByteArray> absolutePaths(const std::vector<QByteArray> &paths)
{
    const QByteArray startFolder = WorkingFolder::path();
    std::vector<QByteArray> absolute;
    for (const QByteArray &path : paths)
        absolute.push_back(PathBytes::absolute(path, startFolder));
    return absolute;
}

/// The desktop is asked early: its answers come while the window is made.
void wearStyle()
{
    QApplication::setStyle(new VantorelStyle);
    const DesktopSettings &desktop = DesktopSettings::shared();
    QObject::connect(&desktop, &DesktopSettings::changed, qApp,
                     [&desktop] { VantorelStyle::setHighContrast(desktop.prefersHighContrast()); });
}

int runWindow(const WindowOptions &options, const PlatformData &platformData, EndLimit &limit)
{
    ApplicationService service;
    const std::vector<QByteArray> paths = absolutePaths(options.paths);
    const SingleInstance::Standing standing = SingleInstance::begin(service, {paths, platformData});
    if (standing == SingleInstance::Standing::HandedOver)
        return Ended;
    if (!AppDelegate::initialize())
        return NoSupportFolder;
    wearStyle();
    QApplication::setWindowIcon(ApplicationIcon::icon());
    QApplication::setQuitOnLastWindowClosed(false);

    std::optional<Heartbeat> heartbeat;
    if (!options.heartbeatPath.isNull())
        heartbeat.emplace(options.heartbeatPath);
    const auto delegate =
        AppDelegate::create({&service, [] { return std::make_shared<IdleInhibitor>(); }});
    MainInterface interface(*delegate, service, standing == SingleInstance::Standing::First);
    delegate->applicationDidFinishLaunching();
    if (!paths.empty())
        delegate->openFiles(paths);
    const int exitCode = QApplication::exec();
    UserDefaults::standard().synchronize();
    // A walk over a disk that does not answer ends with the process.
    if (!BackgroundQueue::finish(patience))
        ProcessEnd::now(exitCode);
    limit.start(patience, exitCode);
    return exitCode;
}

} // namespace

int main(int argc, char *argv[])
{
    StandardStreams::secure();
    const WindowOptions options = WindowOptions::parse({argv + 1, argv + argc});
    if (const std::optional<int> exitCode = answerWithoutWindow(options))
        return *exitCode;
    const PlatformData platformData = PlatformData::fromEnvironment();
    // A file may have any name, so Qt gets to see none of the arguments.
    argc = 1;
    // Qt waits for a look-up of a server's name that nobody needs any more.
    EndLimit limit;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vantorel"));
    QApplication::setApplicationVersion(QStringLiteral(VANTOREL_VERSION));
    QApplication::setDesktopFileName(QString(applicationId));
    return runWindow(options, platformData, limit);
}
