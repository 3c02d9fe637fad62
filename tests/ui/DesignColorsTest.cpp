#include "ui/DesignColors.h"

#include "ThemedPreferences.h"

#include <QTest>

#include <cmath>

Q_DECLARE_METATYPE(ColorRole)

namespace {

constexpr int opaque = 255;

QColor color(int rgb, int alpha = opaque)
{
    return {rgb >> 16 & 0xFF, rgb >> 8 & 0xFF, rgb & 0xFF, alpha};
}

double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const double lighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

class DesignColorsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { DesignColors::setHighContrast(false); }

    void everyRoleHasItsColourInBothThemes_data();
    void everyRoleHasItsColourInBothThemes();
    void theCurrentThemeCounts();
    void highContrastMakesEdgesAsStrongAsText_data();
    void highContrastMakesEdgesAsStrongAsText();
    void highContrastLeavesAllElse();
    void textStandsOutFromEveryGround_data();
    void textStandsOutFromEveryGround();
};

void DesignColorsTest::everyRoleHasItsColourInBothThemes_data()
{
    QTest::addColumn<ColorRole>("role");
    QTest::addColumn<QColor>("light");
    QTest::addColumn<QColor>("dark");
    const auto row = [](const char *name, ColorRole role, const QColor &light, const QColor &dark) {
        QTest::newRow(name) << role << light << dark;
    };
    row("text", ColorRole::Text, color(0x1A2026), color(0xE8ECEF));
    row("text.secondary", ColorRole::TextSecondary, color(0x505B65), color(0xA3AEB8));
    row("text.disabled", ColorRole::TextDisabled, color(0x8B959E), color(0x6C7781));
    row("text.onSelection", ColorRole::TextOnSelection, color(0x06172B), color(0xFFFFFF));
    row("text on an inactive selection", ColorRole::TextOnInactiveSelection, color(0x1A2026),
        color(0xFFFFFF));
    row("accent", ColorRole::Accent, color(0x1C62BC), color(0x82B7F3));
    row("focus", ColorRole::Focus, color(0x1C62BC), color(0x8CC0FA));
    row("ok", ColorRole::Ok, color(0x1A7340), color(0x74D39B));
    row("bad", ColorRole::Bad, color(0xB3261E), color(0xFF9188));
    row("warn", ColorRole::Warn, color(0x7A4A00), color(0xF3CB80));
    row("warn.bg", ColorRole::WarnBackground, color(0xFBEFD5), color(0x3A3220));
    row("warn.edge", ColorRole::WarnEdge, color(0xA06400, 71), color(0xF3CB80, 56));
    row("warn.icon", ColorRole::WarnIcon, color(0xB86E00), color(0xF0B44C));
    row("surface", ColorRole::Surface, color(0xFCFDFD), color(0x1B1F24));
    row("surface.head", ColorRole::SurfaceHead, color(0xF1F3F5), color(0x21262B));
    row("edge", ColorRole::Edge, color(0x101820, 36), color(0xFFFFFF, 23));
    row("edge.control", ColorRole::EdgeControl, color(0x101820, 56), color(0xFFFFFF, 38));
    row("edge.field", ColorRole::EdgeField, color(0x101820, 122), color(0xFFFFFF, 107));
    row("window.edge", ColorRole::WindowEdge, color(0x101820, 56), color(0xFFFFFF, 33));
    row("control", ColorRole::Control, color(0xFFFFFF), color(0x363E46));
    row("control.hover", ColorRole::ControlHover, color(0xF6F8F9), color(0x3D464F));
    row("control.pressed", ColorRole::ControlPressed, color(0xE4E8EB), color(0x2C333A));
    row("ghost.hover", ColorRole::GhostHover, color(0x101820, 18), color(0xFFFFFF, 20));
    row("ghost.pressed", ColorRole::GhostPressed, color(0x101820, 33), color(0xFFFFFF, 36));
    row("tint", ColorRole::Tint, color(0x3D94FF, 26), color(0x5C9CDF, 33));
    row("tint.row", ColorRole::TintRow, color(0x3D94FF, 31), color(0x5C9CDF, 41));
    row("track", ColorRole::Track, color(0x101820, 26), color(0xFFFFFF, 23));
    row("switch.off", ColorRole::SwitchOff, color(0x7A858F), color(0x7F8A94));
    row("switch.on", ColorRole::SwitchOn, color(0x2F6FC0), color(0x3C7CCB));
    row("segment.bg", ColorRole::SegmentBackground, color(0x101820, 18), color(0, 56));
    row("segment.on", ColorRole::SegmentOn, color(0xFFFFFF), color(0x4A545E));
    row("drop.bg", ColorRole::DropBackground, color(0xFFFFFF, 107), color(0xFFFFFF, 6));
    row("drop.dash", ColorRole::DropDash, color(0x101820, 77), color(0xFFFFFF, 61));
    row("menu", ColorRole::Menu, color(0xFAFBFB), color(0x2B3137));
    row("scrim", ColorRole::Scrim, color(0x182028, 77), color(0x06090C, 128));
    row("dialog strip", ColorRole::DialogStrip, color(0x101820, 11), color(0, 31));
    row("pass.line", ColorRole::PassLine, color(0x101820, 140), color(0xFFFFFF, 128));
    row("pass.fill", ColorRole::PassFill, color(0x3A4650), color(0xC9D2DA));
    row("blue", ColorRole::Blue, color(0x5C9CDF), color(0x5C9CDF));
}

