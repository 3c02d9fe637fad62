#pragma once

#include <QPoint>
#include <QString>

class QWidget;

/// Tool tips show plain text, at most 480 pixels wide; longer text goes on in the next line.
///
/// Thread: main
namespace ToolTips {

/// The text as a tool tip shows it: broken into lines, and never taken for rich text, whatever
/// signs a file's name has.
QString shownText(const QString &text);

/// Shows the text at a point of the screen; no text hides what is shown.
void show(const QPoint &globalPosition, const QString &text, QWidget *widget);

} // namespace ToolTips
