#pragma once

#include "app/run/CautionCount.h"

#include <QStringList>

/// What a user should know of the queue before Start. None of it blocks Start.
///
/// Thread: pure
namespace Cautions {

/// Gravest first; nothing for plain files.
QStringList texts(const CautionCount &count, bool skipLinkTargets);

} // namespace Cautions
