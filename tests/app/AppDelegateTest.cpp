#include "app/AppDelegate.h"

#include "app/FolderScanUrls.h"
#include "kit/Scratch.h"
#include "platform/DarkAppearance.h"
#include "platform/NotificationHub.h"
#include "platform/OptionalDelegate.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/ThemedPreferences.h"

#include <QTest>

#include <optional>

class AppDelegateTest : public QObject
{
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();

    void severalFilesAreHandedOverInOneBatch();
    void emptyPathsAreLeftOut();
    void anEmptyListIsHandedOverToo();
    void dropsReachItAfterLaunching();
    void theStartOfTheInterfaceIsToldOnceAndLater();
    void reopeningBringsTheWindowBack();
    void themeKeysAreLeftAloneWhereThereIsADarkAppearance();
    void themeKeysAreWrittenAtEveryStartWhereThereIsNone();
    void theMenuItemIsCheckedWhileTheWindowIsKey();
    void theSupportFolderIsMade();
    void whatStandsThereNeedNotBeAFolder();
    void withoutComponentTheFolderItselfIsMeant();
    void theFallbacksAreInstalled();

  private:
    std::optional<ThemedPreferences> preferences_;
    std::optional<Scratch> data_;
    std::optional<MainWindow> window_;
    std::shared_ptr<AppDelegate> delegate_;
    NotificationHub::Token token_;
    std::vector<std::vector<FileUrl>> posted_;
};

void AppDelegateTest::init()
{
    preferences_.emplace();
    data_.emplace();
    qputenv("XDG_DATA_HOME", data_->path("data"));
    window_.emplace();
    window_->setCanBeReopened([] { return true; });
    delegate_ = AppDelegate::create();
    delegate_->setWindow(&*window_);
    delegate_->setMenuItemMainWindow(window_->mainMenu()->mainWindow());
    posted_.clear();
    token_ = NotificationHub::shared().observe(
        NotificationName::folderScanUrls, [this](const NotificationHub::Notification &posted) {
            QCOMPARE(posted.object, static_cast<const void *>(delegate_.get()));
            posted_.push_back(posted.userInfo.value<FolderScanUrls>().urls);
        });
}

void AppDelegateTest::cleanup()
{
    token_.stop();
    delegate_.reset();
    window_.reset();
    data_.reset();
    preferences_.reset();
}

void AppDelegateTest::severalFilesAreHandedOverInOneBatch()
{
    delegate_->openFiles({"/a", "/caf\xe9", "/a"});
    QCOMPARE(posted_.size(), 1u);
    QVERIFY(posted_[0] ==
            (std::vector<FileUrl>{FileUrl("/a"), FileUrl("/caf\xe9"), FileUrl("/a")}));
}

void AppDelegateTest::emptyPathsAreLeftOut()
{
    delegate_->openFiles({"", "/a", QByteArray()});
    QVERIFY(posted_ == std::vector<std::vector<FileUrl>>{{FileUrl("/a")}});
}

void AppDelegateTest::anEmptyListIsHandedOverToo()
{
    delegate_->openFiles({});
    QCOMPARE(posted_.size(), 1u);
    QVERIFY(posted_[0].empty());
}

void AppDelegateTest::dropsReachItAfterLaunching()
{
    delegate_->applicationDidFinishLaunching();
    QVERIFY(OptionalDelegate::call(DropReceiver::shared(), DropReceiver::Call::openFiles,
                                   &DropReceiver::openFiles, std::vector<QByteArray>{"/a"}));
    QCOMPARE(posted_.size(), 1u);
}

void AppDelegateTest::theStartOfTheInterfaceIsToldOnceAndLater()
{
    int told = 0;
    const auto token = NotificationHub::shared().observe(NotificationName::applicationDidStartGUI,
                                                         [&told](const auto &) { ++told; });
    delegate_->startGUI();
    QVERIFY(window_->isVisible());
    QCOMPARE(told, 0);
    QTRY_COMPARE(told, 1);
}

void AppDelegateTest::reopeningBringsTheWindowBack()
{
    delegate_->showMainWindow();
    window_->performClose();
    QVERIFY(!window_->isVisible());
    QVERIFY(delegate_->applicationShouldHandleReopen(false));
    QVERIFY(window_->isVisible());
}

void AppDelegateTest::themeKeysAreLeftAloneWhereThereIsADarkAppearance()
{
    preferences_->setDark(true);
    delegate_->applicationDidFinishLaunching();
    QCOMPARE(UserDefaults::standard().integer(ThemeKeys::theme), 1);
    QVERIFY(!UserDefaults::standard().boolean(ThemeKeys::forceDarkSidebar));
}

void AppDelegateTest::themeKeysAreWrittenAtEveryStartWhereThereIsNone()
{
    const DarkAppearance::Replacement none(false);
    UserDefaults &defaults = UserDefaults::standard();
    for (int start = 0; start < 2; ++start) {
        preferences_->setDark(true);
        defaults.setValue(ThemeKeys::darkMode, true);
        delegate_->applicationDidFinishLaunching();
        QCOMPARE(defaults.integer(ThemeKeys::theme), 0);
        QVERIFY(!defaults.boolean(ThemeKeys::darkMode));
        QVERIFY(!defaults.boolean(ThemeKeys::isThemeEnabled));
        QVERIFY(defaults.boolean(ThemeKeys::forceDarkSidebar));
    }
}

void AppDelegateTest::theMenuItemIsCheckedWhileTheWindowIsKey()
{
    delegate_->applicationDidFinishLaunching();
    const QAction *item = window_->mainMenu()->mainWindow();
    Q_EMIT window_->becameKey();
    QVERIFY(item->isChecked());
    Q_EMIT window_->resignedKey();
    QVERIFY(!item->isChecked());
}

void AppDelegateTest::theSupportFolderIsMade()
{
    QByteArray path;
    QVERIFY(AppDelegate::findOrCreateDirectory(QStandardPaths::GenericDataLocation,
                                               AppDelegate::SearchPathDomain::User, "Vantorel",
                                               &path));
    QCOMPARE(path, data_->path("data/Vantorel"));
    QVERIFY(QFileInfo(QFile::decodeName(path)).isDir());
}

void AppDelegateTest::whatStandsThereNeedNotBeAFolder()
{
    QVERIFY(!data_->folder("data").isEmpty());
    const QByteArray file = data_->file("data/Vantorel", QByteArray("plain"));
    QByteArray path;
    QVERIFY(AppDelegate::initialize(&path));
    QCOMPARE(path, file);
    QVERIFY(QFileInfo(QFile::decodeName(path)).isFile());
}

void AppDelegateTest::withoutComponentTheFolderItselfIsMeant()
{
    QByteArray path;
    QVERIFY(AppDelegate::findOrCreateDirectory(QStandardPaths::GenericDataLocation,
                                               AppDelegate::SearchPathDomain::User, {}, &path));
    QCOMPARE(path, data_->path("data"));
}

void AppDelegateTest::theFallbacksAreInstalled()
{
    QByteArray path;
    QVERIFY(AppDelegate::initialize(&path));
    const UserDefaults &defaults = UserDefaults::standard();
    QCOMPARE(defaults.integer(QStringLiteral("WipeMethod")), 4);
    QCOMPARE(defaults.text(QStringLiteral("appSupportPath")), QFile::decodeName(path));
    QCOMPARE(defaults.text(QStringLiteral("AppVersionNr")), QStringLiteral(VANTOREL_VERSION));
}

QTEST_MAIN(AppDelegateTest)
#include "AppDelegateTest.moc"
