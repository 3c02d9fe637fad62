#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>

/// What the terminal says of the wipe methods.
///
/// Thread: pure
namespace MethodList {

QString nameOf(std::int64_t method);
QString text();
QByteArray json();

} // namespace MethodList
