#pragma once

#include <QByteArray>

namespace WorkingFolder {

/// The process's working folder, as bytes; empty where it is gone. Relative paths then find
/// nothing.
QByteArray path();

} // namespace WorkingFolder
