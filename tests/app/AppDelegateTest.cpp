#include "app/AppDelegate.h"

#include "app/FolderScanUrls.h"
#include "kit/PrivateBus.h"
#include "kit/Scratch.h"
#include "platform/ApplicationId.h"
#include "platform/ApplicationService.h"
#include "platform/DarkAppearance.h"
#include "platform/NotificationHub.h"
#include "platform/OptionalDelegate.h"
#include "ui/Appearance.h"
#include "ui/DialogBox.h"
#include "ui/MainMenu.h"
#include "ui/MainWindow.h"
#include "ui/ThemedPreferences.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTest>

#include <optional>

namespace {

/// Stands in the environment for as long as it lives.
class Variable
{
  public:
    Variable(const char *name, const QByteArray &value)
        : name_(name), wasSet_(qEnvironmentVariableIsSet(name)), before_(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~Variable() { wasSet_ ? qputenv(name_, before_) : qunsetenv(name_); }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

  private:
    const char *name_;
    bool wasSet_;
    QByteArray before_;
};

} // namespace

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
    void aDarkStartWithoutDarkAppearanceStaysDarkUntilTheNext();
    void theMenuItemIsCheckedWhileTheWindowIsKey();
    void theSupportFolderIsMade();
    void whatStandsThereNeedNotBeAFolder();
    void withoutComponentTheFolderItselfIsMeant();
    void oneFolderOfTheSystemsIsMeantWhereItIsAskedFor();
    void withoutAnyFolderToSearchThereIsNoPath();
    void theFallbacksAreInstalled();
    void aFreshUserStartsDarkWhereThatIsOffered_data();
    void aFreshUserStartsDarkWhereThatIsOffered();
    void withoutASupportFolderItSaysSoAndNothingIsToBeStarted();
    void otherProgramsReachTheQueueAndTheWindow();
    void theMachineIsKeptAwakeFromTheStartOn();

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
    delegate_ = AppDelegate::create({});
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

/// Kept on purpose: the window has taken its theme when the keys are written, and nobody tells it.
void AppDelegateTest::aDarkStartWithoutDarkAppearanceStaysDarkUntilTheNext()
{
    const DarkAppearance::Replacement none(false);
    const UserDefaults &defaults = UserDefaults::standard();
    preferences_->setDark(true);
    int posts = 0;
    const auto count = [&posts](const auto &) { ++posts; };
    const auto broadcast =
        NotificationHub::shared().observe(NotificationName::colorThemeChanged, count);
    window_->awakeFromNib();
    QCOMPARE(posts, 1);
    QVERIFY(defaults.boolean(ThemeKeys::darkMode));
    const auto choice =
        NotificationHub::shared().observe(NotificationName::appearanceChanged, count);
    delegate_->applicationDidFinishLaunching();
    QCOMPARE(posts, 1);
    QCOMPARE(window_->appearance(), QString::fromUtf16(Appearance::dark));
    QCOMPARE(defaults.integer(ThemeKeys::theme), 0);
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
    QVERIFY(AppDelegate::initialize());
    QVERIFY(QFileInfo(QFile::decodeName(file)).isFile());
}

void AppDelegateTest::withoutComponentTheFolderItselfIsMeant()
{
    QByteArray path;
    QVERIFY(AppDelegate::findOrCreateDirectory(QStandardPaths::GenericDataLocation,
                                               AppDelegate::SearchPathDomain::User, {}, &path));
    QCOMPARE(path, data_->path("data"));
}

void AppDelegateTest::oneFolderOfTheSystemsIsMeantWhereItIsAskedFor()
{
    const Variable folders("XDG_DATA_DIRS", data_->path("first") + ':' + data_->path("second"));
    QByteArray path;
    QVERIFY(AppDelegate::findOrCreateDirectory(QStandardPaths::GenericDataLocation,
                                               AppDelegate::SearchPathDomain::System, "Vantorel",
                                               &path));
    QCOMPARE(path, data_->path("first/Vantorel"));
    QVERIFY(QFileInfo(QFile::decodeName(path)).isDir());
    QVERIFY(!Scratch::exists(data_->path("second")));
    QVERIFY(!Scratch::exists(data_->path("data")));
}

void AppDelegateTest::withoutAnyFolderToSearchThereIsNoPath()
{
    const QByteArray file = data_->file("file", QByteArray("plain"));
    // What is not absolute is no folder to search, and files for the time being have none here.
    const Variable folders("XDG_DATA_DIRS", "relative");
    const Variable runtime("XDG_RUNTIME_DIR", file);
    const Variable temporary("TMPDIR", file);
    for (const auto &[kind, domain] :
         {std::pair(QStandardPaths::GenericDataLocation, AppDelegate::SearchPathDomain::System),
          std::pair(QStandardPaths::RuntimeLocation, AppDelegate::SearchPathDomain::User)}) {
        QByteArray path("what was there before");
        QVERIFY(!AppDelegate::findOrCreateDirectory(kind, domain, "Vantorel", &path));
        QVERIFY(path.isNull());
    }
}

void AppDelegateTest::theFallbacksAreInstalled()
{
    QVERIFY(AppDelegate::initialize());
    const UserDefaults &defaults = UserDefaults::standard();
    QCOMPARE(defaults.integer(QStringLiteral("WipeMethod")), 4);
    QCOMPARE(defaults.text(QStringLiteral("appSupportPath")),
             QFile::decodeName(data_->path("data/Vantorel")));
    QCOMPARE(defaults.text(QStringLiteral("AppVersionNr")), QStringLiteral(VANTOREL_VERSION));
}

void AppDelegateTest::aFreshUserStartsDarkWhereThatIsOffered_data()
{
    QTest::addColumn<bool>("isOffered");
    QTest::newRow("with a dark appearance") << true;
    QTest::newRow("without") << false;
}

void AppDelegateTest::aFreshUserStartsDarkWhereThatIsOffered()
{
    QFETCH(bool, isOffered);
    const DarkAppearance::Replacement appearance(isOffered);
    const UserDefaults &defaults = UserDefaults::standard();

    QVERIFY(AppDelegate::initialize());

    QCOMPARE(defaults.integer(ThemeKeys::theme), isOffered ? 1 : 0);
    QCOMPARE(defaults.boolean(ThemeKeys::darkMode), isOffered);
    QCOMPARE(defaults.boolean(ThemeKeys::isThemeEnabled), isOffered);
    QVERIFY(!defaults.boolean(ThemeKeys::forceDarkSidebar));
    window_->awakeFromNib();
    QCOMPARE(window_->appearance(),
             QString::fromUtf16(isOffered ? Appearance::dark : Appearance::light));
}

void AppDelegateTest::withoutASupportFolderItSaysSoAndNothingIsToBeStarted()
{
    const QByteArray file = data_->file("file", QByteArray("plain"));
    qputenv("XDG_DATA_HOME", file);
    const DialogBox::Answers answers({DialogGeometry::FirstButton});
    QVERIFY(!AppDelegate::initialize());
    QCOMPARE(answers.asked().size(), std::size_t(1));
    QCOMPARE(answers.asked()[0].title, QStringLiteral("Unable to access AppSupportPath"));
    QCOMPARE(answers.asked()[0].info,
             QStringLiteral("No access to:\n%1\n\nVantorel will close now.")
                 .arg(QFile::decodeName(file + "/Vantorel")));
    QCOMPARE(answers.asked()[0].buttons, QStringList(QStringLiteral("OK")));
}

void AppDelegateTest::otherProgramsReachTheQueueAndTheWindow()
{
    PrivateBus bus;
    QVERIFY(bus.isThere());
    ApplicationService service(bus.connection().name());
    QVERIFY(service.requestName(std::chrono::seconds(5)) == ApplicationService::Name::Owned);
    delegate_ = AppDelegate::create({&service, {}});
    delegate_->setWindow(&*window_);
    delegate_->setMenuItemMainWindow(window_->mainMenu()->mainWindow());
    delegate_->applicationDidFinishLaunching();
    const QDBusConnection caller = bus.connection();
    const auto call = [&caller](const QString &interface, const QString &member,
                                const QVariantList &arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            applicationId, QStringLiteral("/org/vantorel/Vantorel"), interface, member);
        message.setArguments(arguments);
        QDBusPendingCall pending = caller.asyncCall(message);
        return QTest::qWaitFor([&pending] { return pending.isFinished(); }) && !pending.isError();
    };

