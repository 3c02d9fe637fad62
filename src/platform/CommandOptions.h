#pragma once

#include <QByteArray>

#include <utility>
#include <vector>

/// Reads a command line's options and operands with getopt_long(3): long and short options, values
/// joined or apart, options and operands in any order, "--" ends the options. All as bytes.
///
/// Thread: main
struct CommandOptions
{
    struct Option
    {
        const char *longName;
        char shortName; ///< also its name in `options`; below 'A' and above 1: no short form
        bool takesValue = false;
    };

    std::vector<std::pair<char, QByteArray>> options; ///< in their order, with their values
    std::vector<QByteArray> operands;
    QByteArray error; ///< what was wrong; empty if nothing

    /// `arguments` without the program's name.
    static CommandOptions parse(const std::vector<QByteArray> &arguments,
                                const std::vector<Option> &known);
};
