#pragma once

#include "platform/FileUrl.h"

#include <QMetaType>

#include <vector>

/// What comes with the notification "FolderScanUrls": the files and folders handed over, in order.
struct FolderScanUrls
{
    std::vector<FileUrl> urls;
};
Q_DECLARE_METATYPE(FolderScanUrls)
