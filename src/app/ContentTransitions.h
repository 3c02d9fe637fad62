#pragma once

#include <QString>

#include <optional>

/// The views of which the window shows one at a time; the value is its tag in the window.
enum class MainView : int { None, Drop, Ready, Erasing, Finished, Preferences };

/// Which view slides in from which side of the screen, what goes with it, and what the window is
/// called then. The side is the one that the view comes from: from the top, it starts above.
///
/// Thread: pure
namespace ContentTransitions {

enum class Edge { Top, Left, Right, Bottom };

/// What showing a view means. Nothing stands for "stays as it is".
struct Transition
{
    std::optional<Edge> from; ///< none: the view stands there already
    std::optional<bool> isBusyWiping;
    std::optional<bool> isAddFilesEnabled;
    bool schedulesCallout = false;
    /// The current view is to come back, and what belongs to it is hidden until then.
    bool setsCurrentAside = false;

    bool operator==(const Transition &) const = default;
};

/// Nothing at all for the preferences while a run is busy.
std::optional<Transition> toShow(MainView view, MainView current, bool isBusyWiping);
/// Back from the preferences.
Transition toHidePreferences();

QString title(MainView current);

} // namespace ContentTransitions
