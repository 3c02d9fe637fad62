#include "ui/FocusOrder.h"

#include <QWidget>

#include <algorithm>
#include <iterator>

namespace {

bool takesTab(const QWidget *widget, const QWidget *window)
{
    return (widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !widget->focusProxy() &&
           widget->isEnabled() && widget->isVisibleTo(window);
}

} // namespace

QList<QWidget *> FocusOrder::stops(QWidget *window, const QList<QWidget *> &last)
{
    QList<QWidget *> stops;
    for (QWidget *at = window->nextInFocusChain(); at != window; at = at->nextInFocusChain()) {
        if (takesTab(at, window) && !last.contains(at))
            stops.append(at);
    }
    std::copy_if(last.begin(), last.end(), std::back_inserter(stops),
                 [window](const QWidget *stop) { return takesTab(stop, window); });
    return stops;
}

QWidget *FocusOrder::next(const QList<QWidget *> &stops, const QWidget *current, bool forwards)
{
    if (stops.isEmpty())
        return nullptr;
    const auto at = std::find(stops.begin(), stops.end(), current) - stops.begin();
    const auto count = stops.size();
    if (at == count)
        return forwards ? stops.first() : stops.last();
    return stops.at((at + (forwards ? 1 : count - 1)) % count);
}
