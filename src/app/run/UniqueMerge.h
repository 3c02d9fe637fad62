#pragma once

#include "engine/QueueArray.h"

/// Merging newly found items into the queue.
///
/// Thread: pure
namespace UniqueMerge {

/// Those of `newObjects` whose place (folder and name, compared byte by byte) neither stands in the
/// queue nor came earlier among them, in their order. An item that is itself in the queue is not
/// new.
QueueArray::Items makeUniqueArray(const QueueArray &queue, QueueArray::Items newObjects);

} // namespace UniqueMerge
