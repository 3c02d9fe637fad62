#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

/// What `vantorel-cli erase` is asked to do.
///
/// Thread: main
struct EraseOptions
{
    std::int64_t method = 0;
    bool isConfirmed = false;
    bool isDryRun = false;
    bool leavesLinkTargets = false;
    bool printsJson = false;
    bool isQuiet = false;
    bool wantsHelp = false;
    QByteArray reportPath; ///< null: no report
    QByteArray logPath;    ///< null: no log
    std::vector<QByteArray> paths;
    QString error; ///< what was wrong with the command line; empty if nothing

    /// What stands for a choice that the command line leaves open.
    struct Preferences
    {
        std::int64_t method = 0;
        bool leavesLinkTargets = false;
    };

    static EraseOptions parse(const std::vector<QByteArray> &arguments,
                              const Preferences &preferences);
};
