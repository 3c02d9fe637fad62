#pragma once

#include <QIcon>

/// The caution triangle as an icon, in the current theme's colour each time it is drawn.
///
/// Thread: main
namespace CautionIcon {

QIcon icon();

} // namespace CautionIcon
