#include "app/ContentTransitions.h"

#include <QCoreApplication>

namespace {

using ContentTransitions::Edge;
using ContentTransitions::Transition;

Edge edgeOf(MainView view, MainView current)
{
    const bool isFirst = current == MainView::None;
    switch (view) {
    case MainView::Drop:
        return isFirst ? Edge::Top : Edge::Left;
    case MainView::Ready:
        return isFirst || current == MainView::Drop ? Edge::Right : Edge::Left;
    case MainView::Erasing:
        if (isFirst)
            return Edge::Top;
        return current == MainView::Finished ? Edge::Left : Edge::Right;
    case MainView::Finished:
        return isFirst ? Edge::Top : Edge::Right;
    case MainView::Preferences:
    case MainView::None:
        return Edge::Top;
    }
    return Edge::Top;
}

QString translated(const char *text)
{
    return QCoreApplication::translate("ContentTransitions", text);
}

} // namespace

std::optional<Transition> ContentTransitions::toShow(MainView view, MainView current,
                                                     bool isBusyWiping)
{
    if (view == MainView::None || (view == MainView::Preferences && isBusyWiping))
        return std::nullopt;
    Transition transition;
    if (view != current)
        transition.from = edgeOf(view, current);
    if (view == MainView::Preferences) {
        // Shown again, it would itself be what comes back.
        if (!transition.from)
            return std::nullopt;
        transition.setsCurrentAside = true;
    }
    transition.schedulesCallout = view == MainView::Drop;
    if (view != MainView::Drop)
        transition.isAddFilesEnabled = view != MainView::Preferences;
    if (view == MainView::Erasing || view == MainView::Finished)
        transition.isBusyWiping = view == MainView::Erasing;
    return transition;
}

Transition ContentTransitions::toHidePreferences()
{
    Transition transition;
    transition.from = Edge::Bottom;
    transition.isAddFilesEnabled = true;
    return transition;
}

QString ContentTransitions::title(MainView current)
{
    switch (current) {
    case MainView::Drop:
        return translated("Drag your files and folders here");
    case MainView::Ready:
        return translated("Ready to start erasing");
    case MainView::Erasing:
        return translated("Securely erasing files");
    case MainView::Finished:
        return translated("Finished");
    case MainView::Preferences:
    case MainView::None:
        return {};
    }
    return {};
}
