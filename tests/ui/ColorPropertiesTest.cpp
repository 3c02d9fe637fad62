#include "ui/ColorProperties.h"

#include "ThemedPreferences.h"

#include <QTest>

#include <limits>

namespace {

ColorComponents components(const QString &key)
{
    return ColorProperties::unarchived(ColorProperties::defaultTable().value(key).toByteArray())
        .value_or(ColorComponents{-1, -1, -1, -1});
}

} // namespace

class ColorPropertiesTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init() { preferences_.emplace(); }
    void cleanup() { preferences_.reset(); }

    void theDefaultTableHasTheseColours_data();
    void theDefaultTableHasTheseColours();
    void theDefaultTableHasNothingElse();
    void aColourComesBackExactly_data();
    void aColourComesBackExactly();
    void otherBytesAreNoColour_data();
    void otherBytesAreNoColour();
    void componentsAreRoundedOnce_data();
    void componentsAreRoundedOnce();
    void aKeyIsMadeOfStylePropertyAndMode_data();
    void aKeyIsMadeOfStylePropertyAndMode();
    void aColourIsFoundByItsKey();
    void aMissingKeyFindsNothing();
    void aStoredTableOfOneKeyHidesAllOthers();
    void whatIsNoColourFindsNothing();
    void whatIsNoTableFindsNothing();
    void aStyleIsLookedUpUnderTheCurrentTheme();
    void whatHasToBeDrawnHasTheDefaultTablesColour();

  private:
    std::optional<ThemedPreferences> preferences_;
};

void ColorPropertiesTest::theDefaultTableHasTheseColours_data()
{
    QTest::addColumn<double>("red");
    QTest::addColumn<double>("green");
    QTest::addColumn<double>("blue");
    QTest::addColumn<double>("alpha");
    QTest::newRow("DefaultWindowView_bggradstart_light") << 0.953 << 0.961 << 0.965 << 1.0;
    QTest::newRow("DefaultWindowView_bggradend_light") << 0.9 << 0.904 << 0.907 << 1.0;
    QTest::newRow("DefaultWindowView_bggradstart_dark") << 0.153 << 0.172 << 0.192 << 1.0;
    QTest::newRow("DefaultWindowView_bggradend_dark") << 0.123 << 0.142 << 0.162 << 1.0;
    QTest::newRow("DefaultLine_bg_light") << 0.0 << 0.0 << 0.0 << 0.1;
    QTest::newRow("DefaultLine_bg_dark") << 1.0 << 1.0 << 1.0 << 0.05;
    QTest::newRow("BtnInfoLine_bg_light") << 0.0 << 0.0 << 0.0 << 0.2;
    QTest::newRow("BtnInfoLine_bg_dark") << 1.0 << 1.0 << 1.0 << 0.2;
    QTest::newRow("DefaultAlertView_bg_light") << 0.906 << 0.906 << 0.906 << 1.0;
    QTest::newRow("DefaultAlertView_bg_dark") << 0.153 << 0.172 << 0.192 << 1.0;
    QTest::newRow("DefaultTableRowView_bg_light") << 1.0 << 1.0 << 1.0 << 1.0;
    QTest::newRow("DefaultTableRowView_bg_dark") << 0.0 << 0.0 << 0.0 << 1.0;
    QTest::newRow("DefaultTableRowView_hovbg_light") << 0.902 << 0.898 << 0.902 << 0.4;
    QTest::newRow("DefaultTableRowView_hovbg_dark") << 0.0 << 0.0 << 0.0 << 0.1;
    QTest::newRow("DefaultTableRowView_selbg_light") << 0.239 << 0.58 << 1.0 << 1.0;
    QTest::newRow("DefaultTableRowView_selbg_dark") << 0.192 << 0.31 << 0.471 << 1.0;
    QTest::newRow("DefaultTableRowView_selbginactive_light") << 0.847 << 0.918 << 1.0 << 1.0;
    QTest::newRow("DefaultTableRowView_selbginactive_dark") << 0.337 << 0.353 << 0.369 << 1.0;
    QTest::newRow("DefaultTableRowView_bc_light") << 0.0 << 0.0 << 0.0 << 0.04;
    QTest::newRow("DefaultTableRowView_bc_dark") << 1.0 << 1.0 << 1.0 << 0.03;
    QTest::newRow("DefaultTableRowView_row_light") << 0.906 << 0.906 << 0.906 << 1.0;
    QTest::newRow("DefaultTableRowView_rowodd_light") << 0.945 << 0.949 << 0.949 << 1.0;
    QTest::newRow("DefaultTableRowView_row_dark") << 0.153 << 0.173 << 0.192 << 1.0;
    QTest::newRow("DefaultTableRowView_rowodd_dark") << 0.192 << 0.212 << 0.231 << 1.0;
}