    window_->performClose();
    QVERIFY(call(QString(applicationId), QStringLiteral("securelyEraseFiles"),
                 {QStringList({QStringLiteral("/a"), QStringLiteral("file:///caf%E9"),
                               QStringLiteral("no path")}),
                  QString()}));
    QVERIFY(posted_ == (std::vector<std::vector<FileUrl>>{{FileUrl("/a"), FileUrl("/caf\xe9")}}));
    QVERIFY(window_->isVisible());
    // A text that names no file does nothing.
    window_->performClose();
    QVERIFY(call(QString(applicationId), QStringLiteral("securelyEraseFiles"),
                 {QStringList(QStringLiteral("only text")), QString()}));
    QCOMPARE(posted_.size(), std::size_t(1));
    QVERIFY(!window_->isVisible());

    QVERIFY(call(QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"),
                 {QVariantMap()}));
    QVERIFY(window_->isVisible());
    QCOMPARE(posted_.size(), std::size_t(1));
    QVERIFY(call(
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"),
        {QStringList({QStringLiteral("file:///b"), QStringLiteral("file:///c")}), QVariantMap()}));
    QCOMPARE(posted_.size(), std::size_t(2));
    QCOMPARE(posted_[1].size(), std::size_t(2));
}

void AppDelegateTest::theMachineIsKeptAwakeFromTheStartOn()
{
    int begun = 0;
    std::weak_ptr<int> activity;
    delegate_ = AppDelegate::create({nullptr, [&begun, &activity] {
                                         ++begun;
                                         const auto token = std::make_shared<int>();
                                         activity = token;
                                         return std::shared_ptr<void>(token);
                                     }});
    delegate_->setWindow(&*window_);
    delegate_->setMenuItemMainWindow(window_->mainMenu()->mainWindow());
    QCOMPARE(begun, 0);
    delegate_->applicationDidFinishLaunching();
    QCOMPARE(begun, 1);
    QVERIFY(!activity.expired());
    delegate_->showMainWindow();
    QCOMPARE(begun, 1);
}

QTEST_MAIN(AppDelegateTest)
#include "AppDelegateTest.moc"
