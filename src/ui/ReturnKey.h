#pragma once

class QAbstractButton;
class QKeyEvent;

/// Return and Enter, which press buttons as Space does.
///
/// Thread: main
namespace ReturnKey {

/// It is one of them, with no other key held down.
bool isAlone(const QKeyEvent &event);

/// Clicks the button if isAlone(), once however long the key is held down; false for what is not.
bool clicks(QAbstractButton &button, const QKeyEvent &event);

} // namespace ReturnKey
