#include "ui/ViewLayouts.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr int gap = 16;

/// A text that ends at the place `x`, kept at the right edge.
QRect endingAt(const ViewRuler &ruler, double x, int y, int width, double height)
{
    return {ruler.right(x) - width, y, width, ruler.length(height)};
}

int endOf(const QRect &rect)
{
    return rect.x() + rect.width();
}

int between(double low, double high, double part)
{
    return int(std::lround(low + (high - low) * part));
}

} // namespace

DropLayout DropLayout::of(const ViewRuler &ruler, double drag)
{
    const int lower = between(0, ruler.length(32), drag);
    DropLayout layout;
    layout.zone = ruler.line(ruler.top(40), 0);
    layout.zone.setHeight(ruler.bottom(456) - ruler.top(40));
    layout.image = ruler.centred(240, 72, 240, 176).translated(0, lower);
    layout.heading = ruler.line(ruler.down(272) + lower, 28);
    layout.sentence = ruler.line(ruler.down(304) + lower, 20);
    layout.button = ruler.centred(248, 352, 224, 32);
    layout.hint = ruler.line(ruler.down(396), 16);
    layout.method = ruler.line(ruler.bottom(476), 16);
    return layout;
}

ReadyLayout ReadyLayout::of(const ViewRuler &ruler)
{
    const int half = (ruler.size().width() - 2 * ViewRuler::margin - gap) / 2;
    ReadyLayout layout;
    layout.count = {ViewRuler::margin, ruler.top(20), half, ruler.length(32)};
    layout.folders = {ViewRuler::margin, ruler.top(52), half, ruler.length(20)};
    layout.size = endingAt(ruler, 688, ruler.top(20), half, 32);
    layout.work = endingAt(ruler, 688, ruler.top(52), half, 20);
    layout.table = ruler.line(ruler.top(88), 0);
    layout.table.setHeight(ruler.bottom(252) - ruler.top(88));
    layout.methodLabel = {ruler.left(32), ruler.bottom(266), ruler.length(296), ruler.length(16)};
    layout.selector = {ruler.left(32), ruler.bottom(288), ruler.length(296), ruler.length(32)};
    const int passes = std::min(ruler.length(336), ruler.right(688) - ruler.left(352));
    layout.passesLabel = {ruler.left(352), ruler.bottom(266), passes, ruler.length(16)};
    layout.passStrip = {ruler.left(352), ruler.bottom(296), passes, ruler.length(16)};
    layout.description = ruler.line(ruler.bottom(328), 0);
    layout.description.setHeight(3 * ruler.length(18)); // of whole lines
    layout.caution = ruler.line(ruler.bottom(392), 32);
    layout.line = {ViewRuler::margin, ruler.bottom(440), layout.table.width(), 1};
    layout.start = {ruler.right(544), ruler.bottom(456), ruler.length(144), ruler.length(40)};
    const int warning = layout.start.x() - ViewRuler::margin - gap;
    layout.warning = {ViewRuler::margin, ruler.bottom(466), warning, ruler.length(20)};
    return layout;
}

ErasingLayout ErasingLayout::of(const ViewRuler &ruler, int methodWidth)
{
    const int half = (ruler.right(688) - ruler.left(96) - gap) / 2;
    ErasingLayout layout;
    layout.icon = {ruler.left(32), ruler.top(20), ruler.length(48), ruler.length(48)};
    layout.percent = {ruler.left(96), ruler.top(16), ruler.length(128), ruler.length(32)};
    layout.amount = {ruler.left(96), ruler.top(48), half, ruler.length(20)};
    const int remaining = ruler.right(688) - endOf(layout.percent) - gap;
    layout.remaining = endingAt(ruler, 688, ruler.top(16), remaining, 32);
    layout.remainingLabel = endingAt(ruler, 688, ruler.top(48), half, 20);
    layout.progress = ruler.line(ruler.top(84), 8);
    const std::array<double, 5> columns{32, 196, 360, 524, 688};
    for (std::size_t index = 0; index < layout.figures.size(); ++index) {
        const int x = ruler.left(columns[index]);
        const bool isLast = index + 1 == layout.figures.size();
        const int end = isLast ? ruler.right(688) : ruler.left(columns[index + 1]) - gap / 2;
        layout.figures[index] = {x, ruler.top(104), end - x, ruler.length(36)};
    }
    layout.table = ruler.line(ruler.top(152), 0);
    layout.table.setHeight(ruler.bottom(456) - ruler.top(152));
    const int most = ruler.right(584) - ViewRuler::margin - gap - methodWidth;
    const int strip = std::clamp(most, ruler.length(160), ruler.length(336));
    layout.passStrip = endingAt(ruler, 584, ruler.bottom(472), strip, 21);
    const int method = layout.passStrip.x() - ViewRuler::margin - gap;
    layout.method = {ViewRuler::margin, ruler.bottom(472), std::max(method, methodWidth),
                     ruler.length(16)};
    layout.pass = endingAt(ruler, 688, ruler.bottom(472), ruler.length(104) - gap / 2, 16);
    return layout;
}

