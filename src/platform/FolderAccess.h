#pragma once

#include "platform/Descriptor.h"

#include <QByteArray>

/// Reaching a folder by its path so that no link leads anywhere the user did not name.
///
/// A path has two ends: the given one, up to the folder that holds the item which the user handed
/// over, where links are the user's own and are followed; and the found one below it, where a link
/// can only have been put since, and is never followed.
///
/// Thread:  any
/// Blocks:  on disk I/O
/// Failure: a closed Descriptor with the error; ELOOP or ENOTDIR where a found component is a link
namespace FolderAccess {

/// Opens the folder at `path` as a FolderHandle. The first `givenLength` bytes of the path are its
/// given end; below 0, all of it is.
Descriptor open(const QByteArray &path, qsizetype givenLength);

} // namespace FolderAccess
