#include "ThemedPreferences.h"
#include "platform/NotificationHub.h"
#include "support/ValueTransformerRegistry.h"
#include "ui/IsDarkColorTheme.h"
#include "ui/IsLightColorTheme.h"
#include "ui/IsSystemColorTheme.h"
#include "ui/ValueTransformers.h"

#include <QIcon>
#include <QTest>

#include <array>

namespace {

const std::array<const char *, 3> names{"IsLightColorTheme", "IsDarkColorTheme",
                                        "IsSystemColorTheme"};

} // namespace

/// The three transformers of the theme's controls, found by their names.
class IsColorThemeTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup() { preferences_.reset(); }

    void eachSaysWhetherItsThemeIsStored_data();
    void eachSaysWhetherItsThemeIsStored();
    void theWayBackStoresTheThemeAndAnswersItsNumber_data();
    void theWayBackStoresTheThemeAndAnswersItsNumber();
    void theWayBackToTheStoredThemePostsNothing_data();
    void theWayBackToTheStoredThemePostsNothing();
    void theWayBackToLightIsRefusedWhileLightShows();
    void eachDeclaresNumbersAndBothWays();
    void iconsComeWithTheWindowsPictures();

  private:
    [[nodiscard]] const ValueTransformer &transformer() const
    {
        QFETCH(int, theme);
        return *ValueTransformers::shared().transformerForName(
            QLatin1String(names.at(size_t(theme))));
    }
    static void addThemesAndStored();
    static void addInputs();

    std::optional<ThemedPreferences> preferences_;
    NotificationHub::Token token_;
    int posted_ = 0;
};

void IsColorThemeTest::init()
{
    preferences_.emplace();
    posted_ = 0;
    token_ = NotificationHub::shared().observe(NotificationName::appearanceChanged,
                                               [this](const auto &) { ++posted_; });
}

void IsColorThemeTest::addThemesAndStored()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<int>("stored");
    for (int theme = 0; theme < 3; ++theme) {
        for (int stored = 0; stored < 3; ++stored)
            QTest::addRow("%s while %d is stored", names.at(size_t(theme)), stored)
                << theme << stored;
    }
}

void IsColorThemeTest::eachSaysWhetherItsThemeIsStored_data()
{
    addThemesAndStored();
}

void IsColorThemeTest::eachSaysWhetherItsThemeIsStored()
{
    QFETCH(int, theme);
    QFETCH(int, stored);
    UserDefaults::standard().setValue(ThemeKeys::theme, stored);
    for (const QVariant &ignored : {QVariant(), QVariant(theme), QVariant(7)})
        QCOMPARE(transformer().transformedValue(ignored), QVariant(theme == stored ? 1 : 0));
}

void IsColorThemeTest::addInputs()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QVariant>("input");
    const QHash<QString, QVariant> inputs{{QStringLiteral("nothing"), QVariant()},
                                          {QStringLiteral("no"), QVariant(false)},
                                          {QStringLiteral("yes"), QVariant(true)},
                                          {QStringLiteral("a text"), QStringLiteral("x")}};
    for (int theme = 0; theme < 3; ++theme) {
        for (auto input = inputs.begin(); input != inputs.end(); ++input)
            QTest::addRow("%s given %s", names.at(size_t(theme)), qUtf8Printable(input.key()))
                << theme << input.value();
    }
}

void IsColorThemeTest::theWayBackStoresTheThemeAndAnswersItsNumber_data()
{
    addInputs();
}

void IsColorThemeTest::theWayBackStoresTheThemeAndAnswersItsNumber()
{
    QFETCH(int, theme);
    QFETCH(QVariant, input);
    const int other = theme == 0 ? 1 : 0;
    UserDefaults::standard().setValue(ThemeKeys::theme, other);
    UserDefaults::standard().setValue(ThemeKeys::darkMode, other == 1);
    QCOMPARE(transformer().reverseTransformedValue(input), QVariant(theme));
    QCOMPARE(UserDefaults::standard().integer(ThemeKeys::theme), std::int64_t(theme));
    QCOMPARE(posted_, 1);
}

void IsColorThemeTest::theWayBackToTheStoredThemePostsNothing_data()
{
    addInputs();
}

void IsColorThemeTest::theWayBackToTheStoredThemePostsNothing()
{
    QFETCH(int, theme);
    QFETCH(QVariant, input);
    UserDefaults::standard().setValue(ThemeKeys::theme, theme);
    // The mirror alone would let the choice count.
    UserDefaults::standard().setValue(ThemeKeys::darkMode, theme == 0);
    QCOMPARE(transformer().reverseTransformedValue(input), QVariant(theme));
    QCOMPARE(posted_, 0);
}

void IsColorThemeTest::theWayBackToLightIsRefusedWhileLightShows()
{
    UserDefaults::standard().setValue(ThemeKeys::theme, 2);
    UserDefaults::standard().setValue(ThemeKeys::darkMode, false);
    QCOMPARE(IsLightColorTheme().reverseTransformedValue(1), QVariant(0));
    QCOMPARE(UserDefaults::standard().integer(ThemeKeys::theme), std::int64_t(2));
    QCOMPARE(posted_, 0);
}

void IsColorThemeTest::eachDeclaresNumbersAndBothWays()
{
    for (const QMetaType type :
         {IsLightColorTheme::transformedValueClass(), IsDarkColorTheme::transformedValueClass(),
          IsSystemColorTheme::transformedValueClass()})
        QCOMPARE(type, QMetaType::fromType<int>());
    QVERIFY(IsLightColorTheme::allowsReverseTransformation());
    QVERIFY(IsDarkColorTheme::allowsReverseTransformation());
    QVERIFY(IsSystemColorTheme::allowsReverseTransformation());
}

/// Of the layer below, in the same registry.
void IsColorThemeTest::iconsComeWithTheWindowsPictures()
{
    const ValueTransformer *icons =
        ValueTransformers::shared().transformerForName(QStringLiteral("StatusToImage"));
    QVERIFY(icons);
    QVERIFY(!icons->transformedValue(1).value<QIcon>().isNull());
}

QTEST_MAIN(IsColorThemeTest)
#include "IsColorThemeTest.moc"
