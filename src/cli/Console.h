#pragma once

#include "platform/StandardStreams.h"

#include <QString>

/// What the terminal front end says, and where. Texts go to standard output, unless that carries
/// JSON; failures to standard error. The progress is one line of the terminal, redrawn in place; it
/// makes way for every other line.
///
/// Thread: main
class Console
{
  public:
    Console(bool isQuiet, bool outputIsJson);

    void say(const QString &text);
    void sayError(const QString &line);
    void ask(const QString &question);
    void writeJson(const QByteArray &json);

    /// Whether a question can be asked and answered here.
    [[nodiscard]] bool isInteractive() const;
    [[nodiscard]] bool showsProgress() const { return showsProgress_; }
    /// Columns of the progress line.
    [[nodiscard]] int columns() const;
    void drawProgress(const QString &line);
    void clearProgress();

  private:
    StandardStreams::Stream texts_;
    StandardStreams::Stream progress_;
    bool isQuiet_;
    bool showsProgress_;
    int drawnColumns_ = 0;
};
