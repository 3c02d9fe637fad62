#include "app/PreferencesPresenter.h"

#include "platform/NotificationHub.h"
#include "ui/InterfaceColorStyle.h"
#include "ui/MethodSelector.h"
#include "ui/PathField.h"
#include "ui/PreferencesView.h"
#include "ui/SegmentedControl.h"
#include "ui/SwitchButton.h"
#include "ui/TextLabel.h"
#include "ui/ThemedPreferences.h"

#include <QTest>

#include <optional>

class PreferencesPresenterTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void whatIsStoredIsShown();
    void aSwitchIsStoredAtOnce_data();
    void aSwitchIsStoredAtOnce();
    void whatChangesElsewhereIsFollowed();
    void aChosenMethodIsStoredAndTold();
    void everySelectorShowsTheSameMethod();
    void aMethodOutsideTheCatalogueShowsNothing();
    void aThemeIsAskedForAndTheStoredOneShown();
    void theSystemsThemeSaysWhatItIsNow();
    void aTakenLogPathIsStored();
    void theVersionIsShown();

  private:
    [[nodiscard]] SwitchButton *switchOf(const QString &key) const;

    std::optional<ThemedPreferences> preferences_;
    std::optional<PreferencesView> view_;
    std::optional<PreferencesPresenter> presenter_;
    int methodsTold_ = 0;
    QList<int> themesAsked_;
};

void PreferencesPresenterTest::init()
{
    preferences_.emplace();
    UserDefaults &defaults = UserDefaults::standard();
    defaults.registerDefaults({{QStringLiteral("AppVersionNr"), QStringLiteral("1.2")},
                               {QStringLiteral("AppBuildNr"), QStringLiteral("34")},
                               {QStringLiteral("checkForUpdates"), true}});
    defaults.setValue(QStringLiteral("WipeMethod"), 6);
    defaults.setValue(QStringLiteral("AutoExit"), true);
    methodsTold_ = 0;
    themesAsked_.clear();
    view_.emplace();
    presenter_.emplace(
        &*view_,
        PreferencesPresenter::Actions{[this] { ++methodsTold_; },
                                      [this](int theme) {
                                          themesAsked_.append(theme);
                                          InterfaceColorStyle::userChangedAppearanceTo(theme);
                                      }},
        nullptr);
}

void PreferencesPresenterTest::cleanup()
{
    presenter_.reset();
    view_.reset();
    preferences_.reset();
}

SwitchButton *PreferencesPresenterTest::switchOf(const QString &key) const
{
    const QHash<QString, SwitchButton *> switches{
        {QStringLiteral("skipLinkTargets"), view_->skipLinkTargets()},
        {QStringLiteral("AutoExit"), view_->autoExit()},
        {QStringLiteral("checkForUpdates"), view_->checkForUpdates()},
        {QStringLiteral("checkForBetaReleases"), view_->betaReleases()},
        {QStringLiteral("checkForAlphaReleases"), view_->alphaReleases()}};
    return switches.value(key);
}

void PreferencesPresenterTest::whatIsStoredIsShown()
{
    QCOMPARE(view_->methodSelector()->currentMethod(), 6);
    QVERIFY(view_->autoExit()->isChecked());
    QVERIFY(view_->checkForUpdates()->isChecked());
    QVERIFY(!view_->skipLinkTargets()->isChecked());
    QCOMPARE(view_->themeSegments()->currentIndex(), 0);
    QCOMPARE(view_->pathField()->text(), QString());
}

void PreferencesPresenterTest::aSwitchIsStoredAtOnce_data()
{
    QTest::addColumn<QString>("key");
    for (const char *key : {"skipLinkTargets", "AutoExit", "checkForUpdates",
                            "checkForBetaReleases", "checkForAlphaReleases"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void PreferencesPresenterTest::aSwitchIsStoredAtOnce()
{
    QFETCH(QString, key);
    const bool before = UserDefaults::standard().boolean(key);
    switchOf(key)->click();
    QCOMPARE(UserDefaults::standard().boolean(key), !before);
    switchOf(key)->click();
    QCOMPARE(UserDefaults::standard().boolean(key), before);
}

void PreferencesPresenterTest::whatChangesElsewhereIsFollowed()
{
    UserDefaults::standard().setValue(QStringLiteral("skipLinkTargets"), true);
    QVERIFY(view_->skipLinkTargets()->isChecked());
    UserDefaults::standard().setValue(QStringLiteral("WipeMethod"), 2);
    QCOMPARE(view_->methodSelector()->currentMethod(), 2);
}

void PreferencesPresenterTest::aChosenMethodIsStoredAndTold()
{
    Q_EMIT view_->methodSelector()->methodChosen(9);
    QCOMPARE(UserDefaults::standard().integer(QStringLiteral("WipeMethod")), 9);
    QCOMPARE(methodsTold_, 1);
}

void PreferencesPresenterTest::everySelectorShowsTheSameMethod()
{
    MethodSelector other;
    presenter_->bindMethodSelector(&other);
    QCOMPARE(other.currentMethod(), 6);
    Q_EMIT view_->methodSelector()->methodChosen(3);
    QCOMPARE(other.currentMethod(), 3);
    Q_EMIT other.methodChosen(4);
    QCOMPARE(view_->methodSelector()->currentMethod(), 4);
    QCOMPARE(methodsTold_, 2);
}

void PreferencesPresenterTest::aMethodOutsideTheCatalogueShowsNothing()
{
    UserDefaults::standard().setValue(QStringLiteral("WipeMethod"), 77);
    QCOMPARE(view_->methodSelector()->currentName(), QString());
}

void PreferencesPresenterTest::aThemeIsAskedForAndTheStoredOneShown()
{
    Q_EMIT view_->themeSegments()->chosen(1);
    QCOMPARE(themesAsked_, QList<int>{1});
    QCOMPARE(view_->themeSegments()->currentIndex(), 1);
    // Nobody applies the theme here, so the mirror says light: light is not taken.
    Q_EMIT view_->themeSegments()->chosen(0);
    QCOMPARE(view_->themeSegments()->currentIndex(), 1);
}

void PreferencesPresenterTest::theSystemsThemeSaysWhatItIsNow()
{
    const auto remarks = [this] {
        QStringList texts;
        for (const TextLabel *label : view_->findChildren<TextLabel *>())
            texts.append(label->text());
        return texts.filter(QStringLiteral("light now, dark from the next start")).size();
    };
    QCOMPARE(remarks(), 0);
    Q_EMIT view_->themeSegments()->chosen(2);
    QCOMPARE(remarks(), 1);
}

void PreferencesPresenterTest::aTakenLogPathIsStored()
{
    Q_EMIT view_->logPathTaken(QStringLiteral("/tmp/x.log"));
    QTRY_COMPARE(UserDefaults::standard().text(QStringLiteral("logFilePath")),
                 QStringLiteral("/tmp/x.log"));
    QCOMPARE(view_->pathField()->text(), QStringLiteral("/tmp/x.log"));
}

void PreferencesPresenterTest::theVersionIsShown()
{
    QCOMPARE(view_->versionText()->text(), QStringLiteral("Version 1.2 (build 34)"));
}

QTEST_MAIN(PreferencesPresenterTest)
#include "PreferencesPresenterTest.moc"
