#include "app/update/UpdateSettings.h"
#include "app/update/Updater.h"
#include "kit/Scratch.h"
#include "platform/UserDefaults.h"

#include <QTest>

namespace {

AppcastItem item(const char *title, const char *releaseType)
{
    AppcastItem item;
    item.properties[AppcastItem::titleKey] = QString::fromLatin1(title);
    if (releaseType)
        item.properties[AppcastItem::releaseTypeKey] = QString::fromLatin1(releaseType);
    return item;
}

void set(const char *key, const QVariant &value)
{
    if (value.isValid())
        UserDefaults::standard().setValue(QString::fromLatin1(key), value);
}

/// Asks nobody: nothing listens there.
Updater::Settings complete()
{
    Updater::Settings settings;
    settings.feed = QUrl(QStringLiteral("http://127.0.0.1:1/feed"));
    settings.key = QByteArray(32, 'k').toBase64();
    settings.currentTimestamp = [] { return std::int64_t(0); };
    return settings;
}

} // namespace

class UpdateSettingsTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase() { QVERIFY(qputenv("XDG_CONFIG_HOME", scratch_.path())); }
    void init();
    void cleanup() { store_.reset(); }

    void theSwitchesDecideOnTestReleases_data();
    void theSwitchesDecideOnTestReleases();
    void onlyTheFirstItemIsLookedAt();
    void noListGivesTheEmptyItemAndAnEmptyListNone();
    void automaticCheckingFollowsTheSwitchAtTheStart_data();
    void automaticCheckingFollowsTheSwitchAtTheStart();
    void aChangeOfTheSwitchCountsAtOnceWhenItIsFollowed();
    void anUpdaterThatIsNotConfiguredNeverChecksByItself();
    void aSkippedVersionIsAPreference();

  private:
    Scratch scratch_;
    std::unique_ptr<UserDefaults::Replacement> store_;
};

void UpdateSettingsTest::init()
{
    QFile::remove(QString::fromUtf8(scratch_.path("vantorel/vantorel.conf")));
    store_ = std::make_unique<UserDefaults::Replacement>();
    for (const char *key :
         {"checkForUpdates", "checkForBetaReleases", "checkForAlphaReleases", "skippedVersion"})
        UserDefaults::standard().remove(QString::fromLatin1(key));
    UserDefaults::standard().registerDefaults({{QStringLiteral("checkForUpdates"), true}});
}

void UpdateSettingsTest::theSwitchesDecideOnTestReleases_data()
{
    QTest::addColumn<QVariant>("beta");
    QTest::addColumn<QVariant>("alpha");
    QTest::addColumn<QByteArray>("releaseType");
    QTest::addColumn<bool>("isOffered");
    struct Row
    {
        const char *releaseType; ///< null: it has none
        bool off, betaOn, alphaOn, bothOn;
    };
    const Row rows[] = {
        {nullptr, true, true, true, true},   {"beta", false, true, false, true},
        {"alpha", false, false, true, true}, {"Beta", true, true, true, true},
        {"ALPHA", true, true, true, true},   {"nightly", true, true, true, true},
        {"", true, true, true, true},
    };
    const QVariant none;
    for (const Row &row : rows) {
        const QByteArray type = row.releaseType ? QByteArray(row.releaseType) : QByteArray();
        const char *const name = row.releaseType ? row.releaseType : "ordinary";
        QTest::addRow("%s, never set", name) << none << none << type << row.off;
        QTest::addRow("%s, off", name) << QVariant(false) << QVariant(false) << type << row.off;
        QTest::addRow("%s, beta", name) << QVariant(true) << none << type << row.betaOn;
        QTest::addRow("%s, alpha", name) << none << QVariant(true) << type << row.alphaOn;
        QTest::addRow("%s, both", name) << QVariant(true) << QVariant(true) << type << row.bothOn;
    }
}

