#pragma once

#include <QByteArray>
#include <QString>

/// The two appearances of a window and their encoding in the preferences. Not the encoding of
/// colours (ColorProperties), on purpose.
///
/// Thread: pure
namespace Appearance {

inline constexpr char16_t light[] = u"light";
inline constexpr char16_t dark[] = u"dark";

QByteArray archived(const QString &identifier);
/// Null where the bytes are no identifier.
QString unarchived(const QByteArray &bytes);

} // namespace Appearance
