#pragma once

#include <QString>

/// Who logs a message, by way of a line as a call stack has it: the frame's number, the program's
/// name, an address, the operation, and a plus sign with a place in it.
///
/// Thread: pure
namespace LogCaller {

/// The line for a function as std::source_location tells of it. "-[Class operation]" stands for a
/// member, a plain name for a function without a class, nothing where the function is not known.
QString frameText(const char *function, unsigned line);

/// "[Class operation]", the fourth and fifth piece of the line, split at each of " -[]+?.,". Null
/// where there are fewer than five pieces.
/// Kept on purpose: a program's name that holds one of these characters shifts the pieces; and of a
/// function without a class the place stands for the operation.
QString ofFrame(const QString &frame);

} // namespace LogCaller
