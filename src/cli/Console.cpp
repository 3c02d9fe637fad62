#include "cli/Console.h"

#include <algorithm>

namespace {

using StandardStreams::Stream;

Stream progressStream(Stream texts)
{
    return StandardStreams::isTerminal(texts) ? texts : StandardStreams::Error;
}

} // namespace

Console::Console(bool isQuiet, bool outputIsJson)
    : texts_(outputIsJson ? StandardStreams::Error : StandardStreams::Output),
      progress_(progressStream(texts_)), isQuiet_(isQuiet),
      showsProgress_(!isQuiet && StandardStreams::isTerminal(progress_))
{
}

void Console::say(const QString &text)
{
    if (isQuiet_)
        return;
    clearProgress();
    StandardStreams::write(texts_, text.toLocal8Bit());
}

void Console::sayError(const QString &line)
{
    clearProgress();
    StandardStreams::write(StandardStreams::Error, line.toLocal8Bit() + '\n');
}

/// A question is asked even where all else is quiet.
void Console::ask(const QString &question)
{
    StandardStreams::write(texts_, question.toLocal8Bit());
}

void Console::writeJson(const QByteArray &json)
{
    clearProgress();
    StandardStreams::write(StandardStreams::Output, json);
}

bool Console::isInteractive() const
{
    return StandardStreams::isTerminal(StandardStreams::Input) &&
           StandardStreams::isTerminal(texts_);
}

int Console::columns() const
{
    return StandardStreams::terminalColumns(progress_);
}

/// Blanks over what the line before left, rather than a control sequence that some terminal may not
/// know.
void Console::drawProgress(const QString &line)
{
    const int columns = StandardStreams::columnsOf(line);
    // The terminal may have become narrower, and must not wrap.
    const int drawn = std::min(drawnColumns_, this->columns() - 1);
    const QByteArray blanks(std::max(drawn - columns, 0), ' ');
    StandardStreams::write(progress_, '\r' + line.toLocal8Bit() + blanks);
    drawnColumns_ = columns;
}

void Console::clearProgress()
{
    if (drawnColumns_ == 0)
        return;
    drawProgress({});
    StandardStreams::write(progress_, "\r");
}
