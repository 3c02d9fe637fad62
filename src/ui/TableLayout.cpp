#include "ui/TableLayout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

/// A table as the design has it, before type makes it larger.
struct Design
{
    int width;
    int statusIcon; ///< 0: none
    int typeIcon;
    TableLayout::Span name;
    TableLayout::Span folder;
    TableLayout::Span last;
};

constexpr int iconSize = 16;
constexpr int rowsAbove = 4; ///< the row in work is the fifth visible one

constexpr Design design(TableKind kind)
{
    switch (kind) {
    case TableKind::Ready:
        return {656, 0, 16, {40, 280}, {336, 190}, {536, 96}};
    case TableKind::Erasing:
        return {656, 12, 40, {64, 272}, {352, 174}, {536, 96}};
    case TableKind::ErrorLog:
        return {688, 0, 16, {40, 216}, {272, 200}, {488, 184}};
    }
    return {};
}

} // namespace

TableLayout::Columns TableLayout::columns(TableKind kind, int width, double factor)
{
    const Design base = design(kind);
    const auto scaled = [factor](int length) { return int(std::lround(length * factor)); };
    const auto spanOf = [&](Span span) { return Span{scaled(span.x), scaled(span.width)}; };
    const int extra = width - scaled(base.width);
    const int nameExtra = int(std::lround(extra * 3 / 5.0));

    Columns columns;
    columns.statusIcon = {scaled(base.statusIcon), base.statusIcon > 0 ? scaled(iconSize) : 0};
    columns.typeIcon = {scaled(base.typeIcon), scaled(iconSize)};
    columns.name = spanOf(base.name);
    columns.name.width = std::max(0, columns.name.width + nameExtra);
    columns.folder = spanOf(base.folder);
    columns.folder.x += nameExtra;
    columns.folder.width = std::max(0, columns.folder.width + extra - nameExtra);
    columns.last = spanOf(base.last);
    columns.last.x += extra;
    columns.isLastRightAligned = kind != TableKind::ErrorLog;
    return columns;
}

TableLayout::Sections TableLayout::sections(TableKind kind, const Columns &columns, int width)
{
    const int folder = columns.folder.x;
    const int last = columns.last.x;
    if (kind == TableKind::ErrorLog)
        return {{folder, last - folder, width - last}, 3};
    const int name = columns.name.x;
    return {{name, folder - name, last - folder, width - last}, 4};
}

int TableLayout::scrollValueForRow(int row, int rowHeight, int maximum)
{
    const std::int64_t value = (std::int64_t(row) - rowsAbove) * rowHeight;
    return int(std::clamp<std::int64_t>(value, 0, maximum));
}
