#pragma once

#include <QByteArray>
#include <Qt>

#include <vector>

class QDropEvent;
class QMimeData;

/// What the window and the drop image do with files that are dragged on to them.
///
/// Thread: main
namespace FileDrop {

/// Paths as the bytes they are, in the order in which they are given.
std::vector<QByteArray> paths(const QMimeData *dragged);
int count(const QMimeData *dragged);

/// Takes a drag or a drop over with this operation; not where its source allows others alone. A
/// source that took it for a move would remove its files itself.
void accept(QDropEvent *event, Qt::DropAction operation);

/// Hands the paths to the shared DropReceiver if there are any and it answers `openFiles`.
///
/// Kept on purpose: true in every case, also when nobody took anything.
bool perform(const QMimeData *dragged);

} // namespace FileDrop
