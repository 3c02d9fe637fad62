#pragma once

#include "platform/LogFile.h"

#include <QByteArray>
#include <QString>

/// Whether a log can be written to a path, asked without making, emptying or changing anything. It
/// is an answer for now: the logger looks again when it opens the file.
///
/// Thread: any
/// Blocks: on disk I/O, but never on a FIFO or a device
struct LogPathCheck
{
    enum class Answer {
        Free,       ///< the file would be made
        Existing,   ///< the file is there and would be emptied
        NoPath,     ///< the path is empty
        Relative,   ///< it does not begin with "/"
        NoName,     ///< it holds a character that no name can
        Folder,     ///< it is a folder, or ends like one
        Link,       ///< a symbolic link: the file behind it would be emptied
        NotRegular, ///< a FIFO, a device, a socket, one of the kernel's own files
        NoFolder,   ///< the folder that should hold it is missing
        BelowFile,  ///< a part of the path is no folder
        NotAllowed, ///< for want of permission
        ReadOnly,   ///< the file system is
        InUse,      ///< another program has it for itself
        Other       ///< anything else: the system's own words
    };

    Answer answer = Answer::NoPath;
    int error = 0; ///< the system's number, where it had one

    static LogPathCheck of(const QByteArray &path);
    /// The decision alone. Pure.
    static LogPathCheck decide(const QByteArray &path, const LogPathFacts &facts);

    [[nodiscard]] bool isWritable() const
    {
        return answer == Answer::Free || answer == Answer::Existing;
    }
    /// What is wrong, as one sentence for the user; empty where a log can be written.
    [[nodiscard]] QString sentence() const;
};
