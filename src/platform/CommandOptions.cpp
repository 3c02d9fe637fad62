#include "platform/CommandOptions.h"

#include <algorithm>

#include <getopt.h>

namespace {

constexpr int operand = 1; // getopt_long(3), with "-"

bool hasShortForm(char name)
{
    return name >= 'A';
}

QByteArray shortForms(const std::vector<CommandOptions::Option> &known)
{
    // The dash tells operands in their place, whatever POSIXLY_CORRECT says; the colon tells a
    // missing value from an unknown option.
    QByteArray text = "-:";
    for (const CommandOptions::Option &option : known) {
        if (hasShortForm(option.shortName))
            text += option.shortName + QByteArray(option.takesValue ? ":" : "");
    }
    return text;
}

std::vector<option> longForms(const std::vector<CommandOptions::Option> &known)
{
    std::vector<option> forms;
    for (const CommandOptions::Option &each : known)
        forms.push_back({each.longName, each.takesValue ? required_argument : no_argument, nullptr,
                         each.shortName});
    forms.push_back({nullptr, 0, nullptr, 0});
    return forms;
}

/// The option that getopt_long() has just refused: a letter of a group, or the whole word.
QByteArray culprit(const QByteArray &word)
{
    return word.startsWith("--") ? word : QByteArray("-") + static_cast<char>(optopt);
}

} // namespace

CommandOptions CommandOptions::parse(const std::vector<QByteArray> &arguments,
                                     const std::vector<Option> &known)
{
    std::vector<QByteArray> copies = arguments;
    std::vector<char *> argv = {nullptr};
    for (QByteArray &argument : copies)
        argv.push_back(argument.data());
    char emptyName[] = "";
    argv.front() = emptyName;
    const int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);

    const QByteArray shorts = shortForms(known);
    const std::vector<option> longs = longForms(known);
    CommandOptions parsed;
    opterr = 0;
    optind = 0; // glibc: starts anew
    for (;;) {
        const char *word = argv[std::size_t(std::max(optind, 1))];
        const int name =
            ::getopt_long(argc, argv.data(), shorts.constData(), longs.data(), nullptr);
        if (name < 0)
            break;
        if (name == '?' || name == ':') {
            parsed.error = (name == ':' ? "needs a value: " : "unknown option: ") + culprit(word);
            return parsed;
        }
        const QByteArray value = optarg != nullptr ? QByteArray(optarg) : QByteArray();
        if (name == operand)
            parsed.operands.push_back(value);
        else
            parsed.options.emplace_back(static_cast<char>(name), value);
    }
    for (int at = optind; at < argc; ++at)
        parsed.operands.emplace_back(argv[std::size_t(at)]);
    return parsed;
}