void UpdateSettingsTest::theSwitchesDecideOnTestReleases()
{
    QFETCH(QVariant, beta);
    QFETCH(QVariant, alpha);
    QFETCH(QByteArray, releaseType);
    QFETCH(bool, isOffered);
    set("checkForBetaReleases", beta);
    set("checkForAlphaReleases", alpha);
    const AppcastItem only = item("only", releaseType.isNull() ? nullptr : releaseType.constData());
    const auto chosen = UpdateSettings::bestValidUpdateInAppcast(Appcast({only}), nullptr);
    QVERIFY(chosen);
    QCOMPARE(*chosen, isOffered ? only : AppcastItem());
}

void UpdateSettingsTest::onlyTheFirstItemIsLookedAt()
{
    const AppcastItem beta = item("beta", "beta");
    const AppcastItem ordinary = item("ordinary", nullptr);
    const auto chosen = [](const Appcast::Items &items) {
        return UpdateSettings::bestValidUpdateInAppcast(Appcast(items), nullptr);
    };
    QCOMPARE(chosen({beta, ordinary}), AppcastItem());
    QCOMPARE(chosen({ordinary, beta}), ordinary);
    set("checkForBetaReleases", true);
    QCOMPARE(chosen({beta, ordinary}), beta);
}

void UpdateSettingsTest::noListGivesTheEmptyItemAndAnEmptyListNone()
{
    const auto withoutList = UpdateSettings::bestValidUpdateInAppcast(Appcast(), nullptr);
    QVERIFY(withoutList);
    QVERIFY(withoutList->isEmpty());
    QVERIFY(!UpdateSettings::bestValidUpdateInAppcast(Appcast(Appcast::Items()), nullptr));
}

void UpdateSettingsTest::automaticCheckingFollowsTheSwitchAtTheStart_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("never set") << QVariant() << true;
    QTest::newRow("on") << QVariant(true) << true;
    QTest::newRow("off") << QVariant(false) << false;
    QTest::newRow("NO") << QVariant(QStringLiteral("NO")) << false;
    QTest::newRow("yes") << QVariant(QStringLiteral("yes")) << true;
}

void UpdateSettingsTest::automaticCheckingFollowsTheSwitchAtTheStart()
{
    QFETCH(QVariant, value);
    QFETCH(bool, isOn);
    set("checkForUpdates", value);
    Updater updater(complete(), {});
    QVERIFY(!updater.automaticallyChecksForUpdates());
    UpdateSettings::setSparkleSettings(&updater, {});
    QCOMPARE(updater.automaticallyChecksForUpdates(), isOn);
}

void UpdateSettingsTest::aChangeOfTheSwitchCountsAtOnceWhenItIsFollowed()
{
    Updater updater(complete(), {});
    UpdateSettings::setSparkleSettings(&updater, {});
    set("checkForUpdates", false);
    QVERIFY(updater.automaticallyChecksForUpdates());
    UpdateSettings::followCheckForUpdates(&updater);
    set("checkForUpdates", true);
    set("checkForUpdates", false);
    QVERIFY(!updater.automaticallyChecksForUpdates());
    set("checkForUpdates", true);
    QVERIFY(updater.automaticallyChecksForUpdates());
}

void UpdateSettingsTest::anUpdaterThatIsNotConfiguredNeverChecksByItself()
{
    Updater::Settings without = complete();
    without.key.clear();
    Updater updater(without, {});
    QVERIFY(!updater.isConfigured());
    UpdateSettings::setSparkleSettings(&updater, {});
    QVERIFY(!updater.automaticallyChecksForUpdates());
}

void UpdateSettingsTest::aSkippedVersionIsAPreference()
{
    QCOMPARE(UpdateSettings::skippedVersion(), QString());
    UpdateSettings::setSkippedVersion(QStringLiteral("1.2"));
    UserDefaults::standard().synchronize();
    store_.reset();
    store_ = std::make_unique<UserDefaults::Replacement>();
    QCOMPARE(UpdateSettings::skippedVersion(), QStringLiteral("1.2"));
}

QTEST_MAIN(UpdateSettingsTest)
#include "UpdateSettingsTest.moc"