FinishedLayout FinishedLayout::of(const ViewRuler &ruler, bool hasFailures)
{
    const auto length = [&ruler](double units) { return ruler.length(units); };
    FinishedLayout layout;
    layout.picture = ruler.centred(320, 64, 80, 80);
    layout.badge = ruler.centred(374, 116, 32, 32);
    layout.result = ruler.line(ruler.down(168), 36);
    layout.caption = ruler.line(ruler.down(208), 20);
    layout.card = ruler.centred(104, 248, 512, 64);
    layout.parts = {QRect(0, 0, length(224), length(64)),
                    QRect(length(224), 0, length(160), length(64)),
                    QRect(length(384), 0, length(128), length(64))};
    for (std::size_t index = 0; index < layout.lines.size(); ++index)
        layout.lines[index] = {layout.parts[index + 1].x(), length(12), 1, length(40)};
    layout.band = ruler.centred(104, 328, 512, 48);
    layout.bandMargin = length(16);
    layout.bandButton = {length(376), length(8), length(128), length(32)};
    layout.button = ruler.centred(280, hasFailures ? 408 : 352, 160, 32);
    layout.note = ruler.line(ruler.bottom(476), 16);
    return layout;
}

PreferencesLayout PreferencesLayout::of(const ViewRuler &ruler, int versionWidth, int contactWidth)
{
    constexpr std::array<int, 3> rows{4, 3, 1};
    const int slack = ruler.size().height() - ruler.length(ViewRuler::smallestHeight);
    const int whole = ruler.length(ViewRuler::naturalHeight - ViewRuler::smallestHeight);
    const double part = std::clamp(double(slack) / whole, 0.0, 1.0);
    const double space = 8 + 8 * part;
    double y = 12 + 8 * part;
    PreferencesLayout layout;
    layout.heading = ruler.line(ruler.top(y), 28);
    y += 28;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const int top = ruler.top(y + space);
        layout.groups[index].label = {ruler.left(32), top, ruler.length(220), ruler.length(16)};
        layout.groups[index].remark = {ruler.left(268), top, ruler.right(688) - ruler.left(268),
                                       ruler.length(16)};
        layout.groups[index].card = ruler.line(ruler.top(y + space + 20), 36 * rows[index]);
        y += space + 20 + 36 * rows[index];
    }
    const double lower = 16 * (1 - part);
    layout.done = {ruler.right(592), ruler.bottom(460 + lower), ruler.length(96), ruler.length(32)};
    const int footer = ruler.bottom(468 + lower);
    layout.version = {ViewRuler::margin, footer, versionWidth, ruler.length(16)};
    const int contact = std::max(ruler.left(192), endOf(layout.version) + gap);
    layout.contact = {contact, footer, contactWidth, ruler.length(16)};
    return layout;
}

PreferenceRowLayout PreferenceRowLayout::of(const ViewRuler &row, Widths widths, QSize control)
{
    const auto length = [&row](double units) { return row.length(units); };
    const QSize size = row.size();
    const auto centred = [&size](int x, int width, int height) {
        return QRect(x, (size.height() - height) / 2, width, height);
    };
    PreferenceRowLayout layout;
    layout.control =
        centred(size.width() - length(16) - control.width(), control.width(), control.height());
    layout.field = centred(length(176), layout.control.x() - length(8) - length(176), length(28));
    layout.label = centred(length(16), widths.label, length(20));
    const int end = layout.control.x() - length(12);
    const int first = length(16) + widths.label + length(12);
    const int start = std::max(first, std::min(length(236), end - widths.remark));
    layout.remark = centred(start, std::max(0, end - start), length(20));
    return layout;
}
