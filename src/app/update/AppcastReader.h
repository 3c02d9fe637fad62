#pragma once

#include "app/update/Appcast.h"

#include <QXmlStreamReader>

/// Reads one feed. The bytes come from the network and are believed in nothing: no document type is
/// taken, so there are no entities but XML's own; no text is kept longer than its bound; nesting
/// costs no stack. Blanks at the ends of a text are cut off on purpose, since feeds are laid out
/// with them; whoever compares the texts does so exactly.
///
/// Names count as the feed writes them, prefix and all; a prefix that is not declared breaks the
/// feed, like anything else that is not well-formed.
///
/// Thread:  any
/// Failure: nothing is answered
class AppcastReader
{
  public:
    explicit AppcastReader(const QByteArray &bytes) : xml_(bytes) {}

    std::optional<Appcast> read();

    static constexpr qsizetype longestText = 2'000;  ///< characters; a longer one breaks the feed
    static constexpr qsizetype longestNotes = 8'000; ///< characters; what is over it is cut off

  private:
    bool next();
    void readRoot();
    void readChannel();
    AppcastItem readItem();
    void readChild(AppcastItem &item);
    AppcastItem::Enclosure readEnclosure();
    QString readText(const QString &key);
    QString bounded(const QString &key, const QString &text);
    void skip();

    QXmlStreamReader xml_;
    std::optional<Appcast::Items> items_;
};
