#include "app/run/FolderOrder.h"

#include <algorithm>

FileUtils::FolderPaths FolderOrder::deepestFirst(const FolderMap &folders)
{
    FileUtils::FolderPaths paths(folders.begin(), folders.end());
    std::stable_sort(paths.begin(), paths.end(), [](const auto &left, const auto &right) {
        return left.first.compare(right.first, Qt::CaseInsensitive) < 0;
    });
    std::reverse(paths.begin(), paths.end());
    return paths;
}
