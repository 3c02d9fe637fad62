#pragma once

#include <QByteArray>
#include <QString>

/// Standard input, output and error of the process.
///
/// Thread:  main
/// Failure: a stream that is closed or broken swallows what is written to it
namespace StandardStreams {

enum Stream : int { Input = 0, Output = 1, Error = 2 };

/// To be called first in main(): a stream that the caller closed is opened onto nothing, so that no
/// file the program opens later is taken for it; and a reader that goes away ends no run.
void secure();

bool isTerminal(Stream stream);
/// Columns of the terminal; 80 where it does not say.
int terminalColumns(Stream stream);
/// How many columns the text takes on a terminal.
int columnsOf(const QString &text);

void write(Stream stream, const QByteArray &bytes);
/// Forgets what was typed on the terminal and not read yet.
void discardInput();
/// What is there to read, up to a few kilobytes; empty at the end or after an error.
QByteArray read(Stream stream);

} // namespace StandardStreams
