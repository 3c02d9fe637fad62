#include "ui/ToolTips.h"

#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

namespace {

constexpr int widest = 480 - 2 * 8; // the style's padding

/// A tool tip guesses from the first tag or entity whether its text is rich. A space of no width
/// behind the sign ends the guess.
QString withoutMarkup(QString text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    constexpr QChar noWidth(0x200B);
    for (const QLatin1Char sign : {QLatin1Char('<'), QLatin1Char('&')})
        text.replace(sign, QString(sign) + noWidth);
    return text;
}

QStringList wrapped(const QString &paragraph, const QFont &font)
{
    QStringList lines;
    QTextLayout layout(paragraph, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(widest);
        lines.append(paragraph.mid(line.textStart(), line.textLength()));
    }
    layout.endLayout();
    return lines;
}

} // namespace

QString ToolTips::shownText(const QString &text)
{
    QStringList lines;
    for (const QString &paragraph : text.split(QLatin1Char('\n')))
        lines += wrapped(paragraph, QToolTip::font());
    return withoutMarkup(lines.join(QLatin1Char('\n')));
}

void ToolTips::show(const QPoint &globalPosition, const QString &text, QWidget *widget)
{
    QToolTip::showText(globalPosition, text.isEmpty() ? text : shownText(text), widget);
}
