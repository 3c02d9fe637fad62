#include "ui/MiddleElision.h"

#include <QFontMetrics>
#include <QList>
#include <QTextBoundaryFinder>

namespace {

/// Where the characters of the text begin, and where the last one ends.
QList<qsizetype> boundariesOf(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    QList<qsizetype> boundaries;
    for (qsizetype at = 0; at >= 0; at = finder.toNextBoundary())
        boundaries.append(at);
    return boundaries;
}

QString withCharacters(const QString &text, const QList<qsizetype> &boundaries, qsizetype count)
{
    const qsizetype behind = count / 2;
    const qsizetype left = boundaries.at(count - behind);
    const qsizetype right = boundaries.at(boundaries.size() - 1 - behind);
    return text.first(left) + QChar(0x2026) + text.sliced(right);
}

} // namespace

QString MiddleElision::elided(const QString &text, const QFontMetrics &metrics, int width)
{
    if (metrics.horizontalAdvance(text) <= width)
        return text;
    const QList<qsizetype> boundaries = boundariesOf(text);
    qsizetype fitting = 0;
    qsizetype tooMany = boundaries.size() - 1;
    while (tooMany - fitting > 1) {
        const qsizetype count = (fitting + tooMany) / 2;
        const bool fits =
            metrics.horizontalAdvance(withCharacters(text, boundaries, count)) <= width;
        (fits ? fitting : tooMany) = count;
    }
    return withCharacters(text, boundaries, fitting);
}
