#pragma once

#include "platform/FileUrl.h"

#include <QString>

#include <functional>
#include <vector>

/// The desktop's file manager (File Manager D-Bus Interface, org.freedesktop.FileManager1).
///
/// Thread:  main
/// Blocks:  never
/// Failure: where no file manager answers, the folder is opened by xdg-open(1); `failed`, if there
///          is one, hears why when that cannot be started, either. What comes of it is not known
namespace FileManager {

/// Who is asked, how long it may take, and what opens a folder instead.
struct Service
{
    QString connection; ///< the session bus where no name is given
    int milliseconds = 5000;
    QString opener = QStringLiteral("xdg-open");
};

using Failed = std::function<void(const QString &cause)>;

/// Shows the files in their folder, selected.
void showItems(const std::vector<FileUrl> &urls, Failed failed, const Service &service = {});

} // namespace FileManager
