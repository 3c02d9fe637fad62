#include "ui/DesignColors.h"

#include "ui/InterfaceColorStyle.h"

#include <cmath>

namespace {

bool isHighContrast = false;

constexpr QColor rgb(int value)
{
    return {value >> 16 & 0xFF, value >> 8 & 0xFF, value & 0xFF};
}

QColor rgb(int value, double percent)
{
    QColor color = rgb(value);
    color.setAlpha(int(std::lround(percent * 255 / 100)));
    return color;
}

struct Pair
{
    QColor light;
    QColor dark;
};

constexpr int ink = 0x101820;
constexpr int white = 0xFFFFFF;

Pair pair(ColorRole role)
{
    switch (role) {
    case ColorRole::Text:
        return {rgb(0x1A2026), rgb(0xE8ECEF)};
    case ColorRole::TextSecondary:
        return {rgb(0x505B65), rgb(0xA3AEB8)};
    case ColorRole::TextDisabled:
        return {rgb(0x8B959E), rgb(0x6C7781)};
    case ColorRole::TextOnSelection:
        return {rgb(0x06172B), rgb(white)};
    case ColorRole::TextOnInactiveSelection:
        return {rgb(0x1A2026), rgb(white)};
    case ColorRole::Accent:
        return {rgb(0x1C62BC), rgb(0x82B7F3)};
    case ColorRole::Focus:
        return {rgb(0x1C62BC), rgb(0x8CC0FA)};
    case ColorRole::Ok:
        return {rgb(0x1A7340), rgb(0x74D39B)};
    case ColorRole::Bad:
        return {rgb(0xB3261E), rgb(0xFF9188)};
    case ColorRole::Warn:
        return {rgb(0x7A4A00), rgb(0xF3CB80)};
    case ColorRole::WarnBackground:
        return {rgb(0xFBEFD5), rgb(0x3A3220)};
    case ColorRole::WarnEdge:
        return {rgb(0xA06400, 28), rgb(0xF3CB80, 22)};
    case ColorRole::WarnIcon:
        return {rgb(0xB86E00), rgb(0xF0B44C)};
    case ColorRole::Surface:
        return {rgb(0xFCFDFD), rgb(0x1B1F24)};
    case ColorRole::SurfaceHead:
        return {rgb(0xF1F3F5), rgb(0x21262B)};
    case ColorRole::Edge:
        return {rgb(ink, 14), rgb(white, 9)};
    case ColorRole::EdgeControl:
        return {rgb(ink, 22), rgb(white, 15)};
    case ColorRole::EdgeField:
        return {rgb(ink, 48), rgb(white, 42)};
    case ColorRole::WindowEdge:
        return {rgb(ink, 22), rgb(white, 13)};
    case ColorRole::Control:
        return {rgb(white), rgb(0x363E46)};
    case ColorRole::ControlHover:
        return {rgb(0xF6F8F9), rgb(0x3D464F)};
    case ColorRole::ControlPressed:
        return {rgb(0xE4E8EB), rgb(0x2C333A)};
    case ColorRole::GhostHover:
        return {rgb(ink, 7), rgb(white, 8)};
    case ColorRole::GhostPressed:
        return {rgb(ink, 13), rgb(white, 14)};
    case ColorRole::Tint:
        return {rgb(0x3D94FF, 10), rgb(0x5C9CDF, 13)};
    case ColorRole::TintRow:
        return {rgb(0x3D94FF, 12), rgb(0x5C9CDF, 16)};
    case ColorRole::Track:
        return {rgb(ink, 10), rgb(white, 9)};
    case ColorRole::SwitchOff:
        return {rgb(0x7A858F), rgb(0x7F8A94)};
    case ColorRole::SwitchOn:
        return {rgb(0x2F6FC0), rgb(0x3C7CCB)};
    case ColorRole::SegmentBackground:
        return {rgb(ink, 7), rgb(0, 22)};
    case ColorRole::SegmentOn:
        return {rgb(white), rgb(0x4A545E)};
    case ColorRole::DropBackground:
        return {rgb(white, 42), rgb(white, 2.2)};
    case ColorRole::DropDash:
        return {rgb(ink, 30), rgb(white, 24)};
    case ColorRole::Menu:
        return {rgb(0xFAFBFB), rgb(0x2B3137)};
    case ColorRole::Scrim:
        return {rgb(0x182028, 30), rgb(0x06090C, 50)};
    case ColorRole::DialogStrip:
        return {rgb(ink, 4.5), rgb(0, 12)};
    case ColorRole::PassLine:
        return {rgb(ink, 55), rgb(white, 50)};
    case ColorRole::PassFill:
        return {rgb(0x3A4650), rgb(0xC9D2DA)};
    case ColorRole::Blue:
        return {rgb(0x5C9CDF), rgb(0x5C9CDF)};
    }
    return {};
}

bool isEdge(ColorRole role)
{
    return role == ColorRole::Edge || role == ColorRole::EdgeControl ||
           role == ColorRole::EdgeField || role == ColorRole::WindowEdge ||
           role == ColorRole::WarnEdge;
}

} // namespace

QColor DesignColors::color(ColorRole role, bool isDark)
{
    const Pair colors = pair(role);
    return isDark ? colors.dark : colors.light;
}

QColor DesignColors::color(ColorRole role)
{
    return color(isHighContrast && isEdge(role) ? ColorRole::TextSecondary : role,
                 InterfaceColorStyle::isDarkMode());
}

void DesignColors::setHighContrast(bool isHigh)
{
    isHighContrast = isHigh;
}
