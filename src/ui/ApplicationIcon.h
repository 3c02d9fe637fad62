#pragma once

#include <QIcon>
#include <QString>

/// The application's icon.
///
/// Thread: main
namespace ApplicationIcon {

/// The drawing for this edge length: up to 32 pixels a simpler one.
QString pictureName(int pixels);
/// At all sizes that desktops ask for.
QIcon icon();

} // namespace ApplicationIcon