void ColorPropertiesTest::theDefaultTableHasTheseColours()
{
    QFETCH(double, red);
    QFETCH(double, green);
    QFETCH(double, blue);
    QFETCH(double, alpha);
    const ColorComponents found = components(QLatin1String(QTest::currentDataTag()));
    QCOMPARE(found, (ColorComponents{red, green, blue, alpha}));
}

void ColorPropertiesTest::theDefaultTableHasNothingElse()
{
    QCOMPARE(ColorProperties::defaultTable().size(), 24);
}

void ColorPropertiesTest::aColourComesBackExactly_data()
{
    QTest::addColumn<double>("component");
    QTest::newRow("nothing") << 0.0;
    QTest::newRow("all") << 1.0;
    QTest::newRow("no step of 1/255") << 0.1234567890123456789;
    QTest::newRow("the smallest step below all") << std::nextafter(1.0, 0.0);
    QTest::newRow("the smallest there is") << std::numeric_limits<double>::denorm_min();
}

void ColorPropertiesTest::aColourComesBackExactly()
{
    QFETCH(double, component);
    const ColorComponents given{component, 0.25, 0.5, 0.75};
    const auto back = ColorProperties::unarchived(ColorProperties::archived(given));
    QVERIFY(back.has_value());
    QCOMPARE(*back, given);
}

void ColorPropertiesTest::otherBytesAreNoColour_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = ColorProperties::archived({0.1, 0.2, 0.3, 1});
    QTest::newRow("none") << QByteArray();
    QTest::newRow("too few") << good.chopped(1);
    QTest::newRow("too many") << good + '\0';
    QTest::newRow("a text") << QByteArray("#FFFFFF");
    QTest::newRow("above one") << ColorProperties::archived({1.1, 0, 0, 1});
    QTest::newRow("below zero") << ColorProperties::archived({0, 0, -0.1, 1});
    QTest::newRow("no number") << ColorProperties::archived(
        {0, 0, 0, std::numeric_limits<double>::quiet_NaN()});
}

void ColorPropertiesTest::otherBytesAreNoColour()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!ColorProperties::unarchived(bytes));
}

void ColorPropertiesTest::componentsAreRoundedOnce_data()
{
    QTest::addColumn<double>("component");
    QTest::addColumn<int>("value");
    QTest::newRow("none") << 0.0 << 0;
    QTest::newRow("all") << 1.0 << 255;
    QTest::newRow("half") << 0.5 << 128;
    QTest::newRow("below half a step") << 0.9 << 230;
    QTest::newRow("up") << 0.904 << 231;
    QTest::newRow("down") << 0.953 << 243;
    QTest::newRow("faint") << 0.03 << 8;
}

void ColorPropertiesTest::componentsAreRoundedOnce()
{
    QFETCH(double, component);
    QFETCH(int, value);
    const QColor color = ColorComponents{component, 0, 1, component}.color();
    QCOMPARE(color, QColor(value, 0, 255, value));
    QCOMPARE(color.spec(), QColor::Rgb);
}

