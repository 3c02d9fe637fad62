#include "support/LogPathCheck.h"

#include "platform/SystemError.h"

#include <QCoreApplication>

#include <cerrno>

namespace {

using Answer = LogPathCheck::Answer;

/// What the path says by itself; Free where that is nothing against it.
Answer answerOfText(const QByteArray &path)
{
    if (path.isEmpty())
        return Answer::NoPath;
    if (path.contains('\0'))
        return Answer::NoName;
    if (!path.startsWith('/'))
        return Answer::Relative;
    const bool isFolder = path.endsWith('/') || path.endsWith("/.") || path.endsWith("/..");
    return isFolder ? Answer::Folder : Answer::Free;
}

Answer answerOfError(int error)
{
    switch (error) {
    case ENOENT:
        return Answer::NoFolder;
    case ENOTDIR:
        return Answer::BelowFile;
    case EACCES:
    case EPERM:
        return Answer::NotAllowed;
    case EROFS:
        return Answer::ReadOnly;
    case EWOULDBLOCK:
        return Answer::InUse;
    default:
        return Answer::Other;
    }
}

Answer answerOfKind(FileKind kind)
{
    switch (kind) {
    case FileKind::Regular:
        return Answer::Existing;
    case FileKind::Folder:
        return Answer::Folder;
    case FileKind::Link:
        return Answer::Link;
    default:
        return Answer::NotRegular;
    }
}

QString translated(const char *text)
{
    return QCoreApplication::translate("LogPathCheck", text);
}

} // namespace

LogPathCheck LogPathCheck::of(const QByteArray &path)
{
    return answerOfText(path) == Answer::Free ? decide(path, LogFile::look(path))
                                              : decide(path, {});
}

LogPathCheck LogPathCheck::decide(const QByteArray &path, const LogPathFacts &facts)
{
    const Answer text = answerOfText(path);
    if (text != Answer::Free)
        return {text, 0};
    if (facts.error != 0)
        return {answerOfError(facts.error), facts.error};
    return {facts.kind ? answerOfKind(*facts.kind) : Answer::Free, 0};
}

QString LogPathCheck::sentence() const
{
    switch (answer) {
    case Answer::Free:
    case Answer::Existing:
        return {};
    case Answer::NoPath:
        return translated("No file is named.");
    case Answer::Relative:
        return translated("The path has to begin with \"/\".");
    case Answer::NoName:
        return translated("The path holds a character that no name can.");
    case Answer::Folder:
        return translated("This is a folder, not a file.");
    case Answer::Link:
        return translated("This is a link; name the file that it points to.");
    case Answer::NotRegular:
        return translated("This is no ordinary file.");
    case Answer::NoFolder:
        return translated("The folder that should hold it does not exist.");
    case Answer::BelowFile:
        return translated("A part of the path is a file, not a folder.");
    case Answer::NotAllowed:
        return translated("You do not have the permission to write this file.");
    case Answer::ReadOnly:
        return translated("The file system is read-only.");
    case Answer::InUse:
        return translated("Another program is using this file.");
    case Answer::Other:
        break;
    }
    return translated("This file cannot be written: %1.").arg(SystemError::text(error));
}
