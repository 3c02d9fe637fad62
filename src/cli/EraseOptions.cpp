#include "cli/EraseOptions.h"

#include "engine/WipeSchedule.h"
#include "platform/CommandOptions.h"
#include "platform/PathBytes.h"

namespace {

// Below 'A': options without a short form.
constexpr char leaveLinkTargets = 2;
constexpr char json = 3;
constexpr char report = 4;
constexpr char log = 5;

const std::vector<CommandOptions::Option> knownOptions = {
    {"method", 'm', true}, {"yes", 'y'},
    {"dry-run", 'n'},      {"leave-link-targets", leaveLinkTargets},
    {"json", json},        {"report", report, true},
    {"log", log, true},    {"quiet", 'q'},
    {"help", 'h'},
};

bool isMethod(std::int64_t number)
{
    return !WipeSchedule::passes(number).empty();
}

void readMethod(EraseOptions &options, const QByteArray &text)
{
    bool isNumber = false;
    options.method = text.toLongLong(&isNumber);
    if (!isNumber || !isMethod(options.method))
        options.error = QStringLiteral("no such method: %1 (1 to 10, see \"vantorel-cli methods\")")
                            .arg(PathBytes::printable(text));
}

void apply(EraseOptions &options, char name, const QByteArray &value)
{
    switch (name) {
    case 'm':
        readMethod(options, value);
        break;
    case 'y':
        options.isConfirmed = true;
        break;
    case 'n':
        options.isDryRun = true;
        break;
    case 'q':
        options.isQuiet = true;
        break;
    case 'h':
        options.wantsHelp = true;
        break;
    case leaveLinkTargets:
        options.leavesLinkTargets = true;
        break;
    case json:
        options.printsJson = true;
        break;
    case report:
        options.reportPath = value;
        break;
    case log:
        options.logPath = value;
        break;
    default:
        break;
    }
}

} // namespace

EraseOptions EraseOptions::parse(const std::vector<QByteArray> &arguments,
                                 const Preferences &preferences)
{
    EraseOptions options;
    options.method = preferences.method;
    options.leavesLinkTargets = preferences.leavesLinkTargets;
    const CommandOptions parsed = CommandOptions::parse(arguments, knownOptions);
    if (!parsed.error.isEmpty()) {
        options.error = PathBytes::printable(parsed.error);
        return options;
    }
    for (const auto &[name, value] : parsed.options) {
        apply(options, name, value);
        if (!options.error.isEmpty())
            return options;
    }
    options.paths = parsed.operands;
    if (options.wantsHelp)
        return options;
    if (options.paths.empty())
        options.error = QStringLiteral("nothing to erase: name files or folders");
    else if (!isMethod(options.method))
        options.error =
            QStringLiteral(
                "the preferred method is %1, which does not exist: choose one of 1 to 10 "
                "with --method")
                .arg(options.method);
    return options;
}
