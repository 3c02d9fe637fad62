#include "ui/InterfaceColorStyle.h"

#include "ThemedPreferences.h"
#include "platform/NotificationHub.h"
#include "ui/Appearance.h"

#include <QTest>

class InterfaceColorStyleTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void theThemeIsDarkExactlyForOne_data();
    void theThemeIsDarkExactlyForOne();
    void aMissingThemeIsLight();
    void theAppearanceGoesWithTheTheme_data();
    void theAppearanceGoesWithTheTheme();
    void withoutStoredAppearanceThereIsNone();
    void aChoiceIsComparedWithTheDarkModeMirror_data();
    void aChoiceIsComparedWithTheDarkModeMirror();
    void fromTheSystemsThemeThereIsNoWayStraightToLight();
    void theNotificationComesWhenTheThemeIsStored();

  private:
    [[nodiscard]] static std::int64_t stored()
    {
        return UserDefaults::standard().integer(ThemeKeys::theme);
    }

    std::optional<ThemedPreferences> preferences_;
    NotificationHub::Token token_;
    int posted_ = 0;
};

void InterfaceColorStyleTest::init()
{
    preferences_.emplace();
    posted_ = 0;
    token_ = NotificationHub::shared().observe(NotificationName::appearanceChanged,
                                               [this](const auto &) { ++posted_; });
}

void InterfaceColorStyleTest::cleanup()
{
    preferences_.reset();
}

void InterfaceColorStyleTest::theThemeIsDarkExactlyForOne_data()
{
    QTest::addColumn<QVariant>("theme");
    QTest::addColumn<bool>("isDark");
    QTest::newRow("light") << QVariant(0) << false;
    QTest::newRow("dark") << QVariant(1) << true;
    QTest::newRow("the system's") << QVariant(2) << false;
    QTest::newRow("unknown") << QVariant(3) << false;
    QTest::newRow("below zero") << QVariant(-1) << false;
    QTest::newRow("a text") << QVariant(QStringLiteral("1")) << true;
}

void InterfaceColorStyleTest::theThemeIsDarkExactlyForOne()
{
    QFETCH(QVariant, theme);
    QFETCH(bool, isDark);
    UserDefaults::standard().setValue(ThemeKeys::theme, theme);
    QCOMPARE(InterfaceColorStyle::currentTheme(), isDark);
    QCOMPARE(InterfaceColorStyle::isDarkMode(), isDark);
}

void InterfaceColorStyleTest::aMissingThemeIsLight()
{
    const UserDefaults::Replacement empty;
    QVERIFY(!InterfaceColorStyle::isDarkMode());
}

void InterfaceColorStyleTest::theAppearanceGoesWithTheTheme_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QString>("appearance");
    QTest::newRow("light") << 0 << QString::fromUtf16(Appearance::light);
    QTest::newRow("dark") << 1 << QString::fromUtf16(Appearance::dark);
    QTest::newRow("the system's") << 2 << QString::fromUtf16(Appearance::light);
}

void InterfaceColorStyleTest::theAppearanceGoesWithTheTheme()
{
    QFETCH(int, theme);
    QFETCH(QString, appearance);
    UserDefaults &defaults = UserDefaults::standard();
    defaults.setValue(ThemeKeys::theme, theme);
    defaults.setValue(ThemeKeys::appearanceDark,
                      Appearance::archived(QString::fromUtf16(Appearance::dark)));
    defaults.setValue(ThemeKeys::appearanceLight,
                      Appearance::archived(QString::fromUtf16(Appearance::light)));
    QCOMPARE(InterfaceColorStyle::appearance(), appearance);
}

void InterfaceColorStyleTest::withoutStoredAppearanceThereIsNone()
{
    QVERIFY(InterfaceColorStyle::appearance().isNull());
}

void InterfaceColorStyleTest::aChoiceIsComparedWithTheDarkModeMirror_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<bool>("darkMode");
    QTest::addColumn<int>("choice");
    QTest::addColumn<bool>("counts");
    QTest::newRow("dark while light shows") << 0 << false << 1 << true;
    QTest::newRow("light while dark shows") << 1 << true << 0 << true;
    QTest::newRow("light while light shows") << 0 << false << 0 << false;
    QTest::newRow("dark while dark shows") << 1 << true << 1 << false;
    QTest::newRow("the system's while light shows") << 0 << false << 2 << true;
    QTest::newRow("the system's while dark shows") << 1 << true << 2 << true;
    QTest::newRow("the system's again") << 2 << false << 2 << true;
    QTest::newRow("light, of the system's") << 2 << false << 0 << false;
    QTest::newRow("dark, of the system's") << 2 << false << 1 << true;
    QTest::newRow("dark, stored already, while the mirror is light") << 1 << false << 1 << true;
    QTest::newRow("dark while only the mirror is dark") << 0 << true << 1 << false;
}

void InterfaceColorStyleTest::aChoiceIsComparedWithTheDarkModeMirror()
{
    QFETCH(int, theme);
    QFETCH(bool, darkMode);
    QFETCH(int, choice);
    QFETCH(bool, counts);
    UserDefaults::standard().setValue(ThemeKeys::theme, theme);
    UserDefaults::standard().setValue(ThemeKeys::darkMode, darkMode);
    InterfaceColorStyle::userChangedAppearanceTo(choice);
    QCOMPARE(posted_, int(counts));
    QCOMPARE(stored(), std::int64_t(counts ? choice : theme));
    QCOMPARE(UserDefaults::standard().boolean(ThemeKeys::darkMode), darkMode);
}

void InterfaceColorStyleTest::fromTheSystemsThemeThereIsNoWayStraightToLight()
{
    UserDefaults::standard().setValue(ThemeKeys::darkMode, true);
    InterfaceColorStyle::userChangedAppearanceTo(2);
    UserDefaults::standard().setValue(ThemeKeys::darkMode, InterfaceColorStyle::isDarkMode());
    InterfaceColorStyle::userChangedAppearanceTo(0);
    QCOMPARE(stored(), std::int64_t(2));
    QCOMPARE(posted_, 1);
}

void InterfaceColorStyleTest::theNotificationComesWhenTheThemeIsStored()
{
    const void *sender = this;
    std::int64_t seen = -1;
    const auto token = NotificationHub::shared().observe(NotificationName::appearanceChanged,
                                                         [&](const auto &notification) {
                                                             seen = stored();
                                                             sender = notification.object;
                                                         });
    InterfaceColorStyle::userChangedAppearanceTo(1);
    QCOMPARE(seen, std::int64_t(1));
    QVERIFY(!sender);
}

QTEST_GUILESS_MAIN(InterfaceColorStyleTest)
#include "InterfaceColorStyleTest.moc"