void DesignColorsTest::everyRoleHasItsColourInBothThemes()
{
    QFETCH(ColorRole, role);
    QFETCH(QColor, light);
    QFETCH(QColor, dark);
    QCOMPARE(DesignColors::color(role, false), light);
    QCOMPARE(DesignColors::color(role, true), dark);
}

void DesignColorsTest::theCurrentThemeCounts()
{
    ThemedPreferences preferences;
    QCOMPARE(DesignColors::color(ColorRole::Text), color(0x1A2026));
    preferences.setDark(true);
    QCOMPARE(DesignColors::color(ColorRole::Text), color(0xE8ECEF));
}

void DesignColorsTest::highContrastMakesEdgesAsStrongAsText_data()
{
    QTest::addColumn<ColorRole>("role");
    QTest::newRow("cards") << ColorRole::Edge;
    QTest::newRow("controls") << ColorRole::EdgeControl;
    QTest::newRow("fields") << ColorRole::EdgeField;
    QTest::newRow("windows") << ColorRole::WindowEdge;
    QTest::newRow("cautions") << ColorRole::WarnEdge;
}

void DesignColorsTest::highContrastMakesEdgesAsStrongAsText()
{
    QFETCH(ColorRole, role);
    ThemedPreferences preferences;
    for (const bool isDark : {false, true}) {
        preferences.setDark(isDark);
        DesignColors::setHighContrast(false);
        QCOMPARE(DesignColors::color(role), DesignColors::color(role, isDark));
        DesignColors::setHighContrast(true);
        QCOMPARE(DesignColors::color(role), DesignColors::color(ColorRole::TextSecondary, isDark));
    }
}

void DesignColorsTest::highContrastLeavesAllElse()
{
    const ThemedPreferences preferences;
    DesignColors::setHighContrast(true);
    for (const ColorRole role : {ColorRole::Text, ColorRole::Surface, ColorRole::Track,
                                 ColorRole::DropDash, ColorRole::Menu})
        QCOMPARE(DesignColors::color(role), DesignColors::color(role, false));
}

void DesignColorsTest::textStandsOutFromEveryGround_data()
{
    QTest::addColumn<ColorRole>("text");
    QTest::addColumn<ColorRole>("ground");
    for (const auto &[name, ground] :
         {std::pair("surface", ColorRole::Surface), std::pair("head", ColorRole::SurfaceHead),
          std::pair("control", ColorRole::Control), std::pair("menu", ColorRole::Menu),
          std::pair("caution", ColorRole::WarnBackground)}) {
        QTest::addRow("text on %s", name) << ColorRole::Text << ground;
        QTest::addRow("secondary text on %s", name) << ColorRole::TextSecondary << ground;
    }
    for (const auto &[name, ground] : {std::pair("hovered", ColorRole::ControlHover),
                                       std::pair("pressed", ColorRole::ControlPressed)})
        QTest::addRow("text on a %s control", name) << ColorRole::Text << ground;
    QTest::newRow("caution") << ColorRole::Warn << ColorRole::WarnBackground;
    QTest::newRow("bad") << ColorRole::Bad << ColorRole::Surface;
    QTest::newRow("ok") << ColorRole::Ok << ColorRole::Surface;
    QTest::newRow("link") << ColorRole::Accent << ColorRole::Surface;
}

void DesignColorsTest::textStandsOutFromEveryGround()
{
    QFETCH(ColorRole, text);
    QFETCH(ColorRole, ground);
    for (const bool isDark : {false, true}) {
        const double found =
            contrast(DesignColors::color(text, isDark), DesignColors::color(ground, isDark));
        QVERIFY2(found >= 4.5, qPrintable(QString::number(found)));
    }
}

QTEST_GUILESS_MAIN(DesignColorsTest)
#include "DesignColorsTest.moc"
