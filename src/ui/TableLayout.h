#pragma once

#include <QRect>

/// Where things stand in a table, for each of the window's three.
///
/// Thread: pure
/// Units:  logical pixels; x from the table's left edge
enum class TableKind { Ready, Erasing, ErrorLog };

namespace TableLayout {

struct Span
{
    int x = 0;
    int width = 0;

    [[nodiscard]] int end() const { return x + width; }
    bool operator==(const Span &) const = default;
};

/// The parts of a row from left to right.
struct Columns
{
    Span statusIcon; ///< without width in a table that shows no status
    Span typeIcon;
    Span name;
    Span folder;
    Span last; ///< size, or error
    bool isLastRightAligned = true;
};

/// In a table of this width, with type of this factor. Three fifths of the width that it has beyond
/// the design's go to the name, two to the folder.
Columns columns(TableKind kind, int width, double factor);

/// Where each column of the model begins and ends, without gaps; `count` of them are used.
struct Sections
{
    int widths[4] = {};
    int count = 0;
};
Sections sections(TableKind kind, const Columns &columns, int width);

/// The value of the scroll bar with which this row is the fifth visible one, as far as the ends of
/// the table allow.
int scrollValueForRow(int row, int rowHeight, int maximum);

} // namespace TableLayout
