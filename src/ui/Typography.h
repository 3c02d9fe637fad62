#pragma once

#include <QFont>
#include <QSize>
#include <QStringList>

/// The texts of the design by their role; what each is for stands beside it.
enum class TextStyle {
    Result,   ///< the finished view's first line
    Headline, ///< the great numbers of the ready and erasing views
    Heading,
    DialogTitle,
    Value, ///< figures under a small label; the Start button
    Body,
    BodyMedium, ///< plain buttons, selectors
    BodyStrong, ///< header title, coloured buttons, the row in work
    Small,
    SmallMedium, ///< table heads, links
    SmallStrong, ///< the header's count of errors
    Description  ///< small, with wider lines
};

/// Fonts and the scale of everything that goes with them. The design's numbers are for a system
/// font of 13 pixels; a larger one makes texts, controls and rows larger, up to 1.6 times. Margins
/// and the header's height stay.
///
/// Thread: main
/// Units:  logical pixels
namespace Typography {

/// The height of the system font over 13, kept within 1 and 1.6.
double factor();
/// What factor() answers for a font of this pixel height. Pure, as are the next two.
double factorFor(double pixels);
/// No text is smaller than 12 pixels.
int pixelSizeFor(TextStyle style, double factor);
int lineHeightFor(TextStyle style, double factor);

/// A length of the design times factor(), rounded.
int scaled(double length);

QFont font(TextStyle style);
/// The height of a line of this style.
int lineHeight(TextStyle style);
/// The lines that a text of one or more paragraphs takes at this width. A word that is too long for
/// a line, as a path may be, is broken.
QStringList wrapped(const QString &text, const QFont &font, int width);

} // namespace Typography
