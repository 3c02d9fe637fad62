#pragma once

#include "engine/ScanReport.h"

#include <QByteArrayList>

#include <algorithm>

/// What a report of a scan names, sorted.
namespace Reports {

inline QByteArrayList files(const ScanReport &report)
{
    QByteArrayList paths;
    for (const QueueArray::Item &item : report.files)
        paths.append(item->fullpath());
    std::sort(paths.begin(), paths.end());
    return paths;
}

inline QByteArrayList folders(const ScanReport &report)
{
    QByteArrayList paths;
    for (const auto &folder : report.folders)
        paths.append(folder.first);
    return paths;
}

inline QByteArrayList paths(const ScanFailures &failures)
{
    QByteArrayList paths;
    for (const ScanFailure &failure : failures)
        paths.append(failure.path);
    std::sort(paths.begin(), paths.end());
    return paths;
}

/// The item of that path; null where there is none.
inline QueueArray::Item fileAt(const ScanReport &report, const QByteArray &path)
{
    const auto at =
        std::find_if(report.files.begin(), report.files.end(),
                     [&path](const QueueArray::Item &item) { return item->fullpath() == path; });
    return at == report.files.end() ? nullptr : *at;
}

} // namespace Reports
