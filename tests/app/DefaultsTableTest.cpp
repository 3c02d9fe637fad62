#include "app/DefaultsTable.h"

#include "ui/ColorProperties.h"

#include <QTest>

class DefaultsTableTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void everyKeyHasItsFallback_data();
    void everyKeyHasItsFallback();
    void nothingElseHasAFallback();
    void whatWasGivenIsPassedOn();
    void withoutDarkAppearanceTheThemeIsLightAndTheSidebarDark();
};

namespace {

const DefaultsTable::Facts facts{QStringLiteral("1.2"), QStringLiteral("34"),
                                 QStringLiteral("/home/eva/.local/share/Vantorel"), true};

} // namespace

void DefaultsTableTest::everyKeyHasItsFallback_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("withDark");
    QTest::addColumn<QVariant>("withoutDark");
    const auto row = [](const char *key, const QVariant &with, const QVariant &without) {
        QTest::newRow(key) << QString::fromLatin1(key) << with << without;
    };
    row("WipeMethod", 4, 4);
    row("AutoExit", false, false);
    row("skipLinkTargets", false, false);
    row("checkForUpdates", true, true);
    row("UserDefinedSystemColorTheme", 1, 0);
    row("DarkMode", true, false);
    row("enableUserDefinedSystemColorTheme", true, false);
    row("colorProperties", ColorProperties::defaultTable(), ColorProperties::defaultTable());
}

void DefaultsTableTest::everyKeyHasItsFallback()
{
    QFETCH(QString, key);
    QFETCH(QVariant, withDark);
    QFETCH(QVariant, withoutDark);
    DefaultsTable::Facts without = facts;
    without.offersDarkAppearance = false;
    const auto asked = [&key](const DefaultsTable::Facts &given) {
        const QVariant value = DefaultsTable::defaults(given).value(key);
        return value.typeId() == QMetaType::LongLong ? QVariant(value.toInt()) : value;
    };
    QCOMPARE(asked(facts), withDark);
    QCOMPARE(asked(without), withoutDark);
}

void DefaultsTableTest::nothingElseHasAFallback()
{
    const QVariantMap table = DefaultsTable::defaults(facts);
    for (const char *key : {"checkForBetaReleases", "checkForAlphaReleases",
                            "ForceDarkSidebarAppearance", "useMouseHoverRowColor"})
        QVERIFY2(!table.contains(QLatin1String(key)), key);
    QCOMPARE(table.size(), 12);
}

void DefaultsTableTest::whatWasGivenIsPassedOn()
{
    const QVariantMap table = DefaultsTable::defaults(facts);
    QCOMPARE(table.value(QStringLiteral("AppVersionNr")).toString(), facts.version);
    QCOMPARE(table.value(QStringLiteral("AppBuildNr")).toString(), facts.build);
    QCOMPARE(table.value(QStringLiteral("appSupportPath")).toString(), facts.supportPath);
    QVERIFY(!table.value(QStringLiteral("htmlLinkContactus")).toString().isEmpty());
}

void DefaultsTableTest::withoutDarkAppearanceTheThemeIsLightAndTheSidebarDark()
{
    const QVariantMap written = DefaultsTable::withoutDarkAppearance();
    QCOMPARE(written.size(), 4);
    QCOMPARE(written.value(QStringLiteral("UserDefinedSystemColorTheme")).toInt(), 0);
    QCOMPARE(written.value(QStringLiteral("DarkMode")), QVariant(false));
    QCOMPARE(written.value(QStringLiteral("enableUserDefinedSystemColorTheme")), QVariant(false));
    QCOMPARE(written.value(QStringLiteral("ForceDarkSidebarAppearance")), QVariant(true));
}

QTEST_GUILESS_MAIN(DefaultsTableTest)
#include "DefaultsTableTest.moc"
