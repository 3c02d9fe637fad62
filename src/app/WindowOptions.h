#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The command line of the window.
///
/// Thread: pure
struct WindowOptions
{
    std::vector<QByteArray> paths; ///< files and folders to queue, as they were given
    QByteArray heartbeatPath;      ///< where to write how late the event loop was; null: nowhere
    bool wantsHelp = false;
    bool wantsVersion = false;
    QString error; ///< what was wrong; empty if nothing

    /// `arguments` without the program's name.
    static WindowOptions parse(const std::vector<QByteArray> &arguments);
};
