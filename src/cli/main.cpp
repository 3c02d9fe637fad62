#include "cli/EraseOptions.h"
#include "cli/EraseSession.h"
#include "cli/ExitCode.h"
#include "cli/MethodList.h"
#include "platform/MainThread.h"
#include "platform/PathBytes.h"
#include "platform/StandardStreams.h"
#include "platform/StopSignals.h"
#include "platform/UserDefaults.h"
#include "platform/WorkingFolder.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <memory>
#include <vector>

namespace {

using Arguments = std::vector<QByteArray>;

const char usage[] =
    "Usage: vantorel-cli erase [OPTION]... [--] PATH...\n"
    "       vantorel-cli methods [--json]\n"
    "       vantorel-cli --help | --version\n"
    "\n"
    "Overwrites files in place, pass by pass, then removes them; of folders, all that\n"
    "they hold, then the folders. What is erased cannot be had back.\n"
    "\n"
    "  -m, --method N          overwrite method 1 to 10 (see \"vantorel-cli methods\");\n"
    "                          otherwise the preferred one, otherwise 4\n"
    "  -y, --yes               do not ask\n"
    "  -n, --dry-run           show what would be erased, and end\n"
    "      --leave-link-targets\n"
    "                          remove symbolic links without overwriting the files\n"
    "                          they point to\n"
    "      --json              print the outcome as JSON on standard output\n"
    "      --report FILE       write the outcome as JSON to FILE\n"
    "      --log FILE          log the run in FILE, which is emptied first and\n"
    "                          gets no names of files\n"
    "  -q, --quiet             print nothing but failures\n"
    "\n"
    "Exit status: 0 all erased; 1 something failed or was refused; 2 wrong usage or\n"
    "nothing erased; 130, 143 interrupted. The first Ctrl-C ends the run after the\n"
    "file in work, the second at once.\n";

int refuse(const QString &problem)
{
    StandardStreams::write(StandardStreams::Error,
                           QStringLiteral("vantorel-cli: %1\nTry \"vantorel-cli --help\".\n")
                               .arg(problem)
                               .toLocal8Bit());
    return ExitCode::NothingErased;
}

int printHelp()
{
    StandardStreams::write(StandardStreams::Output, usage);
    return ExitCode::Erased;
}

int printMethods(const Arguments &arguments)
{
    const bool isJson = arguments.size() == 1 && arguments.front() == "--json";
    if (!arguments.empty() && !isJson)
        return refuse(QStringLiteral("methods takes no argument but --json"));
    StandardStreams::write(StandardStreams::Output,
                           isJson ? MethodList::json() : MethodList::text().toLocal8Bit());
    return ExitCode::Erased;
}

int erase(const Arguments &arguments)
{
    const UserDefaults defaults({{QStringLiteral("WipeMethod"), 4}});
    const EraseOptions options =
        EraseOptions::parse(arguments, {defaults.integer(QStringLiteral("WipeMethod")),
                                        defaults.boolean(QStringLiteral("skipLinkTargets"))});
    if (!options.error.isEmpty())
        return refuse(options.error);
    if (options.wantsHelp)
        return printHelp();
    const auto session = std::make_shared<EraseSession>(options, WorkingFolder::path());
    const StopSignals signals_([&session](int signal) { session->stop(signal); });
    MainThread::post([&session] { session->start(); });
    return QCoreApplication::exec();
}

int run(const Arguments &arguments)
{
    if (arguments.empty())
        return refuse(QStringLiteral("what is to be done?"));
    const QByteArray command = arguments.front();
    const Arguments rest(arguments.begin() + 1, arguments.end());
    if (command == "erase")
        return erase(rest);
    if (command == "methods" && rest != Arguments{"--help"})
        return printMethods(rest);
    if (command == "--help" || command == "-h" || rest == Arguments{"--help"})
        return printHelp();
    if (command == "--version") {
        StandardStreams::write(StandardStreams::Output, "vantorel-cli " VANTOREL_VERSION "\n");
        return ExitCode::Erased;
    }
    return refuse(QStringLiteral("no such command: %1").arg(PathBytes::printable(command)));
}

} // namespace

int main(int argc, char *argv[])
{
    StandardStreams::secure();
    const Arguments arguments(argv + 1, argv + argc);
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(VANTOREL_VERSION));
    // What concerns the user is said in the front end's own words.
    QLoggingCategory::setFilterRules(QStringLiteral("vantorel=false"));
    return run(arguments);
}
