#pragma once

#include <QByteArray>
#include <QStringList>

#include <vector>

/// The files that another program names in a call over the message bus, whose texts are UTF-8: a
/// name that is not can only come as a location, percent-encoded.
///
/// Thread:  pure
/// Failure: an entry that does not say without doubt which file is meant is left out, by the rules
///          of UriList
namespace FileEntries {

/// Of a list of file locations ("file:"): absolute paths in its order, as the bytes they are.
std::vector<QByteArray> pathsOfUris(const QStringList &uris);

/// The same of a list in which plain absolute paths may stand, too. In a plain path nothing is
/// decoded.
std::vector<QByteArray> paths(const QStringList &entries);

/// The way there: each absolute path as a location of ASCII characters.
QStringList uris(const std::vector<QByteArray> &paths);

} // namespace FileEntries
