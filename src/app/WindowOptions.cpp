#include "app/WindowOptions.h"

#include "platform/CommandOptions.h"
#include "platform/PathBytes.h"

namespace {

constexpr char version = 2; // without a short form
constexpr char heartbeat = 3;

const std::vector<CommandOptions::Option> knownOptions = {
    {"help", 'h'},
    {"version", version},
    {"heartbeat", heartbeat, true},
};

} // namespace

WindowOptions WindowOptions::parse(const std::vector<QByteArray> &arguments)
{
    WindowOptions options;
    const CommandOptions parsed = CommandOptions::parse(arguments, knownOptions);
    options.error = PathBytes::printable(parsed.error);
    options.paths = parsed.operands;
    for (const auto &[name, value] : parsed.options) {
        options.wantsHelp |= name == 'h';
        options.wantsVersion |= name == version;
        if (name == heartbeat)
            options.heartbeatPath = value;
    }
    return options;
}
