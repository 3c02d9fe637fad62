#pragma once

#include "app/run/CautionCount.h"
#include "ui/Caution.h"

/// What a user should know of the queue before Start. None of it blocks Start.
///
/// Thread: pure
namespace Cautions {

/// Gravest first; nothing for plain files.
CautionTexts texts(const CautionCount &count, bool skipLinkTargets);

} // namespace Cautions
