#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/// The texts of a table's row. A name is bytes and may hold anything; what is shown of it can
/// neither break its line nor turn its row round.
///
/// Thread: pure
namespace RowTexts {

/// The name as text. Bytes that are not UTF-8, control characters, separators of lines and
/// paragraphs and the characters that turn the direction of writing show as U+FFFD.
QString name(const QByteArray &bytes);
/// A folder's path, the same way, with "~" for the user's home where it begins with it.
QString folder(const QByteArray &path, const QByteArray &home);
/// Between the marks that keep the direction of its writing to itself.
QString isolated(const QString &text);

/// "1.62 GB"; "--" where it is not known.
QString size(double bytes);

/// How far a row is, for those who hear it.
struct RowState
{
    std::int64_t status = 0; ///< of QueueObject
    bool isInWork = false;
    int pass = 0; ///< from 1 on; 0 while it is not known
    int passes = 0;
    QString error;
};

/// "waiting", "in work, pass 2 of 3", "wiped" or "failed: Permission denied".
QString state(const RowState &state);
/// "notes.txt, ~/Documents, 4.10 KB, waiting"
QString spoken(const QString &name, const QString &folder, const QString &size,
               const RowState &state);
/// "notes.txt, ~/Documents, Operation not permitted"
QString spokenFailure(const QString &name, const QString &folder, const QString &error);

} // namespace RowTexts
