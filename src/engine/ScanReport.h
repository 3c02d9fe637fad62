#pragma once

#include "engine/QueueArray.h"
#include "engine/ScanFacts.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// What a scan found. A folder stands in it with its own path, also when it is empty.
struct ScanReport
{
    QueueArray::Items files;
    FolderMap folders;
};

/// Something that a scan could not look into, or would not; or a folder that could not be removed.
struct ScanFailure
{
    QByteArray path;
    int errornr = 0; ///< 0: refused
    QString errormsg;
};

using ScanFailures = std::vector<ScanFailure>;
