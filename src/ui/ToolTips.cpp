#include "ui/ToolTips.h"

#include "ui/Typography.h"

#include <QTextDocument>
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

} // namespace

QString ToolTips::shownText(const QString &text)
{
    return withoutMarkup(
        Typography::wrapped(text, QToolTip::font(), widest).join(QLatin1Char('\n')));
}

void ToolTips::show(const QPoint &globalPosition, const QString &text, QWidget *widget)
{
    QToolTip::showText(globalPosition, text.isEmpty() ? text : shownText(text), widget);
}
