#pragma once

#include "engine/FileUtils.h"

/// The order in which the folders of a scan are offered for removal.
///
/// Thread: pure
namespace FolderOrder {

/// Ascending without regard to case (of ASCII letters), then reversed: a sub-folder comes before
/// the folder that holds it, so that one sweep removes both.
FileUtils::FolderPaths deepestFirst(const FolderMap &folders);

} // namespace FolderOrder
