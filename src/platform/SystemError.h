#pragma once

#include <QString>

/// The system's words for an error number: strerror(3), decoded from the locale's encoding.
///
/// Thread: any
namespace SystemError {

QString text(int number);

} // namespace SystemError
