#pragma once

#include <QByteArray>

#include <vector>

/// The files in a list of locations as programs hand it over in a drag (text/uri-list, RFC 2483).
/// Decoded here, byte for byte: QUrl would change what is not UTF-8 and encoded slashes.
///
/// Thread:  any
/// Failure: an entry that does not say without doubt which file is meant is left out
namespace UriList {

/// Absolute paths in the order of the list, as the bytes they are. Left out: other schemes than
/// "file", other machines' files, relative locations, encoded NUL bytes and slashes, broken percent
/// codes, and a "?" or "#" that is not encoded.
std::vector<QByteArray> paths(const QByteArray &textUriList);

} // namespace UriList
