#pragma once

#include <QAccessible>

/// Lets screen readers hear every `Widget` as an `Interface`, a QAccessibleInterface that is made
/// of a pointer to it. To be called by its constructor; calls after the first do nothing.
///
/// Thread: main
template <typename Widget, typename Interface> void letItBeHeardAs()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
            auto *widget = qobject_cast<Widget *>(object);
            return widget ? new Interface(widget) : nullptr;
        });
        return true;
    }();
    Q_UNUSED(isInstalled)
}
