#pragma once

#include <QByteArray>
#include <QString>

/// Paths as the bytes they are. A Linux name is any bytes but "/" and NUL, in no encoding; a path
/// becomes a QString only to be shown.
///
/// Thread: pure
namespace PathBytes {

QByteArray withoutTrailingSlashes(const QByteArray &path);
/// The name at the end of the path ("/" for the root folder), without trailing slashes.
QByteArray lastComponent(const QByteArray &path);
/// The path of the folder that holds it; "/" for what stands in the root folder, empty where there
/// is none.
QByteArray withoutLastComponent(const QByteArray &path);
QByteArray join(const QByteArray &folder, const QByteArray &name);

/// An absolute path out of what a user or another program handed over: `startFolder` goes before a
/// relative one; "." components and doubled and trailing slashes go; nothing is resolved. An empty
/// path stays empty, and without a start folder a relative one stays relative.
QByteArray absolute(const QByteArray &path, const QByteArray &startFolder);

/// For one line of text: bytes that are not UTF-8 and control characters become "\xNN" escapes
/// ("\n", "\t", "\r" by name), and so does the backslash ("\\").
QString printable(const QByteArray &path);

/// Bytes of the longest path that the system takes: PATH_MAX (limits.h) less the NUL.
constexpr qsizetype longestPath = 4095;
bool fitsTheSystem(const QByteArray &path);

} // namespace PathBytes
