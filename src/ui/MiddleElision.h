#pragma once

#include <QString>

class QFontMetrics;

/// Shortens a text in its middle, so that its beginning and its last characters stay.
///
/// Thread: main (fonts)
namespace MiddleElision {

/// As many characters as fit around "…", as many before as behind it or one more; the whole text
/// where that fits. No character is cut, however many code points it has.
QString elided(const QString &text, const QFontMetrics &metrics, int width);

} // namespace MiddleElision