void ColorPropertiesTest::aKeyIsMadeOfStylePropertyAndMode_data()
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<bool>("isInactive");
    QTest::newRow("Style_bg_light") << false << false;
    QTest::newRow("Style_bg_dark") << true << false;
    QTest::newRow("Style_bg_light_inactive") << false << true;
    QTest::newRow("Style_bg_dark_inactive") << true << true;
}

void ColorPropertiesTest::aKeyIsMadeOfStylePropertyAndMode()
{
    QFETCH(bool, isDark);
    QFETCH(bool, isInactive);
    QCOMPARE(ColorProperties::key(QStringLiteral("Style"), QLatin1String("bg"), isDark, isInactive),
             QLatin1String(QTest::currentDataTag()));
}

void ColorPropertiesTest::aColourIsFoundByItsKey()
{
    QCOMPARE(ColorProperties::color(QStringLiteral("DefaultTableRowView_selbg_light")),
             std::optional(QColor(61, 148, 255)));
    QCOMPARE(ColorProperties::color(QStringLiteral("DefaultLine_bg_light")),
             std::optional(QColor(0, 0, 0, 26)));
}

void ColorPropertiesTest::aMissingKeyFindsNothing()
{
    QVERIFY(!ColorProperties::color(QStringLiteral("DefaultWindowView_bg_light")));
    QVERIFY(!ColorProperties::color(QString()));
}

void ColorPropertiesTest::aStoredTableOfOneKeyHidesAllOthers()
{
    const QString own = QStringLiteral("Mine_bg_light");
    preferences_->setColors({{own, ColorProperties::archived({1, 0, 0, 1})}});
    QCOMPARE(ColorProperties::color(own), std::optional(QColor(255, 0, 0)));
    const QStringList others = ColorProperties::defaultTable().keys();
    for (const QString &key : others)
        QVERIFY(!ColorProperties::color(key));
}

void ColorPropertiesTest::whatIsNoColourFindsNothing()
{
    const QString own = QStringLiteral("Mine_bg_light");
    preferences_->setColors({{own, QByteArray("red")}});
    QVERIFY(!ColorProperties::color(own));
}

void ColorPropertiesTest::whatIsNoTableFindsNothing()
{
    UserDefaults::standard().setValue(QStringLiteral("colorProperties"), QStringLiteral("none"));
    QVERIFY(!ColorProperties::color(QStringLiteral("DefaultLine_bg_light")));
}

void ColorPropertiesTest::aStyleIsLookedUpUnderTheCurrentTheme()
{
    const auto current = [] {
        return ColorProperties::current(QStringLiteral("Mine"), QLatin1String("bg"));
    };
    QVERIFY(!current());
    preferences_->setColors(
        {{QStringLiteral("Mine_bg_light"), ColorProperties::archived({1, 0, 0, 1})},
         {QStringLiteral("Mine_bg_dark"), ColorProperties::archived({0, 1, 0, 1})}});
    QCOMPARE(current(), std::optional(QColor(255, 0, 0)));
    preferences_->setDark(true);
    QCOMPARE(current(), std::optional(QColor(0, 255, 0)));
}

void ColorPropertiesTest::whatHasToBeDrawnHasTheDefaultTablesColour()
{
    const QString style = QStringLiteral("DefaultAlertView");
    const QLatin1String property("bg");
    preferences_->setColors(
        {{QStringLiteral("DefaultAlertView_bg_light"), ColorProperties::archived({1, 0, 0, 1})}});
    QCOMPARE(ColorProperties::currentOrDefault(style, property), QColor(255, 0, 0));
    QCOMPARE(ColorProperties::colorOrDefault(style, property, true), QColor(0x272C31));
    preferences_->setDark(true);
    QCOMPARE(ColorProperties::currentOrDefault(style, property), QColor(0x272C31));
    QCOMPARE(ColorProperties::colorOrDefault(style, property, false), QColor(255, 0, 0));
    QCOMPARE(ColorProperties::currentOrDefault(QStringLiteral("Mine"), property),
             QColor(Qt::transparent));
}

QTEST_GUILESS_MAIN(ColorPropertiesTest)
#include "ColorPropertiesTest.moc"
